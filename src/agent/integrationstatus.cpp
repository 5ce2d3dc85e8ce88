// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/integrationstatus.h"

namespace velto::agent
{

using base::json::field;
using base::json::Fields;

Fields IntegrationStatus::jsonFields()
{
    static constexpr std::array fields{
        field<&IntegrationStatus::connected>("connected"),
        field<&IntegrationStatus::veltoEmail>("veltoEmail"),
        field<&IntegrationStatus::expiresAt>("expiresAt"),
        field<&IntegrationStatus::expired>("expired"),
        field<&IntegrationStatus::teamId>("teamId"),
        field<&IntegrationStatus::teamName>("teamName"),
        field<&IntegrationStatus::workspaceId>("workspaceId"),
        field<&IntegrationStatus::workspaceName>("workspaceName"),
        field<&IntegrationStatus::installedAt>("installedAt"),
        field<&IntegrationStatus::organizationId>("organizationId"),
        field<&IntegrationStatus::accountLogin>("accountLogin"),
        field<&IntegrationStatus::accountType>("accountType"),
        field<&IntegrationStatus::appSlug>("appSlug"),
        field<&IntegrationStatus::accountName>("accountName"),
        field<&IntegrationStatus::hubDomain>("hubDomain"),
        field<&IntegrationStatus::botUserId>("botUserId"),
        field<&IntegrationStatus::appId>("appId"),
        field<&IntegrationStatus::username>("username"),
    };
    return fields;
}

} // namespace velto::agent
