// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/text.h"
#include "service/apiclient.h"

namespace velto::service
{
namespace
{

using base::json::Keys;

QString conversationPath(const QString &id)
{
    return QStringLiteral("/v1/conversations/") + base::pathEncoded(id);
}

tl::unexpected<base::Failure> badServerResponse()
{
    return base::fail(base::TransportError{base::TransportError::Kind::BadServerResponse, {}});
}

} // namespace

QCoro::Task<base::Result<Me>> APIClient::fetchMe()
{
    const base::Result<HTTPResponse> response = co_await request("GET", QStringLiteral("/v1/me"));
    if (!response)
        co_return tl::unexpected(response.error());
    co_return base::json::decode<Me>(response->body, Keys::Snake);
}

QCoro::Task<base::Result<QList<ConversationSummary>>>
APIClient::listConversations(int limit, std::optional<QString> channel)
{
    QString path = QStringLiteral("/v1/conversations?limit=%1").arg(limit);
    if (channel)
        path += QStringLiteral("&channel=") + *channel;
    const base::Result<HTTPResponse> response = co_await request("GET", path);
    if (!response)
        co_return tl::unexpected(response.error());
    co_return base::json::decode<QList<ConversationSummary>>(response->body, Keys::Snake);
}

QCoro::Task<base::Result<QList<StoredUIMessage>>> APIClient::fetchMessages(QString id)
{
    const QString path = conversationPath(id) + QStringLiteral("/messages");
    const base::Result<HTTPResponse> response = co_await request("GET", path);
    if (!response)
        co_return tl::unexpected(response.error());
    if (response->head.status != 200)
        co_return badServerResponse();
    co_return base::json::decode<QList<StoredUIMessage>>(response->body, Keys::Plain);
}

QCoro::Task<base::Result<void>> APIClient::renameConversation(QString id, QString title)
{
    const QByteArray body = base::json::compact(QJsonObject{{QStringLiteral("title"), title}});
    const base::Result<HTTPResponse> response =
        co_await request("PATCH", conversationPath(id), body);
    if (!response)
        co_return tl::unexpected(response.error());
    if (response->head.status < 200 || response->head.status > 299)
        co_return badServerResponse();
    co_return base::Result<void>{};
}

QCoro::Task<base::Result<void>> APIClient::deleteConversation(QString id)
{
    return sendOnly("DELETE", conversationPath(id));
}

QCoro::Task<base::Result<Me>> APIClient::switchWorkspace(QString workspaceId)
{
    const SwitchWorkspaceRequest wanted{std::move(workspaceId)};
    const base::Result<void> switched =
        co_await sendJSON("POST", QStringLiteral("/v1/workspaces/switch"), wanted);
    if (!switched)
        co_return tl::unexpected(switched.error());
    co_return co_await fetchMe();
}

} // namespace velto::service
