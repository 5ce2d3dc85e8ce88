// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "localprogram.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace velto::local::test
{

Process::Process(std::vector<std::string> arguments)
{
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe(ends.data()), 0);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], 1);
    posix_spawn_file_actions_adddup2(&actions, ends[1], 2);
    posix_spawn_file_actions_addclose(&actions, ends[0]);
    arguments.insert(arguments.begin(), VELTO_LOCAL_PROGRAM);
    std::vector<char *> raw;
    for (std::string &argument : arguments)
        raw.push_back(argument.data());
    raw.push_back(nullptr);
    EXPECT_EQ(::posix_spawn(&m_id, VELTO_LOCAL_PROGRAM, &actions, nullptr, raw.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    m_output = ends[0];
}

Process::~Process()
{
    if (m_id > 0 && !m_ended)
        kill(SIGKILL);
    ::close(m_output);
}

bool Process::waitForOutput(const std::string &text)
{
    while (m_text.find(text) == std::string::npos && readMore()) {
    }
    return m_text.find(text) != std::string::npos;
}

const std::string &Process::output()
{
    while (readMore()) {
    }
    return m_text;
}

int Process::port()
{
    const std::string greeting = "velto-local listening on http://127.0.0.1:";
    if (!waitForOutput(greeting) || !waitForOutput("\n"))
        return 0;
    return std::atoi(m_text.c_str() + m_text.find(greeting) + greeting.size());
}

int Process::kill(int signal)
{
    ::kill(m_id, signal);
    return wait();
}

int Process::wait()
{
    int status = -1;
    ::waitpid(m_id, &status, 0);
    m_ended = true;
    return status;
}

int Process::exitStatus()
{
    const int status = wait();
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool Process::readMore()
{
    pollfd entry{m_output, POLLIN, 0};
    std::array<char, 4096> buffer{};
    if (::poll(&entry, 1, 30'000) <= 0)
        return false;
    const auto count = ::read(m_output, buffer.data(), buffer.size());
    if (count <= 0)
        return false;
    m_text.append(buffer.data(), static_cast<std::size_t>(count));
    return true;
}

std::vector<std::string> plainArguments(const TemporaryFolder &folder)
{
    return {"--port", "0", "--data", (folder.path() / "data").string(), "--token-rate", "0"};
}

} // namespace velto::local::test
