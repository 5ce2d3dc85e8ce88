// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/branching.h"

#include <algorithm>

namespace velto::chat
{
namespace
{

bool isUserTurn(const ChatMessage &message)
{
    return message.role == ChatMessage::Role::User;
}

/// Where the user message `id` stands, or -1.
qsizetype turnWithId(const QList<ChatMessage> &messages, const QUuid &id)
{
    const auto found = std::ranges::find(messages, id, &ChatMessage::id);
    return found != messages.cend() && isUserTurn(*found) ? found - messages.cbegin() : -1;
}

bool contains(const QList<ChatBranch> &branches, int index)
{
    return index >= 0 && index < branches.size();
}

/// Writes the version on screen into its entry of `branches`.
void preserve(const ChatMessage &turn, const QList<ChatMessage> &tail, QList<ChatBranch> &branches)
{
    if (!contains(branches, turn.activeBranchIndex))
        return;
    ChatBranch &left = branches[turn.activeBranchIndex];
    left.userParts = turn.parts;
    left.tail = tail;
}

/// Shows the version `index` of `branches` from the message at `position` on.
QList<ChatMessage> showing(QList<ChatMessage> messages, qsizetype position,
                           QList<ChatBranch> branches, int index)
{
    const ChatBranch shown = branches[index];
    ChatMessage &turn = messages[position];
    turn.parts = shown.userParts;
    turn.branches = std::move(branches);
    turn.activeBranchIndex = index;
    messages.resize(position + 1);
    messages.append(shown.tail);
    return messages;
}

} // namespace

std::optional<QList<ChatMessage>> edited(QList<ChatMessage> messages, const QUuid &id,
                                         const QString &text)
{
    const qsizetype position = turnWithId(messages, id);
    const QString newText = text.trimmed();
    if (position < 0 || newText.isEmpty())
        return std::nullopt;
    const ChatMessage turn = messages[position];
    const QList<ChatMessage> tail = messages.sliced(position + 1);
    QList<ChatBranch> branches = turn.branches.value_or(QList<ChatBranch>());
    if (branches.isEmpty())
        branches.append({QUuid::createUuid(), turn.parts, tail});
    else
        preserve(turn, tail, branches);
    branches.append(
        {QUuid::createUuid(), {textPart(newText)}, {newMessage(ChatMessage::Role::Assistant)}});
    const auto last = static_cast<int>(branches.size()) - 1;
    return showing(std::move(messages), position, std::move(branches), last);
}

std::optional<QList<ChatMessage>> switched(QList<ChatMessage> messages, const QUuid &id, int index)
{
    const qsizetype position = turnWithId(messages, id);
    if (position < 0)
        return std::nullopt;
    const ChatMessage turn = messages[position];
    if (!turn.branches || !contains(*turn.branches, index) || index == turn.activeBranchIndex)
        return std::nullopt;
    QList<ChatBranch> branches = *turn.branches;
    preserve(turn, messages.sliced(position + 1), branches);
    return showing(std::move(messages), position, std::move(branches), index);
}

std::optional<QList<ChatMessage>> regenerated(QList<ChatMessage> messages)
{
    const auto turn = std::find_if(messages.crbegin(), messages.crend(), isUserTurn);
    if (turn == messages.crend())
        return std::nullopt;
    messages.resize(turn.base() - messages.cbegin());
    messages.append(newMessage(ChatMessage::Role::Assistant));
    return messages;
}

std::optional<QList<ChatMessage>> continued(QList<ChatMessage> messages, const QString &prompt)
{
    if (messages.isEmpty() || isUserTurn(messages.last()))
        return std::nullopt;
    messages.append(newMessage(ChatMessage::Role::User, {textPart(prompt)}));
    messages.append(newMessage(ChatMessage::Role::Assistant));
    return messages;
}

} // namespace velto::chat
