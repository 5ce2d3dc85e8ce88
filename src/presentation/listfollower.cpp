// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/listfollower.h"

#include <QQuickWindow>

#include <algorithm>
#include <utility>

namespace velto::presentation
{

using chat::MessageListModel;

namespace
{

// Rows are polished in no order that would be known: some take their heights a frame later.
constexpr int settlingFrames = 2;

// The view's own type has no public header.
QQuickItem *contentOf(const QQuickItem &view)
{
    return view.property("contentItem").value<QQuickItem *>();
}

int rowOf(const QQuickItem *item)
{
    const QVariant index = item->property("index");
    return index.isValid() ? index.toInt() : -1;
}

} // namespace

void ListFollower::setView(QQuickItem *view)
{
    if (m_view == view)
        return;
    if (m_view != nullptr) {
        m_view->disconnect(this);
        contentOf(*m_view)->disconnect(this);
    }
    m_view = view;
    if (view != nullptr) {
        connect(view, SIGNAL(contentHeightChanged()), this, SLOT(settle()));
        connect(contentOf(*view), &QQuickItem::childrenChanged, this, [this] {
            m_rowsChanged = true;
            polish();
        });
    }
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
    if (!sticking) { // nor does it go where it was about to go
        m_jumping = false;
        m_settling = 0;
    }
    emit stickingChanged();
}

void ListFollower::jump()
{
    m_settling = settlingFrames;
    m_jumping = true;
    polish();
}

void ListFollower::follow()
{
    if (m_sticking)
        jump();
}

void ListFollower::stay()
{
    if (m_opened && m_view != nullptr && m_view->property("contentY").toReal() == m_endY)
        follow();
}

void ListFollower::settle()
{
    if (m_settling > 0 && (m_jumping || m_view->property("contentY").toReal() == m_endY))
        jump();
}

void ListFollower::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change != ItemSceneChange)
        return;
    QObject::disconnect(m_frames);
    QObject::disconnect(m_firstFrame);
    if (data.window != nullptr) {
        // Queued: whatever follows is not part of that frame.
        m_firstFrame = connect(data.window, &QQuickWindow::frameSwapped, this,
                               &ListFollower::noteFrame, Qt::QueuedConnection);
        m_frames = connect(data.window, &QQuickWindow::afterAnimating, this,
                           [this] { m_settling = std::max(0, m_settling - 1); });
    }
}

void ListFollower::noteFrame()
{
    if (!m_opened)
        return;
    QObject::disconnect(m_firstFrame);
    if (!std::exchange(m_drawn, true))
        emit drawnChanged();
}

void ListFollower::updatePolish()
{
    if (m_view == nullptr)
        return;
    if (std::exchange(m_jumping, false)) {
        m_settling = settlingFrames;
        goToEnd();
    }
    if (std::exchange(m_rowsChanged, false))
        orderRows();
}

void ListFollower::goToEnd()
{
    if (m_opened) {
        QMetaObject::invokeMethod(m_view, "forceLayout");
    } else {
        m_opened = true;
        emit openedChanged();
    }
    QMetaObject::invokeMethod(m_view, "positionViewAtEnd");
    m_endY = m_view->property("contentY").toReal();
    emit followed();
}

void ListFollower::orderRows()
{
    QList<QQuickItem *> rows = contentOf(*m_view)->childItems();
    rows.removeIf([](const QQuickItem *item) { return rowOf(item) < 0; });
    const auto isAbove = [](const QQuickItem *a, const QQuickItem *b) {
        return rowOf(a) < rowOf(b);
    };
    if (std::ranges::is_sorted(rows, isAbove))
        return;
    std::ranges::sort(rows, isAbove);
    for (qsizetype row = 1; row < rows.size(); ++row)
        rows[row]->stackAfter(rows[row - 1]);
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
