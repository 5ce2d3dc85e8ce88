// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/messagelistmodel.h"

#include <algorithm>

namespace velto::chat
{

namespace
{

int runningTools(const ChatMessage &message)
{
    return static_cast<int>(std::ranges::count_if(message.parts, [](const MessagePart &part) {
        const auto *call = std::get_if<ToolCall>(&part.kind);
        return call != nullptr && call->state == ToolState::Running;
    }));
}

// Made once: a stream announces one of them with every delta.
const QList<int> &textRoles()
{
    static const QList<int> roles{MessageListModel::ContentVolumeRole};
    return roles;
}

const QList<int> &partRoles()
{
    static const QList<int> roles{
        MessageListModel::PartCountRole, MessageListModel::ContentVolumeRole,
        MessageListModel::RunningToolsRole, MessageListModel::UserTextRole};
    return roles;
}

int branchCount(const ChatMessage &message)
{
    return message.branches ? static_cast<int>(message.branches->size()) : 0;
}

/// What a view of `before` has to read again to show `after`.
QList<int> changedRoles(const ChatMessage &before, const ChatMessage &after)
{
    QList<int> roles;
    if (before.role != after.role)
        roles.append(MessageListModel::IsUserRole);
    if (before.parts != after.parts)
        roles.append(partRoles());
    if (before.createdAt != after.createdAt)
        roles.append(MessageListModel::CreatedAtRole);
    if (branchCount(before) != branchCount(after))
        roles.append(MessageListModel::BranchCountRole);
    if (before.activeBranchIndex != after.activeBranchIndex)
        roles.append(MessageListModel::ActiveBranchRole);
    return roles;
}

} // namespace

int MessageListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant MessageListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const ChatMessage &message = m_messages[index.row()];
    switch (role) {
    case MessageIdRole:
        return message.id;
    case IsUserRole:
        return message.role == ChatMessage::Role::User;
    case PartCountRole:
        return static_cast<int>(message.parts.size());
    case ContentVolumeRole:
        return static_cast<double>(message.contentVolume());
    case CreatedAtRole:
        return message.createdAt;
    case RunningToolsRole:
        return runningTools(message);
    case BranchCountRole:
        return branchCount(message);
    case ActiveBranchRole:
        return message.activeBranchIndex;
    case UserTextRole:
        return message.role == ChatMessage::Role::User ? message.plainText() : QString();
    default:
        return {};
    }
}

QHash<int, QByteArray> MessageListModel::roleNames() const
{
    return {{MessageIdRole, "messageId"},     {IsUserRole, "isUser"},
            {PartCountRole, "partCount"},     {ContentVolumeRole, "contentVolume"},
            {CreatedAtRole, "createdAt"},     {RunningToolsRole, "runningTools"},
            {BranchCountRole, "branchCount"}, {ActiveBranchRole, "activeBranch"},
            {UserTextRole, "userText"}};
}

QString MessageListModel::plainText(int row) const
{
    return row >= 0 && row < count() ? m_messages[row].plainText() : QString();
}

void MessageListModel::setMessages(QList<ChatMessage> messages)
{
    const auto sameId = [](const ChatMessage &a, const ChatMessage &b) { return a.id == b.id; };
    const qsizetype common = std::min(m_messages.size(), messages.size());
    const auto differs =
        std::mismatch(m_messages.cbegin(), m_messages.cbegin() + common, messages.cbegin(), sameId);
    const auto kept = static_cast<int>(differs.first - m_messages.cbegin());
    for (int row = 0; row < kept; ++row) {
        const QList<int> roles = changedRoles(m_messages[row], messages[row]);
        m_messages[row] = messages[row];
        if (!roles.isEmpty())
            announce(row, roles);
    }
    truncate(kept);
    if (messages.size() == kept)
        return;
    beginInsertRows({}, kept, static_cast<int>(messages.size()) - 1);
    m_messages = std::move(messages);
    endInsertRows();
    emit countChanged();
}

void MessageListModel::append(ChatMessage message)
{
    beginInsertRows({}, count(), count());
    m_messages.append(std::move(message));
    endInsertRows();
    emit countChanged();
}

void MessageListModel::truncate(int row)
{
    if (row < 0 || row >= count())
        return;
    beginRemoveRows({}, row, count() - 1);
    m_messages.resize(row);
    endRemoveRows();
    emit countChanged();
}

void MessageListModel::apply(const ChatStreamEvent &event, int row)
{
    ChatMessage &message = m_messages[row];
    const qsizetype partsBefore = message.parts.size();
    applyEvent(event, message);
    const bool onlyText =
        std::holds_alternative<event::TextDelta>(event) && message.parts.size() == partsBefore;
    announce(row, onlyText ? textRoles() : partRoles());
}

void MessageListModel::appendStoppedNote(int row)
{
    if (row < 0 || row >= count())
        return;
    chat::appendStoppedNote(m_messages[row]);
    announce(row, partRoles());
}

void MessageListModel::announce(int row, const QList<int> &roles)
{
    const QModelIndex changed = index(row);
    emit dataChanged(changed, changed, roles);
}

} // namespace velto::chat
