// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/store/conversationendpoint.h"

#include "local/http/reply.h"
#include "local/text.h"

#include <charconv>

namespace velto::local
{

using nlohmann::json;

namespace
{

constexpr std::int64_t DefaultLimit = 50;
constexpr std::int64_t GreatestLimit = 200;
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

std::optional<std::int64_t> readLimit(const httplib::Request &request)
{
    if (!request.has_param("limit"))
        return DefaultLimit;
    const std::string text = request.get_param_value("limit");
    std::int64_t limit = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), limit);
    if (error != std::errc() || end != text.data() + text.size() || limit < 1)
        return std::nullopt;
    return std::min(limit, GreatestLimit);
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
        return replyError(response, 400, "bad_limit", "The limit must be a positive number.");
    json rows = json::array();
    for (const ConversationRow &row : m_store.list(*limit, call.request.get_param_value("channel")))
        rows.push_back(summaryOf(row));
    replyJson(response, 200, rows);
}

void ConversationEndpoint::messages(const Call &call, httplib::Response &response)
{
    const auto turns = m_store.turns(call.captures[0]);
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
    if (!m_store.rename(call.captures[0], title))
        return replyUnknownConversation(response);
    replyJson(response, 200, {{"id", call.captures[0]}, {"title", title}});
}

void ConversationEndpoint::remove(const Call &call, httplib::Response &response)
{
    if (!m_store.remove(call.captures[0]))
        return replyUnknownConversation(response);
    response.status = 204;
}

} // namespace velto::local
