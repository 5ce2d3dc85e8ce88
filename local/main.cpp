// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/options.h"

#include <csignal>
#include <cstdio>
#include <fstream>
#include <string>

#include <sys/stat.h>

namespace
{

using namespace velto::local;

// The line goes out in one call and at once: several threads log, and a reader waits.
void writeLine(const std::string &line)
{
    std::fputs((line + "\n").c_str(), stdout);
    std::fflush(stdout);
}

// Whoever waits for the file must never see it half written.
bool writePortFile(const std::filesystem::path &file, int port)
{
    std::filesystem::path partial = file;
    partial += ".part";
    std::ofstream output(partial, std::ios::trunc);
    output << port << '\n';
    output.close();
    std::error_code failure;
    if (output)
        std::filesystem::rename(partial, file, failure);
    return output && !failure;
}

int serve(const CommandLine &line, const sigset_t &signals)
{
    ServiceOptions options = line.service;
    options.log = writeLine;
    Service service(options);
    std::string error;
    if (!service.start(error)) {
        std::fprintf(stderr, "velto-local: %s\n", error.c_str());
        return 1;
    }
    writeLine("velto-local listening on http://127.0.0.1:" + std::to_string(service.port()));
    if (!line.portFile.empty() && !writePortFile(line.portFile, service.port())) {
        std::fprintf(stderr, "velto-local: can't write %s\n", line.portFile.c_str());
        return 1;
    }
    int signal = 0;
    sigwait(&signals, &signal);
    service.stop();
    writeLine("velto-local stopped");
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const auto line = parseCommandLine({argv + 1, argv + argc});
    if (!line) {
        std::fprintf(stderr, "velto-local: %s\nTry velto-local --help.\n", line.error().c_str());
        return 2;
    }
    if (line->help || line->version) {
        std::fputs(line->help ? usage().c_str() : "velto-local " VELTO_VERSION "\n", stdout);
        return 0;
    }
    ::umask(077);
    // Blocked before the first thread starts, so that only sigwait takes them.
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return serve(*line, signals);
}
