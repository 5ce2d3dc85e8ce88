// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/service.h"

#include <tl/expected.hpp>

#include <filesystem>
#include <string>
#include <vector>

namespace velto::local
{

/// What the command line asks for.
struct CommandLine
{
    ServiceOptions service;
    /// Receives the port once the service answers; empty when there is none.
    std::filesystem::path portFile;
    bool help = false;
    bool version = false;
};

/// Reads the arguments after the program's name. The failure is a sentence for a person.
[[nodiscard]] tl::expected<CommandLine, std::string>
parseCommandLine(const std::vector<std::string> &arguments);

[[nodiscard]] std::string usage();

/// $XDG_DATA_HOME/velto-local, or the same under ~/.local/share; empty when neither is known.
[[nodiscard]] std::filesystem::path defaultDataFolder();

} // namespace velto::local
