// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/json.h"
#include "service/records.h"
#include "service/tokenrefresher.h"
#include "service/transport.h"

#include <QObject>

#include <optional>
#include <stop_token>

namespace velto::service
{

/// The two collections of a user's library.
enum class LibraryKind { Skills, Subagents };

/// The one REST client: it adds the bearer token, turns an expired one into one refresh and one
/// second attempt, and gives each endpoint a name. Main thread only. Retries nothing else and logs
/// nothing. It outlives its unfinished requests.
class APIClient final : public QObject
{
    Q_OBJECT

public:
    /// Both references outlive the client.
    APIClient(Transport &transport, TokenRefresher &auth, QUrl baseURL, QObject *parent = nullptr);

    [[nodiscard]] const std::optional<QString> &accessToken() const { return m_accessToken; }
    void setAccessToken(std::optional<QString> token);
    [[nodiscard]] const QUrl &baseURL() const { return m_baseURL; }
    [[nodiscard]] Transport &transport() const { return m_transport; }
    [[nodiscard]] TokenRefresher &auth() const { return m_auth; }

    /// A request for `path` on the service with the bearer token, if there is one.
    [[nodiscard]] base::Result<HTTPRequest> build(QByteArray method, const QString &path,
                                                  std::optional<QByteArray> body,
                                                  std::optional<QByteArray> contentType) const;

    /// Any answer, of whatever status, but a first 401: that is refreshed and asked again, once. A
    /// refresh is for everybody: `stop` ends the request before or after it, not the refresh.
    [[nodiscard]] QCoro::Task<base::Result<HTTPResponse>>
    request(QByteArray method, QString path, std::optional<QByteArray> body = {},
            std::optional<QByteArray> contentType = {}, std::stop_token stop = {});

    /// The body of an answer in 200 to 299; fails with `APIError` for any other status.
    [[nodiscard]] QCoro::Task<base::Result<QByteArray>>
    send(QByteArray method, QString path, std::optional<QByteArray> body = {},
         std::optional<QByteArray> contentType = {}, std::stop_token stop = {});

    /// `send` with a record in snake case; the answer's body is dropped.
    template<typename T>
    [[nodiscard]] QCoro::Task<base::Result<void>> sendJSON(QByteArray method, QString path, T value)
    {
        base::Result<QByteArray> body = base::json::encode(value, base::json::Keys::Snake);
        if (!body)
            co_return tl::unexpected(body.error());
        const auto data = co_await send(method, path, std::move(*body));
        if (!data)
            co_return tl::unexpected(data.error());
        co_return base::Result<void>{};
    }

    /// `send` and the shared decoder.
    template<typename T>
    [[nodiscard]] QCoro::Task<base::Result<T>> read(QByteArray method, QString path,
                                                    std::optional<QByteArray> body = {},
                                                    std::stop_token stop = {})
    {
        const auto data = co_await send(method, path, std::move(body), {}, std::move(stop));
        if (!data)
            co_return tl::unexpected(data.error());
        co_return base::json::decode<T>(*data, base::json::Keys::Snake);
    }

    // --- The session (endpoints_session.cpp). The status of the first two answers is not looked
    // at, so that a server's error reads as a decoding error; the next two fail with
    // `BadServerResponse` instead of `APIError`, and `fetchMessages` takes nothing but 200. All of
    // that is the wire contract.
    [[nodiscard]] QCoro::Task<base::Result<Me>> fetchMe();
    [[nodiscard]] QCoro::Task<base::Result<QList<ConversationSummary>>>
    listConversations(int limit, std::optional<QString> channel = {});
    [[nodiscard]] QCoro::Task<base::Result<QList<StoredUIMessage>>> fetchMessages(QString id);
    [[nodiscard]] QCoro::Task<base::Result<void>> renameConversation(QString id, QString title);
    [[nodiscard]] QCoro::Task<base::Result<void>> deleteConversation(QString id);
    [[nodiscard]] QCoro::Task<base::Result<Me>> switchWorkspace(QString workspaceId);

    // --- Settings, library, integrations, marketplace (endpoints_agent.cpp). Where an answer is a
    // record of a store, the store names its type.
    /// Only the keys that have a value travel. `Settings` is the record of the answer.
    template<typename Settings>
    [[nodiscard]] QCoro::Task<base::Result<Settings>>
    saveSettings(std::optional<QString> provider, std::optional<QString> codexModel)
    {
        return read<Settings>("PUT", QStringLiteral("/v1/settings"),
                              settingsBody(provider, codexModel));
    }
    [[nodiscard]] QCoro::Task<base::Result<void>> setLibraryEnabled(LibraryKind kind, QString id,
                                                                    bool enabled);
    [[nodiscard]] QCoro::Task<base::Result<void>> deleteLibraryItem(LibraryKind kind, QString id);
    template<typename Status>
    [[nodiscard]] QCoro::Task<base::Result<Status>> integrationStatus(QString provider)
    {
        return read<Status>("GET", integrationPath(provider));
    }
    [[nodiscard]] QCoro::Task<base::Result<void>> disconnectIntegration(QString provider);
    /// Its `APIError` carries the body as it came: not trimmed, and empty when it is no text.
    [[nodiscard]] QCoro::Task<base::Result<void>> installBundle(QString catalogId);
    [[nodiscard]] QCoro::Task<base::Result<void>> uninstallBundle(QString id);

    // --- Workspaces and administration (endpoints_workspace.cpp).
    template<typename AdminWorkspace>
    [[nodiscard]] QCoro::Task<base::Result<AdminWorkspace>> fetchAdminWorkspace(QString slug)
    {
        return read<AdminWorkspace>("GET", adminWorkspacePath(slug));
    }
    [[nodiscard]] QCoro::Task<base::Result<void>> setAdminWorkspaceModel(QString slug,
                                                                         QString model);
    [[nodiscard]] QCoro::Task<base::Result<void>> deleteAdminCatalogEntry(QString id);
    template<typename AuditLog>
    [[nodiscard]] QCoro::Task<base::Result<AuditLog>> auditLog(QString slug, int limit)
    {
        return read<AuditLog>("GET", auditPath(slug, limit));
    }
    [[nodiscard]] QCoro::Task<base::Result<void>> revokeInvite(QString slug, QString id);
    [[nodiscard]] QCoro::Task<base::Result<void>> setMemberRole(QString slug, QString userId,
                                                                QString role);
    [[nodiscard]] QCoro::Task<base::Result<void>> removeMember(QString slug, QString userId);

private:
    /// `send` with the answer's body dropped.
    [[nodiscard]] QCoro::Task<base::Result<void>> sendOnly(QByteArray method, QString path);
    [[nodiscard]] static QByteArray settingsBody(const std::optional<QString> &provider,
                                                 const std::optional<QString> &codexModel);
    [[nodiscard]] static QString integrationPath(const QString &provider);
    [[nodiscard]] static QString adminWorkspacePath(const QString &slug);
    [[nodiscard]] static QString auditPath(const QString &slug, int limit);

    Transport &m_transport;
    TokenRefresher &m_auth;
    QUrl m_baseURL;
    std::optional<QString> m_accessToken;
};

} // namespace velto::service
