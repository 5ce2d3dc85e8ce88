// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/admin/usage.h"
#include "local/agent/agent.h"
#include "local/http/route.h"
#include "local/library/settings.h"
#include "local/store/conversations.h"

#include <stop_token>

namespace velto::local
{

/// Takes the turns of a conversation and streams the agent's answer.
///
/// The turns are stored before the answer starts. The answer is stored before the client is told
/// that it is finished, or, when it ends early, as far as it was sent. What it has used is counted.
class ChatEndpoint final
{
public:
    ChatEndpoint(ConversationStore &store, Agent &agent, const Settings &settings,
                 UsageLedger &usage);

    void chat(const Call &call, httplib::Response &response);
    /// Makes every open answer end.
    void stop() { m_stop.request_stop(); }

private:
    struct Question;
    [[nodiscard]] bool stream(const Question &question, httplib::DataSink &sink);
    void keep(const Question &question, const nlohmann::json &answer);

    ConversationStore &m_store;
    Agent &m_agent;
    const Settings &m_settings;
    UsageLedger &m_usage;
    std::stop_source m_stop;
};

} // namespace velto::local
