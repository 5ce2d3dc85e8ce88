// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "auth/tokenstore.h"

#include <QCoroFuture>

#include <QtConcurrentRun>

namespace velto::auth
{
namespace
{

QString service()
{
    return QStringLiteral("ltd.orbax.velto");
}

} // namespace

TokenStore::TokenStore(platform::SecretStore &store, std::chrono::milliseconds patience)
    : m_store(store)
    , m_patience(patience)
    , m_thread(std::make_unique<QThreadPool>())
{
    m_thread->setMaxThreadCount(1);
}

TokenStore::~TokenStore()
{
    const int patience = static_cast<int>(m_patience.count());
    if (m_thread->waitForDone(patience))
        return;
    m_store.abandon();
    // A library below may miss the news. The thread is then left to end with the process rather
    // than keeping that from ending.
    if (!m_thread->waitForDone(patience))
        static_cast<void>(m_thread.release());
}

// The futures have names: GCC 12 destroys the captures of a lambda twice when it is a temporary of
// an expression that awaits.
QCoro::Task<base::Result<void>> TokenStore::saveSecret(QString value, QString account)
{
    platform::SecretStore *const store = &m_store;
    const QFuture<base::Result<void>> saved =
        QtConcurrent::run(m_thread.get(), [=] { return store->save(service(), account, value); });
    co_return co_await saved;
}

QCoro::Task<std::optional<QString>> TokenStore::loadSecret(QString account)
{
    platform::SecretStore *const store = &m_store;
    const QFuture<base::Result<std::optional<QString>>> loading =
        QtConcurrent::run(m_thread.get(), [=] { return store->load(service(), account); });
    const base::Result<std::optional<QString>> found = co_await loading;
    co_return found.value_or(std::nullopt);
}

QCoro::Task<void> TokenStore::deleteSecret(QString account)
{
    platform::SecretStore *const store = &m_store;
    const QFuture<base::Result<void>> removed =
        QtConcurrent::run(m_thread.get(), [=] { return store->remove(service(), account); });
    const base::Result<void> ignored = co_await removed;
    Q_UNUSED(ignored)
}

} // namespace velto::auth
