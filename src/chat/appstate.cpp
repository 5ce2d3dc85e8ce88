// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/appstate.h"

#include <algorithm>

namespace velto::chat
{

AppState::AppState(const Environment &environment, QObject *parent)
    : QObject(parent)
    , m_messages(this)
    , m_browser(environment.browser)
    , m_cacheFile(environment.cacheFile)
    , m_tokens(environment.secrets)
    , m_auth(m_transport, m_tokens, environment.browser, environment.baseURL)
    , m_api(m_transport, m_auth, environment.baseURL)
    , m_chat(m_api)
    , m_veltoSettings(m_api)
    , m_marketplace(m_api)
    , m_workspace(m_api)
    , m_admin(m_api)
    , m_profile(m_api)
{}

AppState::~AppState()
{
    m_life.reset();
    stopStreaming();
}

QString AppState::errorMessage() const
{
    return m_lastError ? m_lastError->message : QString();
}

QString AppState::currentAccessToken() const
{
    return m_api.accessToken().value_or(QString());
}

std::optional<service::Workspace> AppState::currentWorkspace() const
{
    const service::Me *me = m_authStatus.me();
    if (me == nullptr || !me->workspaceId)
        return std::nullopt;
    const auto found = std::ranges::find(me->workspaces, *me->workspaceId, &service::Workspace::id);
    return found == me->workspaces.end() ? std::nullopt : std::optional(*found);
}

bool AppState::canManageWorkspace() const
{
    const service::Me *me = m_authStatus.me();
    if (me != nullptr && me->isAdmin)
        return *me->isAdmin;
    const auto current = currentWorkspace();
    return current && (current->role == u"owner" || current->role == u"admin");
}

void AppState::setInputDraft(const QString &draft)
{
    if (m_inputDraft == draft)
        return;
    m_inputDraft = draft;
    emit inputDraftChanged();
}

void AppState::setPromptSuggestion(const QString &suggestion)
{
    if (m_promptSuggestion == suggestion)
        return;
    m_promptSuggestion = suggestion;
    emit promptSuggestionChanged();
}

void AppState::setSelectedSection(Section section)
{
    if (std::exchange(m_selectedSection, section) != section)
        emit selectedSectionChanged();
}

void AppState::requestInputFocus()
{
    ++m_focusInputRequest;
    emit focusInputRequestChanged();
}

void AppState::requestHistorySearchFocus()
{
    ++m_focusHistorySearchRequest;
    emit focusHistorySearchRequestChanged();
}

void AppState::dismissError()
{
    setLastError({});
}

void AppState::setAuthStatus(AuthStatus status)
{
    if (m_authStatus == status)
        return;
    m_authStatus = std::move(status);
    emit authStatusChanged();
}

void AppState::setConversationID(std::optional<QString> id)
{
    if (m_conversationID == id)
        return;
    m_conversationID = std::move(id);
    emit conversationIDChanged();
}

void AppState::setStreaming(bool streaming)
{
    if (std::exchange(m_isStreaming, streaming) != streaming)
        emit isStreamingChanged();
}

void AppState::setAgentProgress(const QString &progress)
{
    if (m_agentProgress == progress)
        return;
    m_agentProgress = progress;
    emit agentProgressChanged();
}

void AppState::setLastError(std::optional<ChatErrorState> error)
{
    if (m_lastError == error)
        return;
    m_lastError = std::move(error);
    emit lastErrorChanged();
}

void AppState::setConversations(QList<service::ConversationSummary> conversations)
{
    if (m_conversations == conversations)
        return;
    m_conversations = std::move(conversations);
    emit conversationsChanged();
}

void AppState::setLoadingConversation(bool loading)
{
    if (std::exchange(m_isLoadingConversation, loading) != loading)
        emit isLoadingConversationChanged();
}

} // namespace velto::chat
