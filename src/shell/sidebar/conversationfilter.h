// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/records.h"

namespace velto::shell
{

/// The texts of a conversation that a search looks into, lowercased once: a long history is
/// searched at every keystroke.
struct SearchableTexts
{
    QString title;   ///< Empty when absent.
    QString summary; ///< Empty when absent.

    bool operator==(const SearchableTexts &) const = default;
};

[[nodiscard]] SearchableTexts searchableTexts(const service::ConversationSummary &conversation);

/// What is looked for: the query lowercased and without the blanks and line breaks around it. Empty
/// when everything matches.
[[nodiscard]] QString searchNeedle(const QString &query);

/// Whether title or summary contains the needle, as it stands.
[[nodiscard]] bool matches(const SearchableTexts &texts, const QString &needle);

/// The conversations that match the query, in their order; all of them for a blank query.
[[nodiscard]] QList<service::ConversationSummary>
filterConversations(const QList<service::ConversationSummary> &conversations, const QString &query);

} // namespace velto::shell
