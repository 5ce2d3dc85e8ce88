// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/store/database.h"

#include <tl/expected.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace velto::local
{

/// The one client that may sign in, and it has no secret.
inline constexpr std::string_view ClientId = "velto-apple";

/// What the user has consented to.
struct CodeRequest
{
    std::string clientId;
    std::string redirectUri;
    std::string challenge;
    std::string scope;
    std::string userId;
};

struct IssuedTokens
{
    std::string accessToken;
    std::string refreshToken;
    std::int64_t expiresIn = 0;
};

/// The refusals of the token endpoint that depend on what is stored.
enum class GrantError { InvalidGrant, Storage };

/// Codes, tokens and the grants that they belong to. Only hashes of secrets are stored. Safe from
/// any thread; each operation is one transaction, so that of two that present the same secret
/// exactly one comes first.
class GrantStore final
{
public:
    using Tokens = tl::expected<IssuedTokens, GrantError>;

    GrantStore(Database &database, Clock clock, std::int64_t accessTokenSeconds);

    /// A code for the redirect, good once and for 60 seconds.
    [[nodiscard]] tl::expected<std::string, GrantError> issueCode(const CodeRequest &request);
    /// A code that comes a second time revokes what it has given.
    [[nodiscard]] Tokens exchangeCode(const std::string &code, const std::string &verifier,
                                      const std::string &redirectUri);
    /// Each refresh token is good once; one that comes again is in two hands, and its whole grant
    /// is revoked.
    [[nodiscard]] Tokens refresh(const std::string &refreshToken);
    /// Revokes the grant of a refresh or access token. An unknown token is none's.
    void revoke(const std::string &token);
    /// Who has signed in with this token; absent when it isn't good.
    [[nodiscard]] std::optional<std::string> userOf(const std::string &accessToken) const;

private:
    [[nodiscard]] Tokens issueTokens(const std::string &grantId);
    void revokeGrant(const std::string &grantId);
    void forgetExpired();

    Database &m_database;
    Clock m_clock;
    std::int64_t m_accessTokenSeconds;
};

} // namespace velto::local
