// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/message.h"

/// Versions of a conversation, and the other ways of asking for more, as functions over the list of
/// its messages.
///
/// A user message that has been edited holds all its versions, each with everything that follows in
/// it. What the list shows is the truth; the entry of the version on screen is brought up to date
/// when that version is left. Each function gives the list as it is afterwards, or nothing where it
/// asks for what can't be done.
namespace velto::chat
{

/// The list with a new version of the user message `id`, which says `text` without the white space
/// around it, and an empty answer at the end.
[[nodiscard]] std::optional<QList<ChatMessage>> edited(QList<ChatMessage> messages, const QUuid &id,
                                                       const QString &text);

/// The list with another version of the user message `id` on screen, `index` among its branches.
[[nodiscard]] std::optional<QList<ChatMessage>> switched(QList<ChatMessage> messages,
                                                         const QUuid &id, int index);

/// The list up to the last user message, and an empty answer.
[[nodiscard]] std::optional<QList<ChatMessage>> regenerated(QList<ChatMessage> messages);

/// The list that ends with an answer, a user message that says `prompt`, and an empty answer.
[[nodiscard]] std::optional<QList<ChatMessage>> continued(QList<ChatMessage> messages,
                                                          const QString &prompt);

} // namespace velto::chat
