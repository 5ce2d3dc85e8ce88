// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/messagelistmodel.h"

#include <QPointer>
#include <QQuickItem>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

namespace velto::presentation
{

/// Keeps a list view of messages at its end while the last message grows, as long as it is
/// sticking, at most once a frame and after the rows have taken their new heights. Keeps the rows
/// in reading order for assistive technology, in whatever order the view made them.
class ListFollower : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// The ListView. It must show `messages`.
    Q_PROPERTY(QQuickItem *view READ view WRITE setView NOTIFY viewChanged FINAL)
    Q_PROPERTY(velto::chat::MessageListModel *messages READ messages WRITE setMessages NOTIFY
                   messagesChanged FINAL)
    Q_PROPERTY(bool sticking READ isSticking WRITE setSticking NOTIFY stickingChanged FINAL)
    /// False until the view is to be put somewhere for the first time. A view that has no height
    /// till then makes the rows at its end only, none at its beginning.
    Q_PROPERTY(bool opened READ isOpened NOTIFY openedChanged FINAL)
    /// A frame has shown the view since it was opened: there is time for what nobody sees at first.
    Q_PROPERTY(bool drawn READ isDrawn NOTIFY drawnChanged FINAL)

public:
    using QQuickItem::QQuickItem;

    [[nodiscard]] QQuickItem *view() const { return m_view; }
    void setView(QQuickItem *view);
    [[nodiscard]] chat::MessageListModel *messages() const { return m_messages; }
    void setMessages(chat::MessageListModel *messages);
    [[nodiscard]] bool isSticking() const { return m_sticking; }
    void setSticking(bool sticking);
    [[nodiscard]] bool isOpened() const { return m_opened; }
    [[nodiscard]] bool isDrawn() const { return m_drawn; }

    /// Goes to the end with the next frame, sticking or not.
    Q_INVOKABLE void jump();
    /// Goes to the end with the next frame while sticking.
    Q_INVOKABLE void follow();
    /// Something took another size by itself, such as a picture that has come: goes to the end
    /// while sticking, unless the view was moved since it was put there.
    Q_INVOKABLE void stay();

signals:
    void viewChanged();
    void messagesChanged();
    void stickingChanged();
    void openedChanged();
    void drawnChanged();
    /// Another message is the last one now, or none is.
    void lastMessageChanged();
    /// The view has been put to its end.
    void followed();

protected:
    void updatePolish() override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private slots:
    void settle();

private:
    void noteLastMessage();
    void goToEnd();
    void noteFrame();
    void orderRows();

    QPointer<QQuickItem> m_view;
    QPointer<chat::MessageListModel> m_messages;
    bool m_sticking = true;
    bool m_opened = false;
    bool m_drawn = false;
    bool m_jumping = false;
    bool m_rowsChanged = false;
    QUuid m_lastMessage;
    qreal m_endY = 0;   ///< Where the view was put.
    int m_settling = 0; ///< Frames in which rows may still take their heights.
    QMetaObject::Connection m_frames;
    QMetaObject::Connection m_firstFrame;
};

} // namespace velto::presentation
