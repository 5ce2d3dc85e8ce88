// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/listfollower.h"

namespace velto::presentation {

using chat::MessageListModel;

void ListFollower::setView(QQuickItem *view)
{
    if (m_view == view)
        return;
    m_view = view;
    emit viewChanged();
}

void ListFollower::setMessages(MessageListModel *messages)
{
    if (m_messages == messages)
        return;
    if (m_messages != nullptr)
        m_messages->disconnect(this);
    m_messages = messages;
    if (messages != nullptr) {
        connect(messages, &MessageListModel::countChanged, this, &ListFollower::noteLastMessage);
        connect(messages, &MessageListModel::dataChanged, this,
                [this](const QModelIndex &, const QModelIndex &to) {
                    if (to.row() == m_messages->count() - 1)
                        follow();
                });
        m_lastMessage = messages->count() > 0 ? messages->at(messages->count() - 1).id : QUuid();
    }
    emit messagesChanged();
}

void ListFollower::setSticking(bool sticking)
{
    if (m_sticking == sticking)
        return;
    m_sticking = sticking;
    emit stickingChanged();
}

void ListFollower::jump()
{
    polish();
}

void ListFollower::follow()
{
    if (m_sticking)
        polish();
}

void ListFollower::updatePolish()
{
    if (m_view == nullptr)
        return;
    QMetaObject::invokeMethod(m_view, "forceLayout");
    QMetaObject::invokeMethod(m_view, "positionViewAtEnd");
    emit followed();
}

void ListFollower::noteLastMessage()
{
    const int count = m_messages->count();
    const QUuid last = count > 0 ? m_messages->at(count - 1).id : QUuid();
    if (m_lastMessage == last)
        return;
    m_lastMessage = last;
    emit lastMessageChanged();
}

} // namespace velto::presentation
