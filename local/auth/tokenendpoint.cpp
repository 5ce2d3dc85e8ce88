// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/auth/tokenendpoint.h"

#include "local/http/reply.h"

namespace velto::local
{

namespace
{

std::string field(const Form &form, std::string_view name)
{
    const auto entry = form.find(name);
    return entry == form.end() ? std::string() : entry->second;
}

void refuse(httplib::Response &response, std::string_view code, std::string_view message)
{
    replyError(response, 400, code, message);
}

void replyTokens(httplib::Response &response, const GrantStore::Tokens &tokens)
{
    if (tokens) {
        replyJson(response, 200,
                  {{"access_token", tokens->accessToken},
                   {"token_type", "Bearer"},
                   {"expires_in", tokens->expiresIn},
                   {"refresh_token", tokens->refreshToken}});
    } else if (tokens.error() == GrantError::InvalidGrant) {
        refuse(response, "invalid_grant", "The code or token is unknown, used or revoked.");
    } else {
        replyError(response, 500, "server_error", "The tokens could not be stored.");
    }
}

} // namespace

TokenEndpoint::TokenEndpoint(GrantStore &grants)
    : m_grants(grants)
{}

void TokenEndpoint::issue(const Call &call, httplib::Response &response)
{
    response.set_header("Cache-Control", "no-store");
    response.set_header("Pragma", "no-cache");
    const auto form = parseForm(call.body);
    if (!form)
        return refuse(response, "invalid_request", "The form is malformed.");
    if (field(*form, "client_id") != ClientId)
        return refuse(response, "invalid_client", "The client is not known.");
    answer(*form, response);
}

void TokenEndpoint::answer(const Form &form, httplib::Response &response)
{
    const std::string kind = field(form, "grant_type");
    if (kind == "authorization_code") {
        const std::string code = field(form, "code");
        const std::string verifier = field(form, "code_verifier");
        const std::string redirectUri = field(form, "redirect_uri");
        if (code.empty() || verifier.empty() || redirectUri.empty())
            return refuse(response, "invalid_request", "A parameter is missing.");
        return replyTokens(response, m_grants.exchangeCode(code, verifier, redirectUri));
    }
    if (kind != "refresh_token")
        return refuse(response, "unsupported_grant_type", "This kind of grant is not offered.");
    const std::string token = field(form, "refresh_token");
    if (token.empty())
        return refuse(response, "invalid_request", "A parameter is missing.");
    replyTokens(response, m_grants.refresh(token));
}

void TokenEndpoint::revoke(const Call &call, httplib::Response &response)
{
    response.set_header("Cache-Control", "no-store");
    if (const auto form = parseForm(call.body))
        m_grants.revoke(field(*form, "token"));
    replyJson(response, 200, nlohmann::json::object());
}

} // namespace velto::local
