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

using base::json::field;
using base::json::Fields;

int MarketplaceItem::agentCount() const
{
    return countOf(resources, &MarketplaceResources::agents);
}

int MarketplaceItem::skillCount() const
{
    return countOf(resources, &MarketplaceResources::skills);
}

Fields MarketplaceAgentResource::jsonFields()
{
    static constexpr std::array fields{
        field<&MarketplaceAgentResource::slug>("slug"),
        field<&MarketplaceAgentResource::description>("description"),
        field<&MarketplaceAgentResource::model>("model"),
        field<&MarketplaceAgentResource::maxTurns>("maxTurns"),
        field<&MarketplaceAgentResource::mcpServerNames>("mcpServerNames"),
        field<&MarketplaceAgentResource::tools>("tools"),
    };
    return fields;
}

Fields MarketplaceSkillResource::jsonFields()
{
    static constexpr std::array fields{
        field<&MarketplaceSkillResource::slug>("slug"),
        field<&MarketplaceSkillResource::description>("description"),
    };
    return fields;
}

Fields MarketplaceResources::jsonFields()
{
    static constexpr std::array fields{
        field<&MarketplaceResources::agents>("agents"),
        field<&MarketplaceResources::skills>("skills"),
    };
    return fields;
}

Fields MarketplaceInstalledStatus::jsonFields()
{
    static constexpr std::array fields{
        field<&MarketplaceInstalledStatus::catalogId>("catalogId"),
        field<&MarketplaceInstalledStatus::enabled>("enabled"),
        field<&MarketplaceInstalledStatus::installedAt>("installedAt"),
    };
    return fields;
}

Fields MarketplaceIntegrationState::jsonFields()
{
    static constexpr std::array fields{
        field<&MarketplaceIntegrationState::id>("id"),
        field<&MarketplaceIntegrationState::label>("label"),
        field<&MarketplaceIntegrationState::connectUrl>("connectUrl"),
        field<&MarketplaceIntegrationState::connected>("connected"),
    };
    return fields;
}

Fields MarketplaceItem::jsonFields()
{
    static constexpr std::array fields{
        field<&MarketplaceItem::id>("id"),
        field<&MarketplaceItem::version>("version"),
        field<&MarketplaceItem::source>("source"),
        field<&MarketplaceItem::name>("name"),
        field<&MarketplaceItem::tagline>("tagline"),
        field<&MarketplaceItem::whatItDoes>("whatItDoes"),
        field<&MarketplaceItem::iconKey>("iconKey"),
        field<&MarketplaceItem::accent>("accent"),
        field<&MarketplaceItem::exampleQueries>("exampleQueries"),
        field<&MarketplaceItem::resources>("resources"),
        field<&MarketplaceItem::installed>("installed"),
        field<&MarketplaceItem::integrations>("integrations"),
    };
    return fields;
}

Fields MarketplaceCatalog::jsonFields()
{
    static constexpr std::array fields{
        field<&MarketplaceCatalog::entries>("entries"),
    };
    return fields;
}

} // namespace velto::agent
