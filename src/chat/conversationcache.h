// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/message.h"

#include <QString>

#include <optional>

/// The last open conversation in one file, so that a restart shows it before the service answers.
///
/// Only the active path is kept, without ids, times or branches. A convenience: every failure is
/// swallowed and leaves the older file whole. Main thread; the file is small and written at the end
/// of a run, never while one streams.
namespace velto::chat::conversationcache
{

struct Conversation
{
    std::optional<QString> conversationID;
    QList<ChatMessage> messages; ///< Never empty.
};

/// "last-conversation.json" in the directory "velto" of the user's application data.
[[nodiscard]] QString defaultFile();

void save(const QList<ChatMessage> &messages, const std::optional<QString> &conversationID,
          const QString &file);
[[nodiscard]] std::optional<Conversation> load(const QString &file);
void clear(const QString &file);

/// The rule behind `load`, for a file's bytes.
[[nodiscard]] std::optional<Conversation> parse(const QByteArray &document);

} // namespace velto::chat::conversationcache
