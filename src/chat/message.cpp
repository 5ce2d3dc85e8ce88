// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/message.h"

namespace velto::chat
{
namespace
{

qint64 volumeOf(const MessagePart &part)
{
    if (const auto *text = std::get_if<QString>(&part.kind))
        return text->size();
    const auto &call = std::get<ToolCall>(part.kind);
    return call.inputJSON.size() + call.outputJSON.size() + 1 +
           (call.state == ToolState::Running ? 1 : 0);
}

} // namespace

MessagePart textPart(QString text)
{
    return {QUuid::createUuid(), std::move(text)};
}

MessagePart toolPart(ToolCall call)
{
    return {QUuid::createUuid(), std::move(call)};
}

QString ChatMessage::plainText() const
{
    QString joined;
    for (const MessagePart &part : parts) {
        if (const auto *text = std::get_if<QString>(&part.kind))
            joined += *text;
    }
    return joined;
}

qint64 ChatMessage::contentVolume() const
{
    qint64 volume = 0;
    for (const MessagePart &part : parts)
        volume += volumeOf(part);
    return volume;
}

bool operator==(const ChatMessage &a, const ChatMessage &b)
{
    return a.id == b.id && a.role == b.role && a.parts == b.parts && a.createdAt == b.createdAt &&
           a.branches == b.branches && a.activeBranchIndex == b.activeBranchIndex;
}

bool operator==(const ChatBranch &a, const ChatBranch &b)
{
    return a.id == b.id && a.userParts == b.userParts && a.tail == b.tail;
}

ChatMessage newMessage(ChatMessage::Role role, QList<MessagePart> parts)
{
    ChatMessage message;
    message.id = QUuid::createUuid();
    message.role = role;
    message.parts = std::move(parts);
    message.createdAt = QDateTime::currentDateTimeUtc();
    return message;
}

void appendStoppedNote(ChatMessage &message)
{
    const QString note = QStringLiteral("\n\n_stopped_");
    if (!message.parts.isEmpty()) {
        if (auto *text = std::get_if<QString>(&message.parts.last().kind)) {
            *text += note;
            return;
        }
    }
    message.parts.append(textPart(note.trimmed()));
}

} // namespace velto::chat
