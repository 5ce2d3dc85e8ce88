// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/options.h"

#include <charconv>
#include <cstdlib>
#include <optional>

namespace velto::local
{

namespace
{

using Error = tl::unexpected<std::string>;

template<typename Number>
bool readNumber(const std::string &text, Number least, Number greatest, Number &result)
{
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < least ||
        value > greatest)
        return false;
    result = value;
    return true;
}

// Gives back what is wrong with the value; empty when nothing is.
std::string apply(CommandLine &line, const std::string &name, const std::string &value)
{
    ServiceOptions &service = line.service;
    if (name == "--port")
        return readNumber(value, 0, 65535, service.port) ? "" : "a port is 0 to 65535";
    if (name == "--access-token-seconds")
        return readNumber<std::int64_t>(value, 1, 86400, service.accessTokenSeconds)
                   ? ""
                   : "a token lasts 1 to 86400 seconds";
    if (name == "--token-rate")
        return readNumber(value, 0, 100'000, service.tokenRate)
                   ? ""
                   : "a rate is 0 to 100000 deltas a second";
    if (name == "--as") {
        const auto role = roleFrom(value);
        service.signInAs = role.value_or(service.signInAs);
        return role ? "" : "a role is owner, admin or member";
    }
    if (value.empty())
        return "the path is empty";
    (name == "--data" ? service.dataFolder : line.portFile) = value;
    return "";
}

bool takesValue(const std::string &name)
{
    return name == "--port" || name == "--data" || name == "--access-token-seconds" ||
           name == "--token-rate" || name == "--port-file" || name == "--as";
}

} // namespace

tl::expected<CommandLine, std::string> parseCommandLine(const std::vector<std::string> &arguments)
{
    CommandLine line;
    line.service.dataFolder = defaultDataFolder();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto equals = arguments[i].find('=');
        const std::string name = arguments[i].substr(0, equals);
        if (arguments[i] == "--help" || arguments[i] == "--version") {
            (name == "--help" ? line.help : line.version) = true;
            continue;
        }
        if (arguments[i] == "--reset") {
            line.service.reset = true;
            continue;
        }
        if (!takesValue(name))
            return Error("unknown option " + arguments[i]);
        if (equals == std::string::npos && i + 1 == arguments.size())
            return Error(name + " needs a value");
        const std::string value =
            equals == std::string::npos ? arguments[++i] : arguments[i].substr(equals + 1);
        if (const std::string flaw = apply(line, name, value); !flaw.empty())
            return Error(std::string(name).append(" ").append(value).append(": ").append(flaw));
    }
    if (line.service.dataFolder.empty() && !line.help && !line.version)
        return Error("neither XDG_DATA_HOME nor HOME is set: --data is needed");
    return line;
}

std::string usage()
{
    return R"(Usage: velto-local [option...]

A service on this computer that the velto client can talk to.

  --port N                  listen on 127.0.0.1:N (default 7717; 0: the system chooses)
  --data DIR                keep the data in DIR (default $XDG_DATA_HOME/velto-local)
  --reset                   begin with fresh data
  --as ROLE                 who signs in: owner (default), admin or member
  --access-token-seconds N  lifetime of an access token (default 900)
  --token-rate N            pieces of an answer per second (default 80; 0: no limit)
  --port-file FILE          write the port to FILE once the service answers
  --help                    show this text
  --version                 show the version
)";
}

std::filesystem::path defaultDataFolder()
{
    const char *data = std::getenv("XDG_DATA_HOME");
    if (data != nullptr && data[0] == '/')
        return std::filesystem::path(data) / "velto-local";
    const char *home = std::getenv("HOME");
    if (home != nullptr && home[0] != '\0')
        return std::filesystem::path(home) / ".local/share/velto-local";
    return {};
}

} // namespace velto::local
