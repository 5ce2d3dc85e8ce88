// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "auth/loopbackserver.h"
#include "auth/tokenstore.h"
#include "base/oneshot.h"
#include "platform/urlopener.h"
#include "service/tokenrefresher.h"
#include "service/transport.h"

#include <QObject>
#include <QPointer>
#include <QUrl>

#include <chrono>
#include <optional>
#include <utility>

namespace velto::auth
{

/// Signs the user in with the OAuth 2 authorization-code flow with PKCE, through the system's
/// browser and a loopback redirect; refreshes and revokes tokens.
///
/// It stores new refresh tokens itself; the access token goes to the caller. Main thread only. A
/// task that is still running when the client is destroyed ends with a failure.
class AuthClient final : public QObject, public service::TokenRefresher
{
    Q_OBJECT

public:
    /// The references outlive the client.
    AuthClient(service::Transport &transport, TokenStore &store, platform::URLOpener &opener,
               QUrl baseURL, QObject *parent = nullptr);
    ~AuthClient() override;

    /// How long `login` waits for the browser; for those to whom 300 seconds are too long.
    void setLoginTimeout(std::chrono::milliseconds timeout) { m_loginTimeout = timeout; }

    /// A second sign-in takes the place of a first that still waits for the browser, which then
    /// fails with `LoopbackError::TimedOut`: the user has only one answer to give.
    [[nodiscard]] QCoro::Task<base::Result<service::Tokens>> login();

    /// Joins a refresh in flight. The stored token is deleted only when the service rejects it.
    [[nodiscard]] QCoro::Task<base::Result<service::Tokens>> refresh() override;

    /// Succeeds with any answer; fails only when there is none.
    [[nodiscard]] QCoro::Task<base::Result<void>> revoke(QString refreshToken);

private:
    using Form = QList<std::pair<QString, QString>>;

    [[nodiscard]] LoopbackServer *replaceServer();
    [[nodiscard]] QUrl authorizeURL(const QString &redirectURI, const QString &challenge,
                                    const QString &state) const;
    /// Opens the browser and waits for what comes first: the redirect, the news that there is no
    /// browser, the time-out.
    [[nodiscard]] QCoro::Task<base::Result<QUrl>> redirect(LoopbackServer *server, QUrl page);
    [[nodiscard]] QCoro::Task<base::Result<service::Tokens>> performRefresh();
    [[nodiscard]] QCoro::Task<base::Result<service::Tokens>> rotate(QString token);
    /// Asks for tokens and stores them; logs `success` with the end of the new one and its life.
    [[nodiscard]] QCoro::Task<base::Result<service::Tokens>> obtain(Form form, QString success);
    [[nodiscard]] QCoro::Task<base::Result<service::Tokens>> tokenRequest(Form form);
    [[nodiscard]] service::HTTPRequest formPost(const QString &path, const Form &form) const;

    service::Transport &m_transport;
    TokenStore &m_store;
    platform::URLOpener &m_opener;
    const QUrl m_baseURL;
    std::chrono::milliseconds m_loginTimeout = std::chrono::seconds(300);
    QPointer<LoopbackServer> m_server; ///< Of the newest sign-in.
    std::optional<base::OneShot<base::Result<service::Tokens>>> m_inFlightRefresh;
};

} // namespace velto::auth
