// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/http/connection.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace velto::local
{

namespace
{

constexpr int ReadTimeoutMs = 10'000;
constexpr int WriteTimeoutMs = 10'000;
constexpr auto DrainTime = std::chrono::seconds(2);

bool waitFor(int socket, short events, int timeoutMs)
{
    pollfd entry{socket, events, 0};
    int ready = 0;
    do {
        ready = ::poll(&entry, 1, timeoutMs);
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

void describe(int result, const sockaddr_in &address, std::string &ip, int &port)
{
    if (result != 0 || address.sin_family != AF_INET)
        return;
    std::array<char, INET_ADDRSTRLEN> text{};
    if (::inet_ntop(AF_INET, &address.sin_addr, text.data(), text.size()) != nullptr)
        ip = text.data();
    port = ntohs(address.sin_port);
}

} // namespace

Connection::Connection(int socket, int wakeDescriptor)
    : m_socket(socket)
    , m_wakeDescriptor(wakeDescriptor)
{
    const int on = 1;
    ::setsockopt(m_socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

Connection::~Connection()
{
    ::close(m_socket);
}

bool Connection::waitForRequest(std::chrono::milliseconds limit)
{
    if (m_begin < m_end)
        return true;
    std::array<pollfd, 2> entries{{{m_socket, POLLIN, 0}, {m_wakeDescriptor, POLLIN, 0}}};
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (true) {
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        const int ready = ::poll(entries.data(), entries.size(),
                                 static_cast<int>(std::max<std::int64_t>(rest.count(), 0)));
        if (ready < 0 && errno == EINTR)
            continue;
        return ready > 0 && entries[1].revents == 0 && fill() > 0;
    }
}

void Connection::closeGently()
{
    ::shutdown(m_socket, SHUT_WR);
    const auto deadline = std::chrono::steady_clock::now() + DrainTime;
    while (std::chrono::steady_clock::now() < deadline) {
        if (!waitFor(m_socket, POLLIN, 200) ||
            ::recv(m_socket, m_buffer.data(), m_buffer.size(), MSG_DONTWAIT) <= 0)
            return;
    }
}

bool Connection::is_readable() const
{
    return m_begin < m_end || waitFor(m_socket, POLLIN, ReadTimeoutMs);
}

bool Connection::is_writable() const
{
    return !waitFor(m_socket, POLLRDHUP, 0);
}

ssize_t Connection::fill()
{
    ssize_t count = 0;
    do {
        count = ::recv(m_socket, m_buffer.data(), m_buffer.size(), 0);
    } while (count < 0 && errno == EINTR);
    m_begin = 0;
    m_end = count > 0 ? static_cast<size_t>(count) : 0;
    return count;
}

ssize_t Connection::read(char *data, size_t size)
{
    if (m_begin == m_end) {
        if (!waitFor(m_socket, POLLIN, ReadTimeoutMs))
            return -1;
        if (const ssize_t count = fill(); count <= 0)
            return count;
    }
    const size_t count = std::min(size, m_end - m_begin);
    std::memcpy(data, m_buffer.data() + m_begin, count);
    m_begin += count;
    m_delivered += count;
    return static_cast<ssize_t>(count);
}

ssize_t Connection::write(const char *data, size_t size)
{
    if (!waitFor(m_socket, POLLOUT, WriteTimeoutMs))
        return -1;
    ssize_t count = 0;
    do {
        // Never blocking here, or a peer that stops reading would hold the thread for ever.
        count = ::send(m_socket, data, size, MSG_NOSIGNAL | MSG_DONTWAIT);
    } while (count < 0 && errno == EINTR);
    return count;
}

void Connection::get_remote_ip_and_port(std::string &ip, int &port) const
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    describe(::getpeername(m_socket, reinterpret_cast<sockaddr *>(&address), &length), address, ip,
             port);
}

void Connection::get_local_ip_and_port(std::string &ip, int &port) const
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    describe(::getsockname(m_socket, reinterpret_cast<sockaddr *>(&address), &length), address, ip,
             port);
}

} // namespace velto::local
