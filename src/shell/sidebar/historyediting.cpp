// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/historyediting.h"

#include <algorithm>
#include <utility>

namespace velto::shell
{

std::optional<QString> renamedTitle(const std::optional<QString> &title, const QString &written)
{
    const QString text = written.trimmed();
    if (text.isEmpty() || text == title)
        return std::nullopt;
    return text;
}

QString deletionMessage(const service::ConversationSummary &conversation)
{
    const QString title = conversation.title.value_or(QString());
    return HistoryEditing::tr("\"%1\" will be permanently removed.")
        .arg(title.isEmpty() ? HistoryEditing::tr("This chat") : title);
}

QString conversationLink(const QString &conversationID)
{
    return QStringLiteral("ltd.orbax.velto://chat/") + conversationID;
}

void HistoryEditing::setAppState(chat::AppState *appState)
{
    if (m_appState == appState)
        return;
    m_appState = appState;
    emit appStateChanged();
}

void HistoryEditing::setRenameBuffer(const QString &text)
{
    if (m_renameBuffer == text)
        return;
    m_renameBuffer = text;
    emit renameBufferChanged();
}

void HistoryEditing::setRenamingID(const QString &id)
{
    if (m_renamingID == id)
        return;
    m_renamingID = id;
    emit renamingIDChanged();
}

QString HistoryEditing::deletionMessage() const
{
    return m_deleting ? shell::deletionMessage(*m_deleting) : QString();
}

std::optional<service::ConversationSummary> HistoryEditing::find(const QString &id) const
{
    if (m_appState == nullptr || !m_appState->conversations())
        return std::nullopt;
    const auto &all = *m_appState->conversations();
    const auto found = std::ranges::find(all, id, &service::ConversationSummary::id);
    return found == all.cend() ? std::nullopt : std::optional(*found);
}

void HistoryEditing::beginRename(const QString &conversationID)
{
    const auto conversation = find(conversationID);
    if (!conversation)
        return;
    setRenameBuffer(conversation->title.value_or(QString()));
    setRenamingID(conversationID);
}

void HistoryEditing::commitRename()
{
    const auto conversation = find(m_renamingID);
    setRenamingID({});
    if (!conversation)
        return;
    if (const auto title = renamedTitle(conversation->title, m_renameBuffer))
        m_appState->startRenameConversation(conversation->id, *title);
}

void HistoryEditing::cancelRename()
{
    setRenamingID({});
}

void HistoryEditing::askToDelete(const QString &conversationID)
{
    auto conversation = find(conversationID);
    if (!conversation)
        return;
    m_deleting = std::move(conversation);
    emit deletingChanged();
}

void HistoryEditing::confirmDeletion()
{
    const auto conversation = std::exchange(m_deleting, std::nullopt);
    if (!conversation)
        return;
    emit deletingChanged();
    if (m_appState != nullptr)
        m_appState->startDeleteConversation(conversation->id);
}

void HistoryEditing::cancelDeletion()
{
    if (std::exchange(m_deleting, std::nullopt))
        emit deletingChanged();
}

QString HistoryEditing::link(const QString &conversationID)
{
    return conversationLink(conversationID);
}

} // namespace velto::shell
