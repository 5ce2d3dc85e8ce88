// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/routes.h"

#include "local/account.h"
#include "local/agent/chatendpoint.h"
#include "local/auth/authorizeendpoint.h"
#include "local/auth/tokenendpoint.h"
#include "local/http/mediaendpoint.h"
#include "local/http/reply.h"
#include "local/store/conversationendpoint.h"

namespace velto::local
{

namespace
{

constexpr std::size_t NoBody = 0;
constexpr std::size_t FormBody = 16UL * 1024;
constexpr std::size_t JsonBody = 256UL * 1024;
// The whole history comes with each request.
constexpr std::size_t ChatBody = 8UL * 1024 * 1024;

template<typename Endpoint>
Handler bound(Endpoint &endpoint, void (Endpoint::*member)(const Call &, httplib::Response &))
{
    return [&endpoint, member](const Call &call, httplib::Response &response) {
        (endpoint.*member)(call, response);
    };
}

void greet(const Call &, httplib::Response &response)
{
    response.status = 200;
    response.set_content("velto-local " VELTO_VERSION "\n", "text/plain; charset=utf-8");
}

void replyMe(const Call &, httplib::Response &response)
{
    replyJson(response, 200, account::me());
}

} // namespace

std::vector<Route> makeRoutes(const Endpoints &to)
{
    using enum Access;
    using Authorize = AuthorizeEndpoint;
    using Token = TokenEndpoint;
    using History = ConversationEndpoint;
    return {
        {"GET", "/", Open, NoBody, greet},
        {"GET", "/auth/oauth2/authorize", Open, NoBody, bound(to.authorize, &Authorize::showPage)},
        {"POST", "/auth/oauth2/authorize", Open, FormBody, bound(to.authorize, &Authorize::decide)},
        {"POST", "/auth/oauth2/token", Open, FormBody, bound(to.token, &Token::issue)},
        {"POST", "/auth/oauth2/revoke", Open, FormBody, bound(to.token, &Token::revoke)},
        {"GET", "/v1/me", Bearer, NoBody, replyMe},
        {"GET", "/v1/conversations", Bearer, NoBody, bound(to.history, &History::list)},
        {"GET", "/v1/conversations/{id}/messages", Bearer, NoBody,
         bound(to.history, &History::messages)},
        {"PATCH", "/v1/conversations/{id}", Bearer, JsonBody, bound(to.history, &History::rename)},
        {"DELETE", "/v1/conversations/{id}", Bearer, NoBody, bound(to.history, &History::remove)},
        {"POST", "/v1/chat", Bearer, ChatBody, bound(to.chat, &ChatEndpoint::chat)},
        {"GET", "/v1/media/{path...}", Bearer, NoBody, replyMedia},
    };
}

} // namespace velto::local
