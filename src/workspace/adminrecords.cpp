// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/adminrecords.h"

namespace velto::workspace
{

using base::json::field;
using base::json::Fields;

Fields AdminTotals::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminTotals::users>("users"),
        field<&AdminTotals::workspaces>("workspaces"),
        field<&AdminTotals::memberships>("memberships"),
        field<&AdminTotals::workspacesWithVelto>("workspacesWithVelto"),
    };
    return fields;
}

Fields AdminTrend::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminTrend::usersLast7d>("usersLast7d"),
        field<&AdminTrend::usersLast30d>("usersLast30d"),
        field<&AdminTrend::workspacesLast7d>("workspacesLast7d"),
        field<&AdminTrend::workspacesLast30d>("workspacesLast30d"),
    };
    return fields;
}

Fields AdminRecentUser::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminRecentUser::id>("id"),
        field<&AdminRecentUser::email>("email"),
        field<&AdminRecentUser::displayName>("displayName"),
        field<&AdminRecentUser::createdAt>("createdAt"),
    };
    return fields;
}

Fields AdminRecentWorkspace::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminRecentWorkspace::id>("id"),
        field<&AdminRecentWorkspace::slug>("slug"),
        field<&AdminRecentWorkspace::name>("name"),
        field<&AdminRecentWorkspace::createdByEmail>("createdByEmail"),
        field<&AdminRecentWorkspace::memberCount>("memberCount"),
        field<&AdminRecentWorkspace::createdAt>("createdAt"),
    };
    return fields;
}

Fields AdminOverview::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminOverview::totals>("totals"),
        field<&AdminOverview::trend>("trend"),
        field<&AdminOverview::recentUsers>("recentUsers"),
        field<&AdminOverview::recentWorkspaces>("recentWorkspaces"),
    };
    return fields;
}

Fields AdminUser::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminUser::id>("id"),
        field<&AdminUser::email>("email"),
        field<&AdminUser::displayName>("displayName"),
        field<&AdminUser::workspaceCount>("workspaceCount"),
        field<&AdminUser::createdAt>("createdAt"),
        field<&AdminUser::updatedAt>("updatedAt"),
    };
    return fields;
}

Fields AdminUsersResponse::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminUsersResponse::users>("users"),
    };
    return fields;
}

Fields AdminWorkspace::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminWorkspace::id>("id"),
        field<&AdminWorkspace::slug>("slug"),
        field<&AdminWorkspace::name>("name"),
        field<&AdminWorkspace::veltoEmail>("veltoEmail"),
        field<&AdminWorkspace::createdByEmail>("createdByEmail"),
        field<&AdminWorkspace::memberCount>("memberCount"),
        field<&AdminWorkspace::createdAt>("createdAt"),
    };
    return fields;
}

Fields AdminWorkspacesResponse::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminWorkspacesResponse::workspaces>("workspaces"),
    };
    return fields;
}

Fields CatalogEntry::jsonFields()
{
    static constexpr std::array fields{
        field<&CatalogEntry::id>("id"),
        field<&CatalogEntry::version>("version"),
        field<&CatalogEntry::source>("source"),
        field<&CatalogEntry::name>("name"),
        field<&CatalogEntry::tagline>("tagline"),
        field<&CatalogEntry::whatItDoes>("whatItDoes"),
        field<&CatalogEntry::iconKey>("iconKey"),
        field<&CatalogEntry::accent>("accent"),
        field<&CatalogEntry::exampleQueries>("exampleQueries"),
    };
    return fields;
}

Fields AdminCatalogResponse::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminCatalogResponse::entries>("entries"),
    };
    return fields;
}

} // namespace velto::workspace
