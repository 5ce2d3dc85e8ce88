// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/service.h"

#include <httplib.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

namespace velto::local::test
{

/// A folder that goes away with the object.
class TemporaryFolder final
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    [[nodiscard]] const std::filesystem::path &path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

struct SignedIn
{
    std::string accessToken;
    std::string refreshToken;
};

struct Reply
{
    int status = 0;
    /// Discarded when the body isn't JSON.
    nlohmann::json body;
};

/// Whatever speaks HTTP to a service at a port.
class Visitor
{
public:
    static constexpr auto RedirectUri = "http://127.0.0.1:51999/callback";
    static constexpr auto Verifier = "a-verifier-that-is-long-enough-to-be-one-0123456789";

    explicit Visitor(int port);

    [[nodiscard]] int port() const { return m_port; }
    [[nodiscard]] httplib::Client client() const;
    [[nodiscard]] httplib::Headers bearer() const;

    /// The id in the form of a fresh consent page.
    [[nodiscard]] std::string openConsentPage(const std::string &state = "s1") const;
    /// The code in the redirect of an approved page.
    [[nodiscard]] std::string approvedCode() const;
    [[nodiscard]] httplib::Result postForm(const std::string &path,
                                           const httplib::Params &form) const;
    [[nodiscard]] httplib::Result exchange(const std::string &code,
                                           const std::string &verifier = Verifier,
                                           const std::string &redirectUri = RedirectUri) const;
    [[nodiscard]] httplib::Result refresh(const std::string &token) const;
    /// Signs in and keeps the access token for `bearer`.
    SignedIn signIn();
    void useToken(std::string token) { m_token = std::move(token); }

    [[nodiscard]] httplib::Result get(const std::string &path) const;
    [[nodiscard]] nlohmann::json getJson(const std::string &path) const;
    /// A request with the token; `body` is sent as JSON unless it is null.
    [[nodiscard]] Reply call(const std::string &method, const std::string &path,
                             const nlohmann::json &body = nullptr) const;

private:
    int m_port;
    std::string m_token;
};

/// The real service in this process, on a port that the system chose, with a clock that stands
/// still unless it is moved.
class RunningService final
{
public:
    explicit RunningService(int tokenRate = 0);

    [[nodiscard]] Service &service() { return m_service; }
    /// Signed in as the owner.
    [[nodiscard]] Visitor &visitor() { return *m_visitor; }
    /// Somebody else at the same service.
    [[nodiscard]] Visitor visitorAs(Role role);
    [[nodiscard]] const std::filesystem::path &folder() const { return m_folder.path(); }
    [[nodiscard]] std::int64_t now() const { return m_now; }
    void passSeconds(std::int64_t seconds) { m_now += seconds; }

    /// Waits until `count` requests whose log line starts so have ended.
    void waitForLog(const std::string &start, std::ptrdiff_t count = 1);
    [[nodiscard]] std::vector<std::string> log();

private:
    [[nodiscard]] ServiceOptions options(int tokenRate, Role as);

    TemporaryFolder m_folder;
    std::atomic<std::int64_t> m_now = 1'790'000'000;
    std::mutex m_mutex;
    std::condition_variable m_logged;
    std::vector<std::string> m_lines;
    Service m_service;
    std::unique_ptr<Visitor> m_visitor;
};

/// The answer to one chat request.
struct ChatAnswer
{
    int status = 0;
    std::string conversationId;
    std::string contentType;
    std::string body;
    /// Frames in their order.
    std::vector<nlohmann::json> frames;
    /// What of the body is not a frame of the form `data: {json}` and an empty line.
    std::string malformed;
    /// The transfer ended as HTTP says it has to.
    bool whole = false;

    [[nodiscard]] std::string text() const;
    [[nodiscard]] std::vector<nlohmann::json> ofType(const std::string &type) const;
};

[[nodiscard]] nlohmann::json spokenTurn(const std::string &role, const std::string &text);
/// Posts turns; reads at most `byteLimit` bytes of the answer and then closes the connection.
[[nodiscard]] ChatAnswer chat(const Visitor &visitor, const nlohmann::json &turns,
                              const std::string &conversationId = {},
                              std::size_t byteLimit = SIZE_MAX);
[[nodiscard]] ChatAnswer ask(const Visitor &visitor, const std::string &prompt);

/// What a service answers to bytes as they stand, until it closes or `enough` is in the answer.
[[nodiscard]] std::string rawExchange(int port, const std::string &bytes,
                                      const std::string &enough = {});

} // namespace velto::local::test
