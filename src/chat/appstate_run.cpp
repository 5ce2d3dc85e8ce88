// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/appstate.h"

#include "chat/conversationcache.h"

#include <QPointer>

namespace velto::chat
{
namespace
{

bool isUserTurn(const ChatMessage &message)
{
    return message.role != ChatMessage::Role::Assistant;
}

} // namespace

QCoro::Task<void> AppState::sendDraft()
{
    const QString text = m_inputDraft.trimmed();
    if (text.isEmpty() || m_isStreaming)
        co_return;
    setInputDraft({});
    setLastError({});
    m_messages.append(newMessage(ChatMessage::Role::User, {textPart(text)}));
    m_messages.append(newMessage(ChatMessage::Role::Assistant));
    co_await runStream(m_messages.count() - 1);
}

void AppState::stopStreaming()
{
    // The run ends inside the request and lets go of its own handle there.
    if (auto task = m_streamTask)
        task->request_stop();
}

QCoro::Task<void> AppState::runStream(int index)
{
    const Life life = m_life;
    setStreaming(true);
    setPromptSuggestion({});
    setAgentProgress({});
    m_streamTask.emplace();
    co_await consumeRun(index, m_streamTask->get_token());
    if (life.expired())
        co_return;
    m_streamTask.reset();
    setStreaming(false);
}

QCoro::Task<void> AppState::consumeRun(int index, std::stop_token stop)
{
    const Life life = m_life;
    const auto keepID = [self = QPointer(this), life](const QString &id) {
        if (self && !life.expired())
            self->setConversationID(id);
    };
    // The placeholder at the end is what the answer goes into; it is not part of the question.
    ChatEventSequence events = m_chat.stream(m_messages.messages().first(m_messages.count() - 1),
                                             m_conversationID, keepID, stop);
    while (true) {
        const auto next = co_await events.next();
        if (life.expired())
            co_return;
        if (!next) {
            failRun(next.error(), index);
            co_return;
        }
        if (stop.stop_requested()) {
            stopRun(index);
            co_return;
        }
        if (!*next)
            co_return; // closed without "finish": the message stays as it stands
        if (index < m_messages.count() && !take(**next, index))
            co_return;
    }
}

bool AppState::take(const ChatStreamEvent &event, int index)
{
    if (const auto *progress = std::get_if<event::AgentProgress>(&event)) {
        setAgentProgress(progress->summary);
    } else if (const auto *prompt = std::get_if<event::PromptSuggestion>(&event)) {
        setPromptSuggestion(prompt->suggestion);
    } else if (const auto *error = std::get_if<event::Error>(&event)) {
        setAgentProgress({});
        reportChatError(error->text);
        return false;
    } else if (std::holds_alternative<event::Finish>(event)) {
        setAgentProgress({});
        refreshConversations();
        saveCache();
        return false;
    } else {
        m_messages.apply(event, index);
    }
    return true;
}

void AppState::stopRun(int index)
{
    m_messages.appendStoppedNote(index);
    saveCache();
}

void AppState::failRun(const base::Failure &failure, int index)
{
    const auto *authError = std::get_if<base::AuthError>(&failure);
    if (base::isCancellation(failure))
        m_messages.appendStoppedNote(index);
    else if (authError != nullptr && authError->kind == base::AuthError::Kind::SessionExpired)
        expireSession();
    else
        reportChatError(base::description(failure));
}

void AppState::expireSession()
{
    if (m_messages.count() >= 2)
        m_messages.truncate(m_messages.count() - 2);
    m_api.setAccessToken({});
    m_didBootstrap = false;
    setAuthStatus(AuthStatus::loggedOut());
}

void AppState::reportChatError(const QString &text)
{
    setLastError(ChatErrorState{text});
    const int last = m_messages.count() - 1;
    if (last >= 0 && !isUserTurn(m_messages.at(last)) && m_messages.at(last).parts.isEmpty())
        m_messages.truncate(last);
}

void AppState::saveCache() const
{
    conversationcache::save(m_messages.messages(), m_conversationID, m_cacheFile);
}

} // namespace velto::chat
