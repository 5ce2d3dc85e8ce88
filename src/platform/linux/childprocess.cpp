// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/childprocess.h"

#include <QFile>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velto::platform
{
namespace
{

constexpr int firstOwnDescriptor = STDERR_FILENO + 1;

/// The same file under a number that no standard stream has, so that giving the child its streams
/// overwrites nothing. Where a standard stream of ours is closed, a new file gets its number.
int aboveStandardStreams(int file)
{
    if (file < 0 || file >= firstOwnDescriptor)
        return file;
    const int moved = fcntl(file, F_DUPFD_CLOEXEC, firstOwnDescriptor);
    close(file);
    return moved;
}

class FileActions final
{
public:
    explicit FileActions(int channel)
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_adddup2(&m_actions, channel, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&m_actions, channel, STDOUT_FILENO);
        posix_spawn_file_actions_addclosefrom_np(&m_actions, firstOwnDescriptor);
    }
    ~FileActions() { posix_spawn_file_actions_destroy(&m_actions); }
    Q_DISABLE_COPY_MOVE(FileActions)

    [[nodiscard]] const posix_spawn_file_actions_t *get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

sigset_t setOf(std::initializer_list<int> signals_)
{
    sigset_t set;
    sigemptyset(&set);
    for (const int number : signals_)
        sigaddset(&set, number);
    return set;
}

class Attributes final
{
public:
    Attributes()
    {
        const sigset_t blocked = setOf({SIGHUP, SIGINT, SIGTERM});
        // What somebody has told us to ignore is not the child's business.
        const sigset_t usual = setOf({SIGALRM, SIGCHLD, SIGPIPE});
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setsigmask(&m_attributes, &blocked);
        posix_spawnattr_setsigdefault(&m_attributes, &usual);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK |
                                                    POSIX_SPAWN_SETSIGDEF);
    }
    ~Attributes() { posix_spawnattr_destroy(&m_attributes); }
    Q_DISABLE_COPY_MOVE(Attributes)

    [[nodiscard]] const posix_spawnattr_t *get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

} // namespace

ChildProcess::ChildProcess(const QString &program)
    : m_error(start(QFile::encodeName(program).constData()))
{}

ChildProcess::~ChildProcess()
{
    end();
}

int ChildProcess::start(const char *program)
{
    int ends[2] = {-1, -1};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return errno;
    m_channel = aboveStandardStreams(ends[0]);
    const int theirs = aboveStandardStreams(ends[1]);
    if (m_channel < 0 || theirs < 0) {
        close(theirs);
        return EMFILE;
    }
    QByteArray name(program);
    char *const arguments[] = {name.data(), nullptr};
    const int error = posix_spawn(&m_pid, program, FileActions(theirs).get(), Attributes().get(),
                                  arguments, environ);
    close(theirs);
    if (error != 0)
        m_pid = 0;
    return error;
}

QString ChildProcess::end()
{
    if (m_channel >= 0)
        close(m_channel);
    m_channel = -1;
    if (m_pid == 0)
        return {};
    kill(m_pid, SIGKILL); // says nothing to a program that has ended
    int status = 0;
    pid_t ended = 0;
    do {
        ended = waitpid(m_pid, &status, 0);
    } while (ended < 0 && errno == EINTR);
    const bool isKnown = ended == m_pid;
    m_pid = 0;
    if (!isKnown)
        return QStringLiteral("unknown");
    return WIFSIGNALED(status) ? QStringLiteral("signal %1").arg(WTERMSIG(status))
                               : QStringLiteral("code %1").arg(WEXITSTATUS(status));
}

} // namespace velto::platform
