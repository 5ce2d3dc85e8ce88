// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "runningservice.h"

#include <string>
#include <vector>

#include <sys/types.h>

namespace velto::local::test
{

/// The built program, with its output at hand.
class Process final
{
public:
    explicit Process(std::vector<std::string> arguments);
    ~Process();
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

    /// Reads the output until it holds `text`, or to its end.
    bool waitForOutput(const std::string &text);
    /// The whole output; waits for the end.
    const std::string &output();
    /// The port of the line with which the program greets.
    int port();
    /// Sends a signal and waits for the end; the wait status.
    int kill(int signal);
    int wait();
    int exitStatus();

private:
    bool readMore();

    pid_t m_id = 0;
    int m_output = -1;
    bool m_ended = false;
    std::string m_text;
};

/// A port that the system chooses, data in the folder, answers at full speed.
[[nodiscard]] std::vector<std::string> plainArguments(const TemporaryFolder &folder);

} // namespace velto::local::test
