// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/featurestore.h"

namespace velto::service
{

FeatureStore::FeatureStore(APIClient &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
{}

void FeatureStore::reset()
{
    setLoadError({});
    setActionError({});
}

QCoro::Task<void> FeatureStore::load(Work work)
{
    const QPointer<FeatureStore> self(this);
    setLoading(true);
    setLoadError({});
    const base::Result<void> done = co_await work();
    if (!self)
        co_return;
    if (!done)
        setLoadError(base::description(done.error()));
    setLoading(false);
}

QCoro::Task<bool> FeatureStore::change(Work work)
{
    const QPointer<FeatureStore> self(this);
    setActionError({});
    const base::Result<void> done = co_await work();
    if (!done && self)
        setActionError(base::description(done.error()));
    co_return done.has_value();
}

void FeatureStore::setLoading(bool loading)
{
    if (std::exchange(m_isLoading, loading) != loading)
        emit isLoadingChanged();
}

void FeatureStore::setLoadError(std::optional<QString> error)
{
    if (std::exchange(m_loadError, error) != error)
        emit loadErrorChanged();
}

void FeatureStore::setActionError(std::optional<QString> error)
{
    if (std::exchange(m_actionError, error) != error)
        emit actionErrorChanged();
}

} // namespace velto::service
