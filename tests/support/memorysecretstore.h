// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/secretstore.h"

#include <QMap>
#include <QMutex>

#include <atomic>
#include <utility>

namespace velto::test
{

/// A secret store that forgets, for tests whose point is not the keyring. Each operation can be
/// told to fail.
class MemorySecretStore final : public platform::SecretStore
{
public:
    base::Result<void> save(const QString &service, const QString &account,
                            const QString &value) override
    {
        const QMutexLocker lock(&m_mutex);
        if (m_saveFailure)
            return base::fail(*m_saveFailure);
        m_secrets[{service, account}] = value;
        return {};
    }

    base::Result<std::optional<QString>> load(const QString &service,
                                              const QString &account) override
    {
        const QMutexLocker lock(&m_mutex);
        ++m_loads;
        if (m_loadFailure)
            return base::fail(*m_loadFailure);
        const auto found = m_secrets.constFind({service, account});
        return found == m_secrets.cend() ? std::optional<QString>() : *found;
    }

    base::Result<void> remove(const QString &service, const QString &account) override
    {
        const QMutexLocker lock(&m_mutex);
        ++m_removes;
        m_secrets.remove({service, account});
        return {};
    }

    void abandon() override {}

    void failSaves(std::optional<base::KeychainError> failure)
    {
        const QMutexLocker lock(&m_mutex);
        m_saveFailure = failure;
    }
    void failLoads(std::optional<base::KeychainError> failure)
    {
        const QMutexLocker lock(&m_mutex);
        m_loadFailure = failure;
    }

    /// The secret of velto's own service under `account`.
    [[nodiscard]] std::optional<QString>
    secret(const QString &account = QStringLiteral("refresh_token")) const
    {
        const QMutexLocker lock(&m_mutex);
        const auto found = m_secrets.constFind({QStringLiteral("ltd.orbax.velto"), account});
        return found == m_secrets.cend() ? std::optional<QString>() : *found;
    }
    void put(const QString &value, const QString &account = QStringLiteral("refresh_token"))
    {
        const QMutexLocker lock(&m_mutex);
        m_secrets[{QStringLiteral("ltd.orbax.velto"), account}] = value;
    }
    [[nodiscard]] int loads() const { return m_loads; }
    [[nodiscard]] int removes() const { return m_removes; }

private:
    mutable QMutex m_mutex;
    QMap<std::pair<QString, QString>, QString> m_secrets;
    std::optional<base::KeychainError> m_saveFailure;
    std::optional<base::KeychainError> m_loadFailure;
    std::atomic<int> m_loads = 0;
    std::atomic<int> m_removes = 0;
};

} // namespace velto::test
