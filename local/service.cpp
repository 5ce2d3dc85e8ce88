// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/service.h"

#include "local/agent/chatendpoint.h"
#include "local/agent/demoagent.h"
#include "local/auth/authorizeendpoint.h"
#include "local/auth/tokenendpoint.h"
#include "local/http/server.h"
#include "local/routes.h"
#include "local/store/conversationendpoint.h"

#include <ctime>
#include <thread>

namespace velto::local
{

struct Service::Parts
{
    Parts(std::unique_ptr<Database> opened, const ServiceOptions &options)
        : database(std::move(opened))
        , grants(*database, options.clock, options.accessTokenSeconds)
        , consents(options.clock)
        , conversations(*database, options.clock)
        , agent(options.tokenRate)
        , authorize(grants, consents)
        , token(grants)
        , history(conversations)
        , chat(conversations, agent)
        , routes(makeRoutes({authorize, token, history, chat}))
        , server(
              routes, [this](const std::string &text) { return grants.accepts(text); }, options.log)
    {}

    std::unique_ptr<Database> database;
    GrantStore grants;
    ConsentRequests consents;
    ConversationStore conversations;
    DemoAgent agent;
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
    namespace fs = std::filesystem;
    std::error_code failure;
    fs::create_directories(m_options.dataFolder, failure);
    // What is said to an agent is nobody else's business.
    if (!failure)
        fs::permissions(m_options.dataFolder, fs::perms::owner_all, failure);
    if (failure) {
        error = "can't use the folder " + m_options.dataFolder.string() + ": " + failure.message();
        return false;
    }
    const fs::path file = m_options.dataFolder / "velto-local.sqlite";
    auto database = Database::open(file, error);
    if (!database) {
        error = "can't use " + file.string() + ": " + error;
        return false;
    }
    auto parts = std::make_unique<Parts>(std::move(database), m_options);
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
