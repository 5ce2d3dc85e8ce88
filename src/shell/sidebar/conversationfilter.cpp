// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/conversationfilter.h"

#include <algorithm>
#include <iterator>

namespace velto::shell
{

SearchableTexts searchableTexts(const service::ConversationSummary &conversation)
{
    return {conversation.title.value_or(QString()).toLower(),
            conversation.summary.value_or(QString()).toLower()};
}

QString searchNeedle(const QString &query)
{
    return query.trimmed().toLower();
}

bool matches(const SearchableTexts &texts, const QString &needle)
{
    return texts.title.contains(needle) || texts.summary.contains(needle);
}

QList<service::ConversationSummary>
filterConversations(const QList<service::ConversationSummary> &conversations, const QString &query)
{
    const QString needle = searchNeedle(query);
    if (needle.isEmpty())
        return conversations;
    QList<service::ConversationSummary> found;
    std::ranges::copy_if(conversations, std::back_inserter(found), [&](const auto &conversation) {
        return matches(searchableTexts(conversation), needle);
    });
    return found;
}

} // namespace velto::shell
