// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/marketplacerecords.h"

namespace velto::agent
{
namespace
{

template<typename T>
int countOf(const std::optional<MarketplaceResources> &resources,
            base::Optional<QList<T>> MarketplaceResources::*kind)
{
    return resources && (*resources).*kind ? static_cast<int>(((*resources).*kind)->size()) : 0;
}

} // namespace

int MarketplaceItem::agentCount() const
{
    return countOf(resources, &MarketplaceResources::agents);
}

int MarketplaceItem::skillCount() const
{
    return countOf(resources, &MarketplaceResources::skills);
}

} // namespace velto::agent
