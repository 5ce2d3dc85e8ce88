// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/service.h"

#include "local/admin/console.h"
#include "local/agent/chatendpoint.h"
#include "local/agent/demoagent.h"
#include "local/auth/authorizeendpoint.h"
#include "local/auth/tokenendpoint.h"
#include "local/company/invites.h"
#include "local/company/members.h"
#include "local/company/people.h"
#include "local/company/workspaces.h"
#include "local/http/server.h"
#include "local/library/library.h"
#include "local/library/marketplace.h"
#include "local/library/settings.h"
#include "local/routes.h"
#include "local/seed/company.h"
#include "local/seed/plant.h"
#include "local/store/conversationendpoint.h"
#include "local/store/datafolder.h"

#include <ctime>
#include <thread>

namespace velto::local
{

struct Service::Parts
{
    Parts(std::unique_ptr<DataFolder> held, std::unique_ptr<Database> opened,
          const ServiceOptions &options)
        : folder(std::move(held))
        , database(std::move(opened))
        , grants(*database, options.clock, options.accessTokenSeconds)
        , consents(options.clock)
        , conversations(*database, options.clock)
        , agent(options.tokenRate)
        , audit(*database, options.clock)
        , integrations(*database, audit)
        , people(*database, audit, integrations)
        , workspaces(*database)
        , members(*database, audit)
        , invites(*database, options.clock, audit)
        , tools(*database, integrations)
        , settings(*database, options.clock, audit, tools)
        , skills(Library::Kind::Skills, *database, options.clock, audit)
        , subagents(Library::Kind::Subagents, *database, options.clock, audit)
        , marketplace(*database, options.clock, audit, integrations)
        , usage(*database, options.clock)
        , console(*database, options.clock, audit, usage)
        , authorize(grants, consents, signer(options.signInAs))
        , token(grants)
        , history(conversations)
        , chat(conversations, agent, settings, usage)
        , routes(makeRoutes({authorize, token, people, workspaces, members, invites, audit,
                             settings, skills, subagents, tools, integrations, marketplace, console,
                             history, chat}))
        , server(
              routes, [this](const std::string &text) { return callerWith(text); }, options.log)
    {}

    [[nodiscard]] Person signer(Role role) const
    {
        return people.person(std::string(seed::userWithRole(role))).value_or(Person{});
    }
    [[nodiscard]] std::optional<Caller> callerWith(const std::string &accessToken) const
    {
        const auto user = grants.userOf(accessToken);
        return user ? people.callerOf(*user) : std::nullopt;
    }

    std::unique_ptr<DataFolder> folder;
    std::unique_ptr<Database> database;
    GrantStore grants;
    ConsentRequests consents;
    ConversationStore conversations;
    DemoAgent agent;
    AuditLog audit;
    Integrations integrations;
    People people;
    Workspaces workspaces;
    Members members;
    Invites invites;
    ToolCatalog tools;
    Settings settings;
    Library skills;
    Library subagents;
    Marketplace marketplace;
    UsageLedger usage;
    Console console;
    AuthorizeEndpoint authorize;
    TokenEndpoint token;
    ConversationEndpoint history;
    ChatEndpoint chat;
    std::vector<Route> routes;
    Server server;
    std::thread thread;
};

Service::Service(ServiceOptions options)
    : m_options(std::move(options))
{
    if (!m_options.clock)
        m_options.clock = [] { return static_cast<std::int64_t>(std::time(nullptr)); };
    if (!m_options.log)
        m_options.log = [](const std::string &) {};
}

Service::~Service()
{
    stop();
}

bool Service::start(std::string &error)
{
    auto folder = DataFolder::open(m_options.dataFolder, m_options.reset, error);
    if (!folder)
        return false;
    auto database = Database::open(folder->database(), error);
    if (database && !plantCompany(*database, m_options.clock())) {
        error = database->reason();
        database.reset();
    }
    if (!database) {
        error = "can't use " + folder->database().string() + ": " + error;
        return false;
    }
    auto parts = std::make_unique<Parts>(std::move(folder), std::move(database), m_options);
    if (!parts->server.bind(m_options.port)) {
        error =
            "can't listen on 127.0.0.1:" + std::to_string(m_options.port) + "; is the port in use?";
        return false;
    }
    m_parts = std::move(parts);
    m_parts->thread = std::thread([server = &m_parts->server] { server->run(); });
    m_parts->server.waitUntilReady();
    return true;
}

void Service::stop()
{
    if (!m_parts || !m_parts->thread.joinable())
        return;
    m_parts->chat.stop();
    m_parts->server.stop();
    m_parts->thread.join();
}

int Service::port() const
{
    return m_parts ? m_parts->server.port() : 0;
}

const std::vector<Route> &Service::routes() const
{
    static const std::vector<Route> none;
    return m_parts ? m_parts->routes : none;
}

} // namespace velto::local
