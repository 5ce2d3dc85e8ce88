// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <httplib.h>

#include <array>
#include <chrono>
#include <cstdint>

namespace velto::local
{

/// One accepted TCP connection as the HTTP library sees it. Owns the socket. Used by one thread.
///
/// It keeps what was read ahead between requests, so that pipelined requests work, and it counts
/// what was handed out, so that the server knows whether a request's body was read to its end.
class Connection final : public httplib::Stream
{
public:
    /// `wakeDescriptor` becomes readable when the server stops.
    Connection(int socket, int wakeDescriptor);
    ~Connection() override;
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Waits for the first byte of a request. False when the peer has closed, when nothing came
    /// within `limit`, or when the server stops.
    [[nodiscard]] bool waitForRequest(std::chrono::milliseconds limit);

    /// Bytes handed out so far.
    [[nodiscard]] std::uint64_t delivered() const { return m_delivered; }

    /// Ends the sending side and drops what still arrives, so that a peer in the middle of
    /// sending sees the answer instead of a reset.
    void closeGently();

    [[nodiscard]] bool is_readable() const override;
    /// False as soon as the peer has gone, which is how a stream notices a stop between deltas.
    [[nodiscard]] bool is_writable() const override;
    ssize_t read(char *data, size_t size) override;
    ssize_t write(const char *data, size_t size) override;
    void get_remote_ip_and_port(std::string &ip, int &port) const override;
    void get_local_ip_and_port(std::string &ip, int &port) const override;
    [[nodiscard]] socket_t socket() const override { return m_socket; }

private:
    ssize_t fill();

    int m_socket;
    int m_wakeDescriptor;
    std::array<char, 16384> m_buffer;
    size_t m_begin = 0;
    size_t m_end = 0;
    std::uint64_t m_delivered = 0;
};

} // namespace velto::local
