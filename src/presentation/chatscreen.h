// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/appstate.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace velto::presentation
{

/// What the chat screen derives from the state: each value changes exactly when its sources do, and
/// a streamed delta touches none of them.
class ChatScreen : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velto::chat::AppState *appState READ appState WRITE setAppState NOTIFY
                   appStateChanged REQUIRED FINAL)
    /// Empty when the conversation has no title.
    Q_PROPERTY(QString title READ title NOTIFY titleChanged FINAL)
    Q_PROPERTY(bool isEmptyState READ isEmptyState NOTIFY isEmptyStateChanged FINAL)
    Q_PROPERTY(bool canSend READ canSend NOTIFY canSendChanged FINAL)

public:
    using QObject::QObject;

    [[nodiscard]] chat::AppState *appState() const { return m_appState; }
    void setAppState(chat::AppState *appState);

    [[nodiscard]] QString title() const { return m_title; }
    [[nodiscard]] bool isEmptyState() const { return m_isEmptyState; }
    [[nodiscard]] bool canSend() const { return m_canSend; }

signals:
    void appStateChanged();
    void titleChanged();
    void isEmptyStateChanged();
    void canSendChanged();

private:
    void updateTitle();
    void updateEmptyState();
    void updateCanSend();

    QPointer<chat::AppState> m_appState;
    QString m_title;
    bool m_isEmptyState = true;
    bool m_canSend = false;
};

} // namespace velto::presentation
