// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "runningservice.h"

#include "local/auth/secrets.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace velto::local::test
{

using nlohmann::json;

namespace
{

constexpr auto Watchdog = std::chrono::seconds(30);

std::string between(const std::string &text, const std::string &start, const std::string &end)
{
    const auto begin = text.find(start);
    if (begin == std::string::npos)
        return {};
    const auto from = begin + start.size();
    return text.substr(from, text.find(end, from) - from);
}

void readFrames(ChatAnswer &answer)
{
    std::string rest = answer.body;
    for (auto end = rest.find("\n\n"); end != std::string::npos; end = rest.find("\n\n")) {
        const std::string line = rest.substr(0, end);
        rest.erase(0, end + 2);
        json frame = line.starts_with("data: ") ? json::parse(line.substr(6), nullptr, false)
                                                : json(json::value_t::discarded);
        if (frame.is_object() && frame.contains("type"))
            answer.frames.push_back(std::move(frame));
        else
            answer.malformed += line + "\n";
    }
    answer.malformed += rest;
}

} // namespace

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "velto-local-XXXXXX").string();
    m_path = ::mkdtemp(pattern.data());
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

Visitor::Visitor(int port)
    : m_port(port)
{}

httplib::Client Visitor::client() const
{
    httplib::Client client("127.0.0.1", m_port);
    client.set_read_timeout(Watchdog);
    return client;
}

httplib::Headers Visitor::bearer() const
{
    return {{"Authorization", "Bearer " + m_token}};
}

std::string Visitor::openConsentPage(const std::string &state) const
{
    const auto page = client().Get("/auth/oauth2/authorize",
                                   {{"response_type", "code"},
                                    {"client_id", "velto-apple"},
                                    {"redirect_uri", RedirectUri},
                                    {"code_challenge", sha256Text(Verifier)},
                                    {"code_challenge_method", "S256"},
                                    {"scope", "openid profile email offline_access"},
                                    {"state", state}},
                                   httplib::Headers{});
    return page ? between(page->body, "name=\"request_id\" value=\"", "\"") : std::string();
}

std::string Visitor::approvedCode() const
{
    const auto answer = postForm("/auth/oauth2/authorize",
                                 {{"request_id", openConsentPage()}, {"decision", "approve"}});
    return answer ? between(answer->get_header_value("Location"), "code=", "&") : std::string();
}

httplib::Result Visitor::postForm(const std::string &path, const httplib::Params &form) const
{
    return client().Post(path, form);
}

httplib::Result Visitor::exchange(const std::string &code, const std::string &verifier,
                                  const std::string &redirectUri) const
{
    return postForm("/auth/oauth2/token", {{"grant_type", "authorization_code"},
                                           {"code", code},
                                           {"code_verifier", verifier},
                                           {"redirect_uri", redirectUri},
                                           {"client_id", "velto-apple"}});
}

httplib::Result Visitor::refresh(const std::string &token) const
{
    return postForm(
        "/auth/oauth2/token",
        {{"grant_type", "refresh_token"}, {"refresh_token", token}, {"client_id", "velto-apple"}});
}

SignedIn Visitor::signIn()
{
    const auto answer = exchange(approvedCode());
    const json tokens = answer ? json::parse(answer->body, nullptr, false) : json();
    if (!tokens.is_object() || !tokens.contains("access_token")) {
        ADD_FAILURE() << "sign-in failed";
        return {};
    }
    m_token = tokens["access_token"];
    return {m_token, tokens["refresh_token"]};
}

httplib::Result Visitor::get(const std::string &path) const
{
    return client().Get(path, bearer());
}

json Visitor::getJson(const std::string &path) const
{
    const auto answer = get(path);
    EXPECT_TRUE(answer && answer->status == 200) << path;
    return answer ? json::parse(answer->body, nullptr, false) : json();
}

Reply Visitor::call(const std::string &method, const std::string &path, const json &body) const
{
    httplib::Request request;
    request.method = method;
    request.path = path;
    request.headers = bearer();
    if (!body.is_null()) {
        request.body = body.dump();
        request.set_header("Content-Type", "application/json");
    }
    const auto answer = client().send(request);
    EXPECT_TRUE(answer) << method << " " << path;
    return answer ? Reply{answer->status, json::parse(answer->body, nullptr, false)} : Reply{};
}

ServiceOptions RunningService::options(int tokenRate, Role as)
{
    return {m_folder.path() / "data",
            0,
            900,
            tokenRate,
            [this] { return m_now.load(); },
            [this](const std::string &line) {
                const std::lock_guard guard(m_mutex);
                m_lines.push_back(line);
                m_logged.notify_all();
            },
            as};
}

Visitor RunningService::visitorAs(Role role)
{
    // A second service on the same data lets another one in; its token is as good at the first.
    Service other(options(0, role));
    std::string error;
    EXPECT_TRUE(other.start(error)) << error;
    const SignedIn tokens = Visitor(other.port()).signIn();
    Visitor visitor(m_service.port());
    visitor.useToken(tokens.accessToken);
    return visitor;
}

RunningService::RunningService(int tokenRate)
    : m_service(options(tokenRate, Role::Owner))
{
    std::string error;
    EXPECT_TRUE(m_service.start(error)) << error;
    m_visitor = std::make_unique<Visitor>(m_service.port());
    m_visitor->signIn();
}

void RunningService::waitForLog(const std::string &start, std::ptrdiff_t count)
{
    std::unique_lock lock(m_mutex);
    EXPECT_TRUE(m_logged.wait_for(lock, Watchdog,
                                  [&] {
                                      return std::count_if(m_lines.begin(), m_lines.end(),
                                                           [&](const std::string &line) {
                                                               return line.starts_with(start);
                                                           }) >= count;
                                  }))
        << "no request like " << start;
}

std::vector<std::string> RunningService::log()
{
    const std::lock_guard guard(m_mutex);
    return m_lines;
}

std::string ChatAnswer::text() const
{
    std::string text;
    for (const json &frame : ofType("text-delta"))
        text += frame["delta"].get<std::string>();
    return text;
}

std::vector<json> ChatAnswer::ofType(const std::string &type) const
{
    std::vector<json> found;
    for (const json &frame : frames) {
        if (frame["type"] == type)
            found.push_back(frame);
    }
    return found;
}

json spokenTurn(const std::string &role, const std::string &text)
{
    static std::atomic<int> count = 0;
    return {{"id", "00000000-0000-4000-8000-" + std::to_string(100000000000 + ++count)},
            {"role", role},
            {"parts", json::array({{{"type", "text"}, {"text", text}}})}};
}

ChatAnswer chat(const Visitor &visitor, const json &turns, const std::string &conversationId,
                std::size_t byteLimit)
{
    json body{{"messages", turns}};
    if (!conversationId.empty())
        body["conversation_id"] = conversationId;
    ChatAnswer answer;
    httplib::Request request;
    request.method = "POST";
    request.path = "/v1/chat";
    request.headers = visitor.bearer();
    request.set_header("Content-Type", "application/json");
    request.body = body.dump();
    request.content_receiver = [&](const char *data, std::size_t size, std::uint64_t,
                                   std::uint64_t) {
        answer.body.append(data, size);
        return answer.body.size() < byteLimit;
    };
    request.response_handler = [&](const httplib::Response &response) {
        answer.status = response.status;
        answer.conversationId = response.get_header_value("x-conversation-id");
        answer.contentType = response.get_header_value("Content-Type");
        return true;
    };
    httplib::Response response;
    httplib::Error error = httplib::Error::Success;
    answer.whole = visitor.client().send(request, response, error);
    if (answer.status == 200)
        readFrames(answer);
    return answer;
}

ChatAnswer ask(const Visitor &visitor, const std::string &prompt)
{
    return chat(visitor, json::array({spokenTurn("user", prompt)}));
}

std::string rawExchange(int port, const std::string &bytes, const std::string &enough)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    std::string answer;
    if (::connect(socket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0) {
        std::size_t sent = 0;
        while (sent < bytes.size()) {
            const auto count =
                ::send(socket, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (count <= 0)
                break;
            sent += static_cast<std::size_t>(count);
        }
        std::array<char, 65536> buffer{};
        pollfd entry{socket, POLLIN, 0};
        while ((enough.empty() || answer.find(enough) == std::string::npos) &&
               ::poll(&entry, 1, 30'000) > 0) {
            const auto count = ::recv(socket, buffer.data(), buffer.size(), 0);
            if (count <= 0)
                break;
            answer.append(buffer.data(), static_cast<std::size_t>(count));
        }
    }
    ::close(socket);
    return answer;
}

} // namespace velto::local::test
