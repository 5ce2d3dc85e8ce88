// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <sys/types.h>

namespace velto::platform
{

/// A helper program that is started without arguments and spoken to over a socket, which is its
/// standard input and output. It has no other descriptor of ours but the standard error.
///
/// It is in a session of its own, and the signals by which a terminal or a session asks programs to
/// end are blocked for it: it is to finish what this program still waits for, and ends with its
/// input. Needs no event loop; one thread at a time.
class ChildProcess final
{
public:
    /// `program` is a path; nothing is searched for.
    explicit ChildProcess(const QString &program);
    /// Ends the program.
    ~ChildProcess();
    Q_DISABLE_COPY_MOVE(ChildProcess)

    /// Why the program could not be started, a number of errno; 0 when it runs.
    [[nodiscard]] int error() const { return m_error; }
    /// Our end of the socket.
    [[nodiscard]] int channel() const { return m_channel; }

    /// Closes the socket, kills the program unless it has ended by itself, and tells how it ended,
    /// for a log. Waits for no more than the system's own work.
    QString end();

private:
    int start(const char *program);

    int m_channel = -1;
    pid_t m_pid = 0;
    int m_error; // the last, since getting it sets the others
};

} // namespace velto::platform
