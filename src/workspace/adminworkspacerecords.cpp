// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/adminworkspacerecords.h"

namespace velto::workspace
{

using base::json::field;
using base::json::Fields;

Fields AdminWorkspaceMemberRow::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminWorkspaceMemberRow::userId>("userId"),
        field<&AdminWorkspaceMemberRow::email>("email"),
        field<&AdminWorkspaceMemberRow::displayName>("displayName"),
        field<&AdminWorkspaceMemberRow::role>("role"),
        field<&AdminWorkspaceMemberRow::joinedAt>("joinedAt"),
    };
    return fields;
}

Fields AdminUsageSummary::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminUsageSummary::totalInput>("totalInput"),
        field<&AdminUsageSummary::totalOutput>("totalOutput"),
        field<&AdminUsageSummary::totalCacheCreation>("totalCacheCreation"),
        field<&AdminUsageSummary::totalCacheRead>("totalCacheRead"),
        field<&AdminUsageSummary::totalCalls>("totalCalls"),
        field<&AdminUsageSummary::totalCostUsd>("totalCostUsd"),
    };
    return fields;
}

Fields AdminUsageBySource::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminUsageBySource::source>("source"),
        field<&AdminUsageBySource::model>("model"),
        field<&AdminUsageBySource::inputTokens>("inputTokens"),
        field<&AdminUsageBySource::outputTokens>("outputTokens"),
        field<&AdminUsageBySource::cacheCreationTokens>("cacheCreationTokens"),
        field<&AdminUsageBySource::cacheReadTokens>("cacheReadTokens"),
        field<&AdminUsageBySource::costUsd>("costUsd"),
        field<&AdminUsageBySource::calls>("calls"),
    };
    return fields;
}

Fields AdminWorkspaceDetail::jsonFields()
{
    static constexpr std::array fields{
        field<&AdminWorkspaceDetail::workspace>("workspace"),
        field<&AdminWorkspaceDetail::members>("members"),
        field<&AdminWorkspaceDetail::usageSummary>("usageSummary"),
        field<&AdminWorkspaceDetail::usageBySource>("usageBySource"),
        field<&AdminWorkspaceDetail::userMessages>("userMessages"),
        field<&AdminWorkspaceDetail::cacheSavingsUsd>("cacheSavingsUsd"),
    };
    return fields;
}

} // namespace velto::workspace
