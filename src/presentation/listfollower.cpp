// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/listfollower.h"

#include <QQuickWindow>

namespace velto::presentation
{

using chat::MessageListModel;

void ListFollower::setView(QQuickItem *view)
{
    if (m_view == view)
        return;
    if (m_view != nullptr)
        m_view->disconnect(this);
    m_view = view;
    // The view's own type has no public header.
    if (view != nullptr)
        connect(view, SIGNAL(contentHeightChanged()), this, SLOT(settle()));
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
    m_settling = true;
    polish();
}

void ListFollower::follow()
{
    if (m_sticking)
        jump();
}

void ListFollower::settle()
{
    if (m_settling)
        polish();
}

void ListFollower::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change != ItemSceneChange)
        return;
    QObject::disconnect(m_frames);
    if (data.window != nullptr) {
        m_frames = connect(data.window, &QQuickWindow::afterAnimating, this,
                           [this] { m_settling = false; });
    }
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
