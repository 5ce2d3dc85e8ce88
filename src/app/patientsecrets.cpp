// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "patientsecrets.h"

namespace velto::app
{

PatientSecrets::PatientSecrets(std::unique_ptr<platform::SecretStore> store)
    : m_store(std::move(store))
{}

void PatientSecrets::begin()
{
    const QMutexLocker lock(&m_mutex);
    m_open = true;
    m_begun.wakeAll();
}

base::Result<void> PatientSecrets::save(const QString &service, const QString &account,
                                        const QString &value)
{
    wait();
    return m_store->save(service, account, value);
}

base::Result<std::optional<QString>> PatientSecrets::load(const QString &service,
                                                          const QString &account)
{
    wait();
    return m_store->load(service, account);
}

base::Result<void> PatientSecrets::remove(const QString &service, const QString &account)
{
    wait();
    return m_store->remove(service, account);
}

void PatientSecrets::abandon()
{
    m_store->abandon();
    begin();
}

void PatientSecrets::wait()
{
    const QMutexLocker lock(&m_mutex);
    while (!m_open)
        m_begun.wait(&m_mutex);
}

} // namespace velto::app
