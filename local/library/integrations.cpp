// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/library/integrations.h"

#include "local/company/roles.h"
#include "local/store/change.h"
#include "local/store/rows.h"

#include <algorithm>

namespace velto::local
{

using nlohmann::json;

const Provider *findProvider(std::string_view id)
{
    const auto *found = std::find_if(Providers.begin(), Providers.end(),
                                     [id](const Provider &one) { return one.id == id; });
    return found == Providers.end() ? nullptr : found;
}

std::string connectAddress(std::string_view provider)
{
    return "https://velto.example.com/connect/" + std::string(provider);
}

Integrations::Integrations(Database &database, AuditLog &audit)
    : m_database(database)
    , m_audit(audit)
{}

bool Integrations::isConnected(const std::string &workspaceId, std::string_view provider) const
{
    return Statement(m_database, "SELECT 1 FROM connections"
                                 " WHERE workspace_id = ? AND provider = ? AND connected")
        .bind(workspaceId)
        .bind(provider)
        .step();
}

JsonAnswer Integrations::status(const Call &call)
{
    if (findProvider(call.captures[0]) == nullptr)
        return unknown("such integration");
    const auto guard = m_database.lock();
    Statement query(m_database, R"(
        SELECT details AS "details:json", connected AS "connected:bool" FROM connections
        WHERE workspace_id = ? AND provider = ?)");
    const json row = rowOf(query.bind(call.caller.workspaceId).bind(call.captures[0]));
    if (row.is_null())
        return json{{"connected", false}};
    json status = row["details"];
    status["connected"] = row["connected"];
    return status;
}

JsonAnswer Integrations::disconnect(const Call &call)
{
    const Provider *provider = findProvider(call.captures[0]);
    if (provider == nullptr)
        return unknown("such integration");
    return change(m_database, [&]() -> JsonAnswer {
        const auto member = managedWorkspace(m_database, call.caller, "disconnect an integration");
        if (!member)
            return tl::unexpected(member.error());
        Statement drop(m_database, "DELETE FROM connections"
                                   " WHERE workspace_id = ? AND provider = ? AND connected");
        if (!drop.bind(member->workspaceId).bind(provider->id).change())
            return unknown("connection to " + std::string(provider->label));
        m_audit.record(call.caller, {member->workspaceId, "integration.disconnected", "integration",
                                     provider->id});
        return nullptr;
    });
}

} // namespace velto::local
