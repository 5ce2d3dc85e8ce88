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
