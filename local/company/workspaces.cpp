// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/company/workspaces.h"

#include "local/company/roles.h"
#include "local/store/change.h"
#include "local/store/rows.h"

namespace velto::local
{

using nlohmann::json;

json workspaceRecord(Database &database, std::string_view id)
{
    Statement query(database, R"(
        SELECT id, slug, name, velto_email, velto_display_name, created_by AS created_by_user_id,
            created_at AS "created_at:time", updated_at AS "updated_at:time"
        FROM workspaces WHERE id = ?)");
    return rowOf(query.bind(id));
}

Workspaces::Workspaces(Database &database)
    : m_database(database)
{}

JsonAnswer Workspaces::detail(const Call &call)
{
    const auto guard = m_database.lock();
    const auto member = membershipIn(m_database, call.caller, call.captures[0]);
    if (!member)
        return tl::unexpected(member.error());
    const std::string &id = member->workspaceId;
    Statement own(m_database, R"(
        SELECT workspace_id, user_id, person_id, role, joined_at AS "joined_at:time"
        FROM memberships WHERE user_id = ? AND workspace_id = ?)");
    Statement count(m_database, "SELECT count(*) AS member_count FROM memberships"
                                " WHERE workspace_id = ?");
    json detail = rowOf(count.bind(id));
    detail["workspace"] = workspaceRecord(m_database, id);
    detail["membership"] = rowOf(own.bind(call.caller.userId).bind(id));
    return detail;
}

JsonAnswer Workspaces::remove(const Call &call)
{
    return change(m_database, [&]() -> JsonAnswer {
        const auto member = membershipIn(m_database, call.caller, call.captures[0], Role::Owner,
                                         "delete a workspace");
        if (!member)
            return tl::unexpected(member.error());
        for (const char *sql : {"DELETE FROM conversations WHERE workspace_id = ?",
                                "DELETE FROM workspaces WHERE id = ?"})
            Statement(m_database, sql).bind(member->workspaceId).done();
        return nullptr;
    });
}

} // namespace velto::local
