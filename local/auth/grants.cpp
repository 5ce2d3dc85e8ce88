// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/auth/grants.h"

#include "local/auth/secrets.h"

namespace velto::local
{

namespace
{
constexpr std::int64_t CodeSeconds = 60;
// A code is remembered for a while after it has expired, to tell its reuse.
constexpr std::int64_t CodeMemorySeconds = 86'400;
} // namespace

GrantStore::GrantStore(Database &database, Clock clock, std::int64_t accessTokenSeconds)
    : m_database(database)
    , m_clock(std::move(clock))
    , m_accessTokenSeconds(accessTokenSeconds)
{}

tl::expected<std::string, GrantError> GrantStore::issueCode(const CodeRequest &request)
{
    const std::string code = randomSecret();
    const std::string grantId = randomId("grant_");
    const auto guard = m_database.lock();
    Transaction transaction(m_database);
    if (!transaction.isOpen())
        return tl::unexpected(GrantError::Storage);
    forgetExpired();
    const bool written =
        Statement(m_database, "INSERT INTO grants (id, client_id, scope, user_id, created_at)"
                              " VALUES (?, ?, ?, ?, ?)")
            .bind(grantId)
            .bind(request.clientId)
            .bind(request.scope)
            .bind(request.userId)
            .bind(m_clock())
            .done() &&
        Statement(m_database, "INSERT INTO codes (hash, grant_id, redirect_uri, challenge,"
                              " expires_at) VALUES (?, ?, ?, ?, ?)")
            .bind(sha256Text(code))
            .bind(grantId)
            .bind(request.redirectUri)
            .bind(request.challenge)
            .bind(m_clock() + CodeSeconds)
            .done();
    if (!written || !transaction.commit())
        return tl::unexpected(GrantError::Storage);
    return code;
}

GrantStore::Tokens GrantStore::exchangeCode(const std::string &code, const std::string &verifier,
                                            const std::string &redirectUri)
{
    const auto guard = m_database.lock();
    Transaction transaction(m_database);
    const std::string hash = sha256Text(code);
    Statement query(m_database, "SELECT grant_id, redirect_uri, challenge, expires_at, used"
                                " FROM codes WHERE hash = ?");
    if (!transaction.isOpen())
        return tl::unexpected(GrantError::Storage);
    if (!query.bind(hash).step())
        return tl::unexpected(GrantError::InvalidGrant);
    const std::string grantId = query.text(0);
    const bool good = query.integer(4) == 0 && query.integer(3) > m_clock() &&
                      query.text(1) == redirectUri &&
                      sameSecret(query.text(2), sha256Text(verifier));
    // A failed attempt spends the code as well: whoever made it holds what it should not.
    Statement(m_database, "UPDATE codes SET used = 1 WHERE hash = ?").bind(hash).change();
    if (!good)
        revokeGrant(grantId);
    Tokens tokens = good ? issueTokens(grantId) : tl::unexpected(GrantError::InvalidGrant);
    if (!transaction.commit())
        return tl::unexpected(GrantError::Storage);
    return tokens;
}

GrantStore::Tokens GrantStore::refresh(const std::string &refreshToken)
{
    const auto guard = m_database.lock();
    Transaction transaction(m_database);
    const std::string hash = sha256Text(refreshToken);
    Statement query(m_database, "SELECT grant_id, used, revoked FROM refresh_tokens"
                                " JOIN grants ON grants.id = grant_id WHERE hash = ?");
    if (!transaction.isOpen())
        return tl::unexpected(GrantError::Storage);
    if (!query.bind(hash).step())
        return tl::unexpected(GrantError::InvalidGrant);
    const std::string grantId = query.text(0);
    const bool good = query.integer(1) == 0 && query.integer(2) == 0;
    if (good)
        Statement(m_database, "UPDATE refresh_tokens SET used = 1 WHERE hash = ?")
            .bind(hash)
            .change();
    else
        revokeGrant(grantId);
    Tokens tokens = good ? issueTokens(grantId) : tl::unexpected(GrantError::InvalidGrant);
    if (!transaction.commit())
        return tl::unexpected(GrantError::Storage);
    return tokens;
}

void GrantStore::revoke(const std::string &token)
{
    const auto guard = m_database.lock();
    Statement query(m_database, "SELECT grant_id FROM refresh_tokens WHERE hash = ?1"
                                " UNION SELECT grant_id FROM access_tokens WHERE hash = ?1");
    if (query.bind(sha256Text(token)).step())
        revokeGrant(query.text(0));
}

std::optional<std::string> GrantStore::userOf(const std::string &accessToken) const
{
    const auto guard = m_database.lock();
    Statement query(m_database, "SELECT user_id FROM access_tokens JOIN grants"
                                " ON grants.id = grant_id"
                                " WHERE hash = ? AND expires_at > ? AND revoked = 0");
    if (!query.bind(sha256Text(accessToken)).bind(m_clock()).step())
        return std::nullopt;
    return query.text(0);
}

GrantStore::Tokens GrantStore::issueTokens(const std::string &grantId)
{
    const IssuedTokens tokens{randomSecret(), randomSecret(), m_accessTokenSeconds};
    forgetExpired();
    const bool written =
        Statement(m_database, "INSERT INTO access_tokens (hash, grant_id, expires_at)"
                              " VALUES (?, ?, ?)")
            .bind(sha256Text(tokens.accessToken))
            .bind(grantId)
            .bind(m_clock() + m_accessTokenSeconds)
            .done() &&
        Statement(m_database, "INSERT INTO refresh_tokens (hash, grant_id) VALUES (?, ?)")
            .bind(sha256Text(tokens.refreshToken))
            .bind(grantId)
            .done();
    if (!written)
        return tl::unexpected(GrantError::Storage);
    return tokens;
}

void GrantStore::revokeGrant(const std::string &grantId)
{
    Statement(m_database, "UPDATE grants SET revoked = 1 WHERE id = ?").bind(grantId).change();
}

void GrantStore::forgetExpired()
{
    Statement access(m_database, "DELETE FROM access_tokens WHERE expires_at <= ?");
    access.bind(m_clock()).change();
    Statement codes(m_database, "DELETE FROM codes WHERE expires_at <= ?");
    codes.bind(m_clock() - CodeMemorySeconds).change();
}

} // namespace velto::local
