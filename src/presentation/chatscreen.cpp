// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/chatscreen.h"

#include "presentation/conversationtitle.h"

namespace velto::presentation
{

using chat::AppState;
using chat::MessageListModel;

void ChatScreen::setAppState(AppState *appState)
{
    if (m_appState == appState)
        return;
    if (m_appState != nullptr) {
        m_appState->disconnect(this);
        m_appState->messagesModel()->disconnect(this);
    }
    m_appState = appState;
    if (appState != nullptr) {
        const MessageListModel *messages = appState->messagesModel();
        connect(appState, &AppState::conversationIDChanged, this, &ChatScreen::updateTitle);
        connect(appState, &AppState::conversationsChanged, this, &ChatScreen::updateTitle);
        connect(messages, &MessageListModel::countChanged, this, &ChatScreen::updateTitle);
        connect(messages, &MessageListModel::dataChanged, this,
                [this](const QModelIndex &, const QModelIndex &, const QList<int> &roles) {
                    if (roles.isEmpty()) // a message was replaced, not grown
                        updateTitle();
                });
        connect(messages, &MessageListModel::countChanged, this, &ChatScreen::updateEmptyState);
        connect(appState, &AppState::isStreamingChanged, this, &ChatScreen::updateEmptyState);
        connect(appState, &AppState::inputDraftChanged, this, &ChatScreen::updateCanSend);
    }
    emit appStateChanged();
    updateTitle();
    updateEmptyState();
    updateCanSend();
}

void ChatScreen::updateTitle()
{
    QString title;
    if (m_appState != nullptr) {
        title = conversationTitle(m_appState->conversationID(), m_appState->conversations(),
                                  m_appState->messages())
                    .value_or(QString());
    }
    if (m_title == title)
        return;
    m_title = title;
    emit titleChanged();
}

void ChatScreen::updateEmptyState()
{
    const bool empty =
        m_appState == nullptr || (m_appState->messages().isEmpty() && !m_appState->isStreaming());
    if (m_isEmptyState == empty)
        return;
    m_isEmptyState = empty;
    emit isEmptyStateChanged();
}

void ChatScreen::updateCanSend()
{
    const bool canSend = m_appState != nullptr && canSendDraft(m_appState->inputDraft());
    if (m_canSend == canSend)
        return;
    m_canSend = canSend;
    emit canSendChanged();
}

} // namespace velto::presentation
