// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/store/conversationendpoint.h"

#include "local/http/reply.h"
#include "local/text.h"

namespace velto::local
{

using nlohmann::json;

namespace
{

constexpr std::size_t LongestTitle = 500;

json summaryOf(const ConversationRow &row)
{
    json summary{{"id", row.id},
                 {"channel", row.channel},
                 {"messageCount", row.messageCount},
                 {"createdAt", isoTime(row.createdAt)}};
    summary["title"] = row.title.empty() ? json() : json(row.title);
    summary["summary"] = row.summary.empty() ? json() : json(row.summary);
    return summary;
}

} // namespace

void replyUnknownConversation(httplib::Response &response)
{
    replyError(response, 404, "unknown_conversation", "There is no conversation with this id.");
}

ConversationEndpoint::ConversationEndpoint(ConversationStore &store)
    : m_store(store)
{}

void ConversationEndpoint::list(const Call &call, httplib::Response &response)
{
    const auto limit = readLimit(call.request);
    if (!limit)
        return replyAnswer(response, tl::unexpected(limit.error()));
    json rows = json::array();
    const std::string channel = call.request.get_param_value("channel");
    for (const ConversationRow &row : m_store.list(call.caller, *limit, channel))
        rows.push_back(summaryOf(row));
    replyJson(response, 200, rows);
}

void ConversationEndpoint::messages(const Call &call, httplib::Response &response)
{
    const auto turns = m_store.turns(call.caller, call.captures[0]);
    if (!turns)
        return replyUnknownConversation(response);
    json messages = json::array();
    for (const Turn &turn : *turns)
        messages.push_back({{"id", turn.id}, {"role", turn.role}, {"parts", turn.parts}});
    replyJson(response, 200, messages);
}

void ConversationEndpoint::rename(const Call &call, httplib::Response &response)
{
    const json body = parseBody(call.body);
    const std::string *text = textMember(body, "title");
    const std::string title = text != nullptr ? std::string(trimmed(*text)) : std::string();
    if (title.empty() || title.size() > LongestTitle)
        return replyError(response, 400, "bad_title",
                          "The body must hold a title of 1 to 500 bytes.");
    if (!m_store.rename(call.caller, call.captures[0], title))
        return replyUnknownConversation(response);
    replyJson(response, 200, {{"id", call.captures[0]}, {"title", title}});
}

void ConversationEndpoint::remove(const Call &call, httplib::Response &response)
{
    if (!m_store.remove(call.caller, call.captures[0]))
        return replyUnknownConversation(response);
    response.status = 204;
}

} // namespace velto::local
