// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/library/library.h"

#include "local/company/roles.h"
#include "local/http/reply.h"
#include "local/store/change.h"
#include "local/store/rows.h"

namespace velto::local
{

using nlohmann::json;

namespace
{

constexpr auto SkillsQuery = R"(
    SELECT id, name, description, enabled AS "enabled:bool", updated_at AS "updated_at:time"
    FROM skills WHERE workspace_id = ? ORDER BY name, id)";

constexpr auto SubagentsQuery = R"(
    SELECT id, name, description, enabled AS "enabled:bool", source, model, max_turns,
        mcp_server_names AS "mcp_server_names:json", tools AS "tools:json",
        updated_at AS "updated_at:time"
    FROM subagents WHERE workspace_id = ? ORDER BY name, id)";

} // namespace

Library::Library(Kind kind, Database &database, Clock clock, AuditLog &audit)
    : m_kind(kind)
    , m_database(database)
    , m_clock(std::move(clock))
    , m_audit(audit)
{}

std::string_view Library::noun() const
{
    return m_kind == Kind::Skills ? "skill" : "subagent";
}

std::string Library::table() const
{
    return std::string(noun()) + "s";
}

JsonAnswer Library::list(const Call &call)
{
    const auto guard = m_database.lock();
    Statement query(m_database, m_kind == Kind::Skills ? SkillsQuery : SubagentsQuery);
    return rowsOf(query.bind(call.caller.workspaceId));
}

JsonAnswer Library::setEnabled(const Call &call)
{
    const json body = parseBody(call.body);
    if (!body.is_object() || !body.contains("enabled") || !body["enabled"].is_boolean())
        return badRequest("The body must hold enabled, true or false.");
    const bool enabled = body["enabled"];
    return change(m_database, [&]() -> JsonAnswer {
        const auto member = managedWorkspace(m_database, call.caller, "change the library");
        if (!member)
            return tl::unexpected(member.error());
        const std::string sql =
            "UPDATE " + table() +
            " SET enabled = ?, updated_at = ? WHERE workspace_id = ? AND id = ?";
        Statement set(m_database, sql.c_str());
        set.bind(std::int64_t{enabled}).bind(m_clock()).bind(member->workspaceId);
        if (!set.bind(call.captures[0]).change())
            return unknown("such " + std::string(noun()));
        m_audit.record(call.caller, {member->workspaceId,
                                     std::string(noun()) + (enabled ? ".enabled" : ".disabled"),
                                     noun(), call.captures[0]});
        return json{{"id", call.captures[0]}, {"enabled", enabled}};
    });
}

JsonAnswer Library::remove(const Call &call)
{
    return change(m_database, [&]() -> JsonAnswer {
        const auto member = managedWorkspace(m_database, call.caller, "change the library");
        if (!member)
            return tl::unexpected(member.error());
        const std::string sql =
            "DELETE FROM " + table() + " WHERE workspace_id = ? AND id = ? RETURNING name";
        Statement drop(m_database, sql.c_str());
        const json gone = rowOf(drop.bind(member->workspaceId).bind(call.captures[0]));
        if (gone.is_null())
            return unknown("such " + std::string(noun()));
        m_audit.record(call.caller, {member->workspaceId, std::string(noun()) + ".deleted", noun(),
                                     call.captures[0], gone});
        return nullptr;
    });
}

} // namespace velto::local
