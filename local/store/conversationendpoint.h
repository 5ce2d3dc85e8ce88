// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/http/route.h"
#include "local/store/conversations.h"

namespace velto::local
{

/// The history and its conversations over HTTP.
class ConversationEndpoint final
{
public:
    explicit ConversationEndpoint(ConversationStore &store);

    /// Query: `limit`, 1 to 200 and 50 by default, and `channel`.
    void list(const Call &call, httplib::Response &response);
    void messages(const Call &call, httplib::Response &response);
    /// Body: {"title": text}.
    void rename(const Call &call, httplib::Response &response);
    void remove(const Call &call, httplib::Response &response);

private:
    ConversationStore &m_store;
};

void replyUnknownConversation(httplib::Response &response);

} // namespace velto::local
