// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/library/marketplace.h"

#include "local/company/roles.h"
#include "local/http/reply.h"
#include "local/store/change.h"
#include "local/store/rows.h"

namespace velto::local
{

using nlohmann::json;

namespace
{

constexpr auto CatalogQuery = R"(
    SELECT id, version, source, name, tagline, what_it_does, icon_key, accent,
        example_queries AS "example_queries:json", resources AS "resources:json",
        integrations AS "integrations:json", enabled AS "enabled:bool",
        installed_at AS "installed_at:time"
    FROM catalog LEFT JOIN installed_bundles ON catalog_id = id AND workspace_id = ?
    ORDER BY position, id)";

constexpr auto AddSkills = R"(
    INSERT OR IGNORE INTO skills (workspace_id, id, bundle_id, name, description, updated_at)
    SELECT ?1, catalog.id || '.' || (value ->> 'slug'), catalog.id,
        upper(substr(value ->> 'slug', 1, 1)) || replace(substr(value ->> 'slug', 2), '-', ' '),
        value ->> 'description', ?3
    FROM catalog, json_each(resources, '$.skills') WHERE catalog.id = ?2)";

constexpr auto AddSubagents = R"(
    INSERT OR IGNORE INTO subagents (workspace_id, id, bundle_id, name, description, source, model,
        max_turns, mcp_server_names, tools, updated_at)
    SELECT ?1, catalog.id || '.' || (value ->> 'slug'), catalog.id,
        upper(substr(value ->> 'slug', 1, 1)) || replace(substr(value ->> 'slug', 2), '-', ' '),
        value ->> 'description', catalog.name, value ->> 'model', value ->> 'max_turns',
        value -> 'mcp_server_names', value -> 'tools', ?3
    FROM catalog, json_each(resources, '$.agents') WHERE catalog.id = ?2)";

json installedStatus(const json &row)
{
    return {{"catalog_id", row["id"]},
            {"enabled", row["enabled"]},
            {"installed_at", row["installed_at"]}};
}

} // namespace

bool installBundle(Database &database, const std::string &workspaceId, const std::string &catalogId,
                   std::int64_t now)
{
    Statement install(database, "INSERT OR IGNORE INTO installed_bundles"
                                " (workspace_id, catalog_id, installed_at) VALUES (?, ?, ?)");
    if (!install.bind(workspaceId).bind(catalogId).bind(now).change())
        return false;
    for (const char *sql : {AddSkills, AddSubagents})
        Statement(database, sql).bind(workspaceId).bind(catalogId).bind(now).done();
    return true;
}

Marketplace::Marketplace(Database &database, Clock clock, AuditLog &audit,
                         const Integrations &integrations)
    : m_database(database)
    , m_clock(std::move(clock))
    , m_audit(audit)
    , m_integrations(integrations)
{}

JsonAnswer Marketplace::catalog(const Call &call)
{
    const std::string &workspaceId = call.caller.workspaceId;
    const auto guard = m_database.lock();
    Statement query(m_database, CatalogQuery);
    json entries = json::array();
    for (json &row : rowsOf(query.bind(workspaceId))) {
        json installed = row["installed_at"].is_null() ? json() : installedStatus(row);
        row.erase("enabled");
        row.erase("installed_at");
        row["installed"] = std::move(installed);
        for (json &integration : row["integrations"]) {
            const Provider *provider = findProvider(integration.get<std::string>());
            if (provider == nullptr)
                continue;
            integration = {{"id", provider->id},
                           {"label", provider->label},
                           {"connect_url", connectAddress(provider->id)},
                           {"connected", m_integrations.isConnected(workspaceId, provider->id)}};
        }
        entries.push_back(std::move(row));
    }
    return json{{"entries", entries}};
}

JsonAnswer Marketplace::install(const Call &call)
{
    const json body = parseBody(call.body);
    const std::string *id = textMember(body, "catalogId");
    if (id == nullptr)
        return badRequest("The body must hold a catalogId.");
    return change(m_database, [&]() -> JsonAnswer {
        const auto member = managedWorkspace(m_database, call.caller, "install a bundle");
        if (!member)
            return tl::unexpected(member.error());
        Statement query(m_database, "SELECT name, version FROM catalog WHERE id = ?");
        const json bundle = rowOf(query.bind(*id));
        if (bundle.is_null())
            return unknown("such bundle");
        if (!installBundle(m_database, member->workspaceId, *id, m_clock()))
            return conflict("This bundle is installed already.");
        m_audit.record(call.caller,
                       {member->workspaceId, "bundle.installed", "bundle", *id, bundle});
        return json{{"catalog_id", *id}, {"enabled", true}};
    });
}

JsonAnswer Marketplace::uninstall(const Call &call)
{
    return change(m_database, [&]() -> JsonAnswer {
        const auto member = managedWorkspace(m_database, call.caller, "uninstall a bundle");
        if (!member)
            return tl::unexpected(member.error());
        Statement drop(m_database, "DELETE FROM installed_bundles"
                                   " WHERE workspace_id = ? AND catalog_id = ?");
        if (!drop.bind(member->workspaceId).bind(call.captures[0]).change())
            return unknown("such bundle installed");
        m_audit.record(call.caller,
                       {member->workspaceId, "bundle.uninstalled", "bundle", call.captures[0]});
        return nullptr;
    });
}

} // namespace velto::local
