// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/http/server.h"

#include "local/http/body.h"
#include "local/http/connection.h"
#include "local/http/reply.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <set>
#include <thread>

#include <strings.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace velto::local
{

namespace
{

// A thread serves one connection from its start to its end, streams and idle time included, so
// there are as many as connections that may be open at once. An idle one costs a few pages.
constexpr std::size_t ConnectionLimit = 256;
// The library queues five connections, and a client that finds the queue full waits a second.
constexpr int AcceptBacklog = 512;
constexpr auto IdleLimit = std::chrono::seconds(75);
// Only what the library's Keep-Alive header says; connections are never counted.
constexpr std::size_t RequestLimit = 1'000'000;
// The library matches paths with a recursive regular expression: length is stack.
constexpr std::size_t LongestPath = 1024;

// A thread serves one request at a time.
thread_local std::chrono::steady_clock::time_point t_requestStarted;

void allowRebinding(socket_t socket)
{
    // Not SO_REUSEPORT, the library's choice: with it a second service would share the port
    // instead of being told that it is taken.
    const int on = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
}

bool hasControlCharacter(const std::string &text)
{
    return std::any_of(text.begin(), text.end(),
                       [](unsigned char c) { return c < 0x20 || c == 0x7f; });
}

bool sameText(const std::string &left, const std::string &right)
{
    return left.size() == right.size() && ::strcasecmp(left.c_str(), right.c_str()) == 0;
}

} // namespace

Server::Server(std::vector<Route> routes, TokenCheck tokenCheck, LogLine log)
    : m_routes(std::move(routes))
    , m_tokenCheck(std::move(tokenCheck))
    , m_log(std::move(log))
    , m_wakeDescriptor(::eventfd(0, EFD_CLOEXEC))
{
    new_task_queue = [] { return new httplib::ThreadPool(ConnectionLimit); };
    set_socket_options(allowRebinding);
    set_keep_alive_timeout(IdleLimit.count());
    set_keep_alive_max_count(RequestLimit);
    registerHandlers();
}

Server::~Server()
{
    ::close(m_wakeDescriptor);
}

void Server::registerHandlers()
{
    const std::string anything = "[\\s\\S]*";
    const auto plain = [this](const httplib::Request &request, httplib::Response &response) {
        dispatch(request, response, nullptr);
    };
    const auto reading = [this](const httplib::Request &request, httplib::Response &response,
                                const httplib::ContentReader &reader) {
        dispatch(request, response, &reader);
    };
    Get(anything, plain);
    Options(anything, plain);
    Post(anything, reading);
    Put(anything, reading);
    Patch(anything, reading);
    Delete(anything, reading);
    set_pre_routing_handler([this](const httplib::Request &request, httplib::Response &response) {
        return admits(request, response) ? HandlerResponse::Unhandled : HandlerResponse::Handled;
    });
    set_exception_handler(
        [](const httplib::Request &, httplib::Response &response, std::exception_ptr) {
            replyError(response, 500, "internal", "The service failed to answer.");
        });
    set_logger([this](const httplib::Request &request, const httplib::Response &response) {
        logRequest(request, response);
    });
}

bool Server::bind(int port)
{
    // The library doesn't tell which port it has bound when it is given 0 as a number.
    m_port =
        port == 0 ? bind_to_any_port("127.0.0.1") : (bind_to_port("127.0.0.1", port) ? port : -1);
    return m_port > 0 && ::listen(svr_sock_, AcceptBacklog) == 0;
}

void Server::run()
{
    listen_after_bind();
}

void Server::waitUntilReady() const
{
    // `stop` does nothing before this point, so a service that starts and stops would hang.
    while (!is_running())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void Server::stop()
{
    const std::uint64_t one = 1;
    if (::write(m_wakeDescriptor, &one, sizeof one) < 0)
        std::perror("velto-local: eventfd");
    httplib::Server::stop();
}

bool Server::process_and_close_socket(socket_t socket)
{
    Connection connection(socket, m_wakeDescriptor);
    bool more = true;
    while (more && connection.waitForRequest(IdleLimit)) {
        t_requestStarted = std::chrono::steady_clock::now();
        bool closed = false;
        BodyFraming framing;
        std::uint64_t headEnd = 0;
        const bool answered =
            process_request(connection, false, closed, [&](httplib::Request &request) {
                // The library would cut any body, an error's too; the media endpoint does it.
                request.ranges.clear();
                framing = bodyFraming(request);
                headEnd = connection.delivered();
            });
        const bool bodyRead =
            !framing.chunked && connection.delivered() - headEnd == framing.length;
        more = answered && !closed && bodyRead;
        if (answered && !bodyRead)
            connection.closeGently();
    }
    return true;
}

bool Server::hostIsOurs(const httplib::Request &request) const
{
    if (request.get_header_value_count("Host") != 1)
        return false;
    const std::string host = request.get_header_value("Host");
    const std::string port = ":" + std::to_string(m_port);
    return sameText(host, "127.0.0.1" + port) || sameText(host, "localhost" + port);
}

bool Server::admits(const httplib::Request &request, httplib::Response &response) const
{
    response.set_header("X-Content-Type-Options", "nosniff");
    // A page of another origin reaches this address through a name of its own; only its Host
    // header gives it away.
    if (!hostIsOurs(request))
        replyError(response, 421, "misdirected", "This service answers only as 127.0.0.1.");
    else if (request.path.size() > LongestPath)
        replyError(response, 414, "path_too_long", "The path is too long.");
    else if (hasControlCharacter(request.path))
        replyError(response, 400, "bad_path", "The path holds a control character.");
    else
        return true;
    if (!bodyFraming(request).empty())
        response.set_header("Connection", "close");
    return false;
}

const Route *Server::findRoute(const httplib::Request &request, httplib::Response &response,
                               std::vector<std::string> &captures) const
{
    const std::string method = request.method == "HEAD" ? "GET" : request.method;
    std::set<std::string> others;
    for (const Route &route : m_routes) {
        if (!matchPath(route.pattern, request.path, captures))
            continue;
        if (route.method == method)
            return &route;
        others.insert(route.method);
    }
    if (others.empty()) {
        replyError(response, 404, "not_found", "There is nothing at this address.");
        return nullptr;
    }
    std::string allowed;
    for (const std::string &other : others)
        allowed += (allowed.empty() ? "" : ", ") + other;
    response.set_header("Allow", allowed);
    replyError(response, 405, "method_not_allowed", "This address takes only " + allowed + ".");
    return nullptr;
}

bool Server::hasGoodToken(const httplib::Request &request, httplib::Response &response,
                          Caller &caller) const
{
    const std::string header = request.get_header_value("Authorization");
    const std::string scheme = "Bearer ";
    if (header.size() <= scheme.size() || ::strncasecmp(header.c_str(), scheme.c_str(), 7) != 0) {
        response.set_header("WWW-Authenticate", "Bearer realm=\"velto-local\"");
        replyError(response, 401, "invalid_token", "The request carries no access token.");
        return false;
    }
    if (auto owner = m_tokenCheck(header.substr(scheme.size()))) {
        caller = std::move(*owner);
        return true;
    }
    response.set_header("WWW-Authenticate",
                        "Bearer realm=\"velto-local\", error=\"invalid_token\"");
    replyError(response, 401, "invalid_token", "The access token is unknown or has expired.");
    return false;
}

bool Server::mayUse(const Route &route, const httplib::Request &request,
                    httplib::Response &response, Caller &caller) const
{
    if (route.access == Access::Open)
        return true;
    if (!hasGoodToken(request, response, caller))
        return false;
    if (route.access != Access::Administrator || caller.administrator)
        return true;
    replyError(response, 403, "forbidden", "Only administrators of the service may do this.");
    return false;
}

void Server::dispatch(const httplib::Request &request, httplib::Response &response,
                      const httplib::ContentReader *reader) const
{
    Call call{request, {}, {}, {}};
    const Route *route = findRoute(request, response, call.captures);
    const bool admitted = route != nullptr && mayUse(*route, request, response, call.caller) &&
                          readBody(request, response, reader, route->bodyLimit, call.body);
    if (admitted)
        route->handler(call, response);
    else if (!bodyFraming(request).empty())
        response.set_header("Connection", "close");
}

void Server::logRequest(const httplib::Request &request, const httplib::Response &response) const
{
    const auto spent = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - t_requestStarted);
    // Never the query: it carries the codes of a sign-in.
    std::string path = request.path.substr(0, 200);
    std::replace_if(
        path.begin(), path.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '?');
    m_log((request.method.empty() ? "-" : request.method) + " " + path + " " +
          std::to_string(response.status) + " " + std::to_string(spent.count()) + " ms");
}

} // namespace velto::local
