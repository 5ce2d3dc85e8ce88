// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/message.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <variant>

namespace velto::presentation
{

/// A stretch of an assistant's message: one text, or the tool calls between two texts.
struct AssistantChunk
{
    using Kind = std::variant<QString, QList<chat::ToolCall>>;

    QUuid id; ///< That of the first part in it.
    Kind kind;
    bool operator==(const AssistantChunk &) const = default;
};

/// One chunk for each text part, be it empty, and one for each unbroken run of tool calls, in the
/// order of the parts.
[[nodiscard]] QList<AssistantChunk> assistantChunks(const QList<chat::MessagePart> &parts);

/// How several calls stand, in a line: "Running 3 tools…", "3 tools (1 failed)", "Ran 3 tools".
[[nodiscard]] QString toolGroupSummary(const QList<chat::ToolCall> &tools);

} // namespace velto::presentation
