// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/appstate.h"

#include "chat/branching.h"

namespace velto::chat
{

QCoro::Task<void> AppState::editMessage(QUuid id, QString text)
{
    if (!m_isStreaming)
        co_await ask(edited(messages(), id, text));
}

void AppState::switchBranch(const QUuid &id, int index)
{
    if (m_isStreaming)
        return;
    std::optional<QList<ChatMessage>> next = switched(messages(), id, index);
    if (!next)
        return;
    m_messages.setMessages(std::move(*next));
    setLastError({});
    saveCache();
}

QCoro::Task<void> AppState::regenerate()
{
    if (!m_isStreaming)
        co_await ask(regenerated(messages()));
}

QCoro::Task<void> AppState::continueGeneration()
{
    //: What is sent on behalf of a user who wants the answer to go on
    const QString prompt = tr("Continue");
    if (!m_isStreaming)
        co_await ask(continued(messages(), prompt));
}

QCoro::Task<void> AppState::ask(std::optional<QList<ChatMessage>> next)
{
    if (!next)
        co_return;
    m_messages.setMessages(std::move(*next));
    setLastError({});
    co_await runStream(m_messages.count() - 1);
}

} // namespace velto::chat
