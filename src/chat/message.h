// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>
#include <variant>

/// What a conversation is made of. Plain values; ids are the client's own and new on every load.
namespace velto::chat
{

enum class ToolState { Running, Completed, Failed };

struct ToolCall
{
    QString callID; ///< The stream's name for the call. Not unique within a message.
    QString name = {};
    QString inputJSON = {};  ///< Display text; empty until known.
    QString outputJSON = {}; ///< Display text; empty until known.
    std::optional<QString> errorText = {};
    ToolState state = ToolState::Running;
    bool operator==(const ToolCall &) const = default;
};

struct MessagePart
{
    using Kind = std::variant<QString, ToolCall>; ///< A text, or a tool call.

    QUuid id;
    Kind kind;
    bool operator==(const MessagePart &) const = default;
};

[[nodiscard]] MessagePart textPart(QString text);
[[nodiscard]] MessagePart toolPart(ToolCall call);

struct ChatBranch;

struct ChatMessage
{
    enum class Role { User, Assistant };

    QUuid id;
    Role role = Role::User;
    QList<MessagePart> parts; ///< In arrival order.
    QDateTime createdAt;      ///< When the client built the value.
    /// Only on a user message that has been edited: the versions of the path from here on.
    std::optional<QList<ChatBranch>> branches;
    int activeBranchIndex = 0;

    /// The texts of all text parts, joined with nothing between them.
    [[nodiscard]] QString plainText() const;
    /// Grows whenever a streamed message grows, in UTF-16 units and tool states. Costs a step a
    /// part.
    [[nodiscard]] qint64 contentVolume() const;
};

struct ChatBranch
{
    QUuid id;
    QList<MessagePart> userParts;
    QList<ChatMessage> tail; ///< Everything after the edited message in this version.
};

[[nodiscard]] bool operator==(const ChatMessage &a, const ChatMessage &b);
[[nodiscard]] bool operator==(const ChatBranch &a, const ChatBranch &b);

/// A new message with a fresh id, built now.
[[nodiscard]] ChatMessage newMessage(ChatMessage::Role role, QList<MessagePart> parts = {});

/// Writes the note that a stopped answer ends with: "_stopped_" in Markdown italics.
void appendStoppedNote(ChatMessage &message);

} // namespace velto::chat
