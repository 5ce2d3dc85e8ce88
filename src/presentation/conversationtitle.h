// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/message.h"
#include "service/records.h"

#include <optional>

namespace velto::presentation
{

/// What stands above the messages: the history's title of the open conversation, else the beginning
/// of the first thing the user wrote, on one line. Absent when there is neither.
[[nodiscard]] std::optional<QString>
conversationTitle(const std::optional<QString> &conversationID,
                  const std::optional<QList<service::ConversationSummary>> &conversations,
                  const QList<chat::ChatMessage> &messages);

/// Whether a draft lights the Send button: anything but blanks and tabs does, line breaks included.
[[nodiscard]] bool canSendDraft(QStringView draft);

} // namespace velto::presentation
