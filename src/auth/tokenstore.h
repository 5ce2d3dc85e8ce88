// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/failure.h"
#include "platform/secretstore.h"

#include <QCoroTask>

#include <QString>
#include <QThreadPool>

#include <chrono>
#include <memory>
#include <optional>

namespace velto::auth
{

/// The account under which the refresh token is kept.
inline constexpr QLatin1StringView refreshTokenAccount{"refresh_token"};

/// The one long-lived credential of a session, in the desktop's secure store. Called from the main
/// thread; the store itself is spoken to from a thread of its own, one call after another in the
/// order in which they came.
class TokenStore final
{
public:
    /// `store` outlives this object. `patience` is for its end, below.
    explicit TokenStore(platform::SecretStore &store,
                        std::chrono::milliseconds patience = std::chrono::seconds(2));
    /// Lets calls that are under way finish, above all the saving of a rotated token, but abandons
    /// the store when one doesn't, because the desktop waits for its user.
    ~TokenStore();
    Q_DISABLE_COPY_MOVE(TokenStore)

    /// Fails with `KeychainError`.
    [[nodiscard]] QCoro::Task<base::Result<void>> saveSecret(QString value, QString account);
    /// Absent when there is no such secret and when it can't be read, whatever the reason.
    [[nodiscard]] QCoro::Task<std::optional<QString>> loadSecret(QString account);
    /// Never fails, at most nothing happens.
    [[nodiscard]] QCoro::Task<void> deleteSecret(QString account);

private:
    platform::SecretStore &m_store;
    std::chrono::milliseconds m_patience;
    std::unique_ptr<QThreadPool> m_thread;
};

} // namespace velto::auth
