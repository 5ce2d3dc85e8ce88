// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/routes.h"

#include "local/admin/console.h"
#include "local/agent/chatendpoint.h"
#include "local/auth/authorizeendpoint.h"
#include "local/auth/tokenendpoint.h"
#include "local/company/invites.h"
#include "local/company/members.h"
#include "local/company/people.h"
#include "local/company/workspaces.h"
#include "local/http/mediaendpoint.h"
#include "local/http/reply.h"
#include "local/library/library.h"
#include "local/library/marketplace.h"
#include "local/library/settings.h"
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

template<typename Endpoint>
Handler bound(Endpoint &endpoint, JsonAnswer (Endpoint::*member)(const Call &))
{
    return [&endpoint, member](const Call &call, httplib::Response &response) {
        replyAnswer(response, (endpoint.*member)(call));
    };
}

void greet(const Call &, httplib::Response &response)
{
    response.status = 200;
    response.set_content("velto-local " VELTO_VERSION "\n", "text/plain; charset=utf-8");
}

std::vector<Route> signInRoutes(const Endpoints &to)
{
    using enum Access;
    using Authorize = AuthorizeEndpoint;
    using Token = TokenEndpoint;
    return {
        {"GET", "/", Open, NoBody, greet},
        {"GET", "/auth/oauth2/authorize", Open, NoBody, bound(to.authorize, &Authorize::showPage)},
        {"POST", "/auth/oauth2/authorize", Open, FormBody, bound(to.authorize, &Authorize::decide)},
        {"POST", "/auth/oauth2/token", Open, FormBody, bound(to.token, &Token::issue)},
        {"POST", "/auth/oauth2/revoke", Open, FormBody, bound(to.token, &Token::revoke)},
    };
}

std::vector<Route> companyRoutes(const Endpoints &to)
{
    using enum Access;
    return {
        {"GET", "/v1/me", Bearer, NoBody, bound(to.people, &People::me)},
        {"GET", "/v1/me/profile", Bearer, NoBody, bound(to.people, &People::profile)},
        {"POST", "/v1/workspaces/switch", Bearer, JsonBody,
         bound(to.people, &People::switchWorkspace)},
        {"GET", "/v1/workspaces/{slug}", Bearer, NoBody, bound(to.workspaces, &Workspaces::detail)},
        {"DELETE", "/v1/workspaces/{slug}", Bearer, NoBody,
         bound(to.workspaces, &Workspaces::remove)},
        {"GET", "/v1/workspaces/{slug}/members", Bearer, NoBody, bound(to.members, &Members::list)},
        {"PATCH", "/v1/workspaces/{slug}/members/{userId}/role", Bearer, JsonBody,
         bound(to.members, &Members::setRole)},
        {"DELETE", "/v1/workspaces/{slug}/members/{userId}", Bearer, NoBody,
         bound(to.members, &Members::remove)},
        {"GET", "/v1/workspaces/{slug}/invites", Bearer, NoBody, bound(to.invites, &Invites::list)},
        {"POST", "/v1/workspaces/{slug}/invites", Bearer, JsonBody,
         bound(to.invites, &Invites::create)},
        {"DELETE", "/v1/workspaces/{slug}/invites/{id}", Bearer, NoBody,
         bound(to.invites, &Invites::revoke)},
        {"GET", "/v1/workspaces/{slug}/audit", Bearer, NoBody, bound(to.audit, &AuditLog::list)},
    };
}

std::vector<Route> libraryRoutes(const Endpoints &to)
{
    using enum Access;
    using Market = Marketplace;
    return {
        {"GET", "/v1/agent/config", Bearer, NoBody, bound(to.settings, &Settings::agentConfig)},
        {"GET", "/v1/settings", Bearer, NoBody, bound(to.settings, &Settings::read)},
        {"PUT", "/v1/settings", Bearer, JsonBody, bound(to.settings, &Settings::write)},
        {"GET", "/v1/settings/skills", Bearer, NoBody, bound(to.skills, &Library::list)},
        {"PATCH", "/v1/settings/skills/{id...}", Bearer, JsonBody,
         bound(to.skills, &Library::setEnabled)},
        {"DELETE", "/v1/settings/skills/{id...}", Bearer, NoBody,
         bound(to.skills, &Library::remove)},
        {"GET", "/v1/settings/subagents", Bearer, NoBody, bound(to.subagents, &Library::list)},
        {"PATCH", "/v1/settings/subagents/{id...}", Bearer, JsonBody,
         bound(to.subagents, &Library::setEnabled)},
        {"DELETE", "/v1/settings/subagents/{id...}", Bearer, NoBody,
         bound(to.subagents, &Library::remove)},
        {"GET", "/v1/velto/tools", Bearer, NoBody, bound(to.tools, &ToolCatalog::list)},
        {"GET", "/v1/integrations/{provider}/status", Bearer, NoBody,
         bound(to.integrations, &Integrations::status)},
        {"DELETE", "/v1/integrations/{provider}/status", Bearer, NoBody,
         bound(to.integrations, &Integrations::disconnect)},
        {"GET", "/v1/marketplace/catalog", Bearer, NoBody, bound(to.marketplace, &Market::catalog)},
        {"POST", "/v1/marketplace/install", Bearer, JsonBody,
         bound(to.marketplace, &Market::install)},
        {"DELETE", "/v1/marketplace/installed/{id}", Bearer, NoBody,
         bound(to.marketplace, &Market::uninstall)},
    };
}

std::vector<Route> consoleRoutes(const Endpoints &to)
{
    using enum Access;
    return {
        {"GET", "/v1/admin/overview", Administrator, NoBody, bound(to.console, &Console::overview)},
        {"GET", "/v1/admin/users", Administrator, NoBody, bound(to.console, &Console::users)},
        {"GET", "/v1/admin/workspaces", Administrator, NoBody,
         bound(to.console, &Console::workspaces)},
        {"GET", "/v1/admin/workspaces/{slug}", Administrator, NoBody,
         bound(to.console, &Console::workspace)},
        {"PATCH", "/v1/admin/workspaces/{slug}", Bearer, JsonBody,
         bound(to.settings, &Settings::setWorkspaceModel)},
        {"GET", "/v1/admin/catalog", Administrator, NoBody, bound(to.console, &Console::catalog)},
        {"DELETE", "/v1/admin/catalog/{id}", Administrator, NoBody,
         bound(to.console, &Console::removeFromCatalog)},
    };
}

std::vector<Route> chatRoutes(const Endpoints &to)
{
    using enum Access;
    using History = ConversationEndpoint;
    return {
        {"GET", "/v1/conversations", Bearer, NoBody, bound(to.history, &History::list)},
        {"GET", "/v1/conversations/{id}/messages", Bearer, NoBody,
         bound(to.history, &History::messages)},
        {"PATCH", "/v1/conversations/{id}", Bearer, JsonBody, bound(to.history, &History::rename)},
        {"DELETE", "/v1/conversations/{id}", Bearer, NoBody, bound(to.history, &History::remove)},
        {"POST", "/v1/chat", Bearer, ChatBody, bound(to.chat, &ChatEndpoint::chat)},
        {"GET", "/v1/media/{path...}", Bearer, NoBody, replyMedia},
    };
}

} // namespace

std::vector<Route> makeRoutes(const Endpoints &to)
{
    std::vector<Route> routes;
    for (auto *part :
         {&signInRoutes, &companyRoutes, &libraryRoutes, &consoleRoutes, &chatRoutes}) {
        std::vector<Route> some = part(to);
        std::move(some.begin(), some.end(), std::back_inserter(routes));
    }
    return routes;
}

} // namespace velto::local
