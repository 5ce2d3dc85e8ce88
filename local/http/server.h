// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/http/route.h"

#include <httplib.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velto::local
{

/// Serves a route table on 127.0.0.1. What holds for every endpoint is settled here, in this
/// order: the Host header, the route, the bearer token and whose it is, the bound of the body, the
/// log line.
///
/// `run` blocks; `stop` may be called from any thread.
class Server final : private httplib::Server
{
public:
    /// Whose token it is; absent when it isn't good.
    using TokenCheck = std::function<std::optional<Caller>(const std::string &token)>;
    /// Takes one line, without its end. Called from the threads that serve.
    using LogLine = std::function<void(const std::string &line)>;

    Server(std::vector<Route> routes, TokenCheck tokenCheck, LogLine log);
    ~Server() override;

    /// Binds to `port`, or to a port that the system chooses when it is 0. Connections queue
    /// from here on. False when the port can't be had.
    [[nodiscard]] bool bind(int port);
    [[nodiscard]] int port() const { return m_port; }

    void run();
    /// Returns when `run` accepts connections.
    void waitUntilReady() const;
    /// Ends kept connections at once and open streams at their next delta.
    void stop();

private:
    bool process_and_close_socket(socket_t socket) override;
    void registerHandlers();
    [[nodiscard]] bool admits(const httplib::Request &request, httplib::Response &response) const;
    [[nodiscard]] bool hostIsOurs(const httplib::Request &request) const;
    void dispatch(const httplib::Request &request, httplib::Response &response,
                  const httplib::ContentReader *reader) const;
    [[nodiscard]] const Route *findRoute(const httplib::Request &request,
                                         httplib::Response &response,
                                         std::vector<std::string> &captures) const;
    [[nodiscard]] bool hasGoodToken(const httplib::Request &request, httplib::Response &response,
                                    Caller &caller) const;
    [[nodiscard]] bool mayUse(const Route &route, const httplib::Request &request,
                              httplib::Response &response, Caller &caller) const;
    void logRequest(const httplib::Request &request, const httplib::Response &response) const;

    std::vector<Route> m_routes;
    TokenCheck m_tokenCheck;
    LogLine m_log;
    int m_port = 0;
    int m_wakeDescriptor;
};

} // namespace velto::local
