// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/messageparts.h"

#include <algorithm>
#include <utility>

namespace velto::presentation
{

using chat::ChatMessage;
using chat::MessageListModel;
using chat::MessagePart;
using chat::ToolCall;

void MessageParts::setMessages(MessageListModel *messages)
{
    if (m_messages == messages)
        return;
    if (m_messages != nullptr)
        m_messages->disconnect(this);
    m_messages = messages;
    if (messages != nullptr) {
        connect(messages, &MessageListModel::dataChanged, this,
                [this](const QModelIndex &from, const QModelIndex &to, const QList<int> &roles) {
                    if (MessageListModel::onlyTextGrew(roles))
                        return;
                    if (from.row() <= m_messageRow && m_messageRow <= to.row())
                        scheduleSynchronise();
                });
    }
    emit messagesChanged();
    synchronise();
}

// A view for a part costs more than hundreds of deltas; those that arrived since the last frame are
// made together.
void MessageParts::scheduleSynchronise()
{
    if (std::exchange(m_isScheduled, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isScheduled = false;
            synchronise();
        },
        Qt::QueuedConnection);
}

void MessageParts::setMessageRow(int row)
{
    if (m_messageRow == row)
        return;
    m_messageRow = row;
    emit messageRowChanged();
    synchronise();
}

int MessageParts::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

QVariant MessageParts::data(const QModelIndex &index, int role) const
{
    const ChatMessage *source = message();
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || source == nullptr ||
        index.row() >= source->parts.size())
        return {};
    const auto *call = std::get_if<ToolCall>(&source->parts[index.row()].kind);
    switch (role) {
    case IsToolRole:
        return call != nullptr;
    case ToolNameRole:
        return call != nullptr ? call->name : QString();
    case ToolStateRole:
        return call != nullptr ? static_cast<int>(call->state) : 0;
    default:
        return {};
    }
}

QHash<int, QByteArray> MessageParts::roleNames() const
{
    return {{IsToolRole, "isTool"}, {ToolNameRole, "toolName"}, {ToolStateRole, "toolState"}};
}

const ChatMessage *MessageParts::message() const
{
    if (m_messages == nullptr || m_messageRow < 0 || m_messageRow >= m_messages->count())
        return nullptr;
    return &m_messages->at(m_messageRow);
}

MessageParts::Shown MessageParts::shown(const MessagePart &part)
{
    const auto *call = std::get_if<ToolCall>(&part.kind);
    return {part.id, call != nullptr ? std::optional(call->state) : std::nullopt};
}

void MessageParts::synchronise()
{
    const ChatMessage *source = message();
    static const QList<MessagePart> none;
    const QList<MessagePart> &parts = source != nullptr ? source->parts : none;
    const auto sameId = [](const Shown &a, const MessagePart &b) { return a.id == b.id; };
    const bool grew = m_shown.size() <= parts.size() &&
                      std::equal(m_shown.cbegin(), m_shown.cend(), parts.cbegin(), sameId);
    if (!grew) {
        beginResetModel();
        m_shown.clear();
        std::transform(parts.cbegin(), parts.cend(), std::back_inserter(m_shown), shown);
        endResetModel();
        return;
    }
    announceToolStates(parts);
    if (parts.size() == m_shown.size())
        return;
    beginInsertRows({}, rowCount(), static_cast<int>(parts.size()) - 1);
    std::transform(parts.cbegin() + m_shown.size(), parts.cend(), std::back_inserter(m_shown),
                   shown);
    endInsertRows();
}

void MessageParts::announceToolStates(const QList<MessagePart> &parts)
{
    for (int row = 0; row < m_shown.size(); ++row) {
        const Shown now = shown(parts[row]);
        if (m_shown[row] == now)
            continue;
        m_shown[row] = now;
        emit dataChanged(index(row), index(row), {ToolStateRole});
    }
}

} // namespace velto::presentation
