// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/tools/assistantchunks.h"

#include <QCoreApplication>

#include <algorithm>

namespace velto::presentation
{

using chat::MessagePart;
using chat::ToolCall;
using chat::ToolState;

QList<AssistantChunk> assistantChunks(const QList<MessagePart> &parts)
{
    QList<AssistantChunk> chunks;
    for (const MessagePart &part : parts) {
        const auto *call = std::get_if<ToolCall>(&part.kind);
        auto *open = chunks.isEmpty() ? nullptr : std::get_if<QList<ToolCall>>(&chunks.last().kind);
        if (call == nullptr)
            chunks.append({part.id, std::get<QString>(part.kind)});
        else if (open == nullptr)
            chunks.append({part.id, QList<ToolCall>{*call}});
        else
            open->append(*call);
    }
    return chunks;
}

QString toolGroupSummary(const QList<ToolCall> &tools)
{
    const auto count = [&](ToolState state) {
        return std::ranges::count(tools, state, &ToolCall::state);
    };
    const auto translated = [](const char *text) {
        return QCoreApplication::translate("ToolGroupRow", text);
    };
    const QString all = QString::number(tools.size());
    if (count(ToolState::Running) > 0)
        return translated("Running %1 tools…").arg(all);
    if (const auto failed = count(ToolState::Failed); failed > 0)
        return translated("%1 tools (%2 failed)").arg(all, QString::number(failed));
    return translated("Ran %1 tools").arg(all);
}

} // namespace velto::presentation
