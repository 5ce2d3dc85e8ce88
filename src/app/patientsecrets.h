// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/secretstore.h"

#include <QMutex>
#include <QWaitCondition>

#include <memory>

namespace velto::app
{

/// Lets the first frame go first: calls wait, in their worker threads, until `begin` is called.
/// Talking to the keyring would take the processor away from drawing the window, and nothing on the
/// screen waits for its answer.
class PatientSecrets final : public platform::SecretStore
{
public:
    explicit PatientSecrets(std::unique_ptr<platform::SecretStore> store);

    /// From now on calls pass at once. Any thread, any number of times.
    void begin();

    base::Result<void> save(const QString &service, const QString &account,
                            const QString &value) override;
    base::Result<std::optional<QString>> load(const QString &service,
                                              const QString &account) override;
    base::Result<void> remove(const QString &service, const QString &account) override;
    void abandon() override;

private:
    void wait();

    std::unique_ptr<platform::SecretStore> m_store;
    QMutex m_mutex;
    QWaitCondition m_begun;
    bool m_open = false;
};

} // namespace velto::app
