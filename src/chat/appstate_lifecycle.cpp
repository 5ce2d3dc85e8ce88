// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/appstate.h"

#include "chat/conversationcache.h"
#include "chat/storedmessages.h"

#include <QUrlQuery>

#include <algorithm>

namespace velto::chat
{
namespace
{

constexpr int historyLimit = 50;
constexpr QLatin1StringView historyChannel("chat_ui");

} // namespace

QCoro::Task<void> AppState::bootstrap()
{
    if (m_didBootstrap)
        co_return;
    m_didBootstrap = true;
    const Life life = m_life;
    if (auto cached = conversationcache::load(m_cacheFile); cached && m_messages.count() == 0) {
        m_messages.setMessages(std::move(cached->messages));
        setConversationID(std::move(cached->conversationID));
    }
    const auto stored = co_await m_tokens.loadSecret(auth::refreshTokenAccount);
    if (life.expired())
        co_return;
    if (!stored) {
        setAuthStatus(AuthStatus::loggedOut());
        co_return;
    }
    const auto tokens = co_await m_auth.refresh();
    if (life.expired())
        co_return;
    if (!tokens) {
        co_await tearDown();
        co_return;
    }
    m_api.setAccessToken(tokens->accessToken);
    auto me = co_await m_api.fetchMe();
    if (life.expired())
        co_return;
    if (!me) {
        co_await tearDown();
        co_return;
    }
    setAuthStatus(AuthStatus::loggedIn(std::move(*me)));
    co_await refreshConversations();
}

QCoro::Task<void> AppState::tearDown()
{
    const Life life = m_life;
    co_await forgetRefreshToken();
    if (life.expired())
        co_return;
    m_messages.setMessages({});
    setConversationID({});
    conversationcache::clear(m_cacheFile);
    setAuthStatus(AuthStatus::loggedOut());
}

QCoro::Task<void> AppState::forgetRefreshToken()
{
    const Life life = m_life;
    const auto token = co_await m_tokens.loadSecret(auth::refreshTokenAccount);
    if (life.expired())
        co_return;
    if (token) {
        // Whether the service heard of it or not: the token goes.
        [[maybe_unused]] const auto revoked = co_await m_auth.revoke(*token);
        if (life.expired())
            co_return;
    }
    co_await m_tokens.deleteSecret(auth::refreshTokenAccount);
}

QCoro::Task<void> AppState::signIn()
{
    const Life life = m_life;
    setAuthStatus(AuthStatus::authenticating());
    const auto tokens = co_await m_auth.login();
    if (life.expired())
        co_return;
    if (!tokens) {
        setAuthStatus(AuthStatus::error(base::description(tokens.error())));
        co_return;
    }
    m_api.setAccessToken(tokens->accessToken);
    auto me = co_await m_api.fetchMe();
    if (life.expired())
        co_return;
    if (!me) {
        setAuthStatus(AuthStatus::error(base::description(me.error())));
        co_return;
    }
    setAuthStatus(AuthStatus::loggedIn(std::move(*me)));
    co_await refreshConversations();
}

QCoro::Task<void> AppState::signOut()
{
    const Life life = m_life;
    stopStreaming();
    co_await forgetRefreshToken();
    if (life.expired())
        co_return;
    m_api.setAccessToken({});
    setAuthStatus(AuthStatus::loggedOut());
    m_messages.setMessages({});
    setConversationID({});
    setLastError({});
    conversationcache::clear(m_cacheFile);
    resetStores();
    setSelectedSection(Section::Chat);
    m_didBootstrap = false;
}

void AppState::resetStores()
{
    m_veltoSettings.reset();
    m_marketplace.reset();
    m_workspace.reset();
    m_admin.reset();
    m_profile.reset();
}

void AppState::newConversation()
{
    stopStreaming();
    m_messages.setMessages({});
    setConversationID({});
    setLastError({});
    conversationcache::clear(m_cacheFile);
}

QCoro::Task<void> AppState::refreshConversations()
{
    const Life life = m_life;
    const auto answer = co_await m_api.listConversations(historyLimit, historyChannel);
    if (life.expired())
        co_return;
    if (answer)
        setConversations(*answer);
    else if (!m_conversations)
        setConversations({});
}

QCoro::Task<void> AppState::selectConversation(QString id)
{
    if (m_isStreaming || (m_conversationID == id && m_messages.count() > 0))
        co_return;
    const Life life = m_life;
    setLoadingConversation(true);
    const auto stored = co_await m_api.fetchMessages(id);
    if (life.expired())
        co_return;
    m_messages.setMessages(stored ? chatMessagesFrom(*stored) : QList<ChatMessage>());
    setConversationID(id);
    if (stored)
        saveCache();
    setLoadingConversation(false);
}

QCoro::Task<void> AppState::stepConversation(int offset)
{
    if (!m_conversations || m_conversations->isEmpty())
        co_return;
    const auto isOpen = [this](const auto &row) { return row.id == m_conversationID; };
    const auto open = std::ranges::find_if(*m_conversations, isOpen);
    const qsizetype position =
        open == m_conversations->end() ? -1 : open - m_conversations->begin();
    const qsizetype target = position + offset;
    if (target < 0 || target >= m_conversations->size())
        co_return;
    co_await selectConversation(m_conversations->at(target).id);
}

QCoro::Task<void> AppState::renameConversation(QString id, QString title)
{
    const QString trimmed = title.trimmed();
    if (trimmed.isEmpty())
        co_return;
    const Life life = m_life;
    if (auto rows = m_conversations) {
        const auto row = std::ranges::find(*rows, id, &service::ConversationSummary::id);
        if (row != rows->end())
            row->title = trimmed;
        setConversations(std::move(*rows));
    }
    const auto renamed = co_await m_api.renameConversation(id, trimmed);
    if (!renamed && !life.expired())
        co_await refreshConversations();
}

QCoro::Task<void> AppState::deleteConversation(QString id)
{
    const Life life = m_life;
    const bool wasOpen = m_conversationID == id;
    if (auto rows = m_conversations) {
        rows->removeIf([&](const auto &row) { return row.id == id; });
        setConversations(std::move(*rows));
    }
    if (wasOpen)
        newConversation();
    const auto deleted = co_await m_api.deleteConversation(id);
    if (!deleted && !life.expired())
        co_await refreshConversations();
}

QCoro::Task<std::optional<QString>> AppState::switchWorkspace(QString workspaceId)
{
    const Life life = m_life;
    auto me = co_await m_api.switchWorkspace(workspaceId);
    if (life.expired())
        co_return std::nullopt;
    if (!me)
        co_return base::description(me.error());
    applyMe(std::move(*me));
    co_await m_profile.load();
    co_return std::nullopt;
}

void AppState::applyMe(service::Me me)
{
    setAuthStatus(AuthStatus::loggedIn(std::move(me)));
    resetStores();
    newConversation();
    refreshConversations();
}

void AppState::openLink(const QUrl &url)
{
    (void)m_browser.openURL(url); // there is nothing to tell about a link that nobody opens
}

QCoro::Task<void> AppState::handleDeepLink(QUrl url)
{
    if (!url.isValid() || url.host().isEmpty())
        co_return;
    if (url.host() == u"new") {
        newConversation();
        const QString text =
            QUrlQuery(url).queryItemValue(QStringLiteral("text"), QUrl::FullyDecoded);
        if (!text.isEmpty())
            setInputDraft(text);
        requestInputFocus();
    } else if (url.host() == u"chat") {
        const QStringList steps = url.path(QUrl::FullyDecoded).split(u'/', Qt::SkipEmptyParts);
        if (!steps.isEmpty() && steps.last() != u"chat")
            co_await selectConversation(steps.last());
    }
}

} // namespace velto::chat
