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
    [[nodiscard]] QCoro::Task<base::Result<void>> sendJSON(QByteArray method, QString path,
                                                           const T &value)
    {
        return sendOnly(std::move(method), std::move(path),
                        base::json::encode(value, base::json::Keys::Snake));
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
    // record of a store, its body is given as it came, for the store to decode.
    /// Only the keys that have a value travel.
    [[nodiscard]] QCoro::Task<base::Result<QByteArray>>
    saveSettings(std::optional<QString> provider, std::optional<QString> codexModel);
    [[nodiscard]] QCoro::Task<base::Result<void>> setLibraryEnabled(LibraryKind kind, QString id,
                                                                    bool enabled);
    [[nodiscard]] QCoro::Task<base::Result<void>> deleteLibraryItem(LibraryKind kind, QString id);
    [[nodiscard]] QCoro::Task<base::Result<QByteArray>> integrationStatus(QString provider);
    [[nodiscard]] QCoro::Task<base::Result<void>> disconnectIntegration(QString provider);
    /// Its `APIError` carries the body as it came: not trimmed, and empty when it is no text.
    [[nodiscard]] QCoro::Task<base::Result<void>> installBundle(QString catalogId);
    [[nodiscard]] QCoro::Task<base::Result<void>> uninstallBundle(QString id);

    // --- Workspaces and administration (endpoints_workspace.cpp).
    [[nodiscard]] QCoro::Task<base::Result<QByteArray>> fetchAdminWorkspace(QString slug);
    [[nodiscard]] QCoro::Task<base::Result<void>> setAdminWorkspaceModel(QString slug,
                                                                         QString model);
    [[nodiscard]] QCoro::Task<base::Result<void>> deleteAdminCatalogEntry(QString id);
    [[nodiscard]] QCoro::Task<base::Result<QByteArray>> auditLog(QString slug, int limit);
    [[nodiscard]] QCoro::Task<base::Result<void>> revokeInvite(QString slug, QString id);
    [[nodiscard]] QCoro::Task<base::Result<void>> setMemberRole(QString slug, QString userId,
                                                                QString role);
    [[nodiscard]] QCoro::Task<base::Result<void>> removeMember(QString slug, QString userId);

private:
    /// `send` with the answer's body dropped. A body that could not be made fails before that.
    [[nodiscard]] QCoro::Task<base::Result<void>>
    sendOnly(QByteArray method, QString path,
             base::Result<std::optional<QByteArray>> body = std::nullopt);

    Transport &m_transport;
    TokenRefresher &m_auth;
    QUrl m_baseURL;
    std::optional<QString> m_accessToken;
};

} // namespace velto::service
