// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/company/people.h"

#include "local/http/reply.h"
#include "local/store/change.h"
#include "local/store/rows.h"

namespace velto::local
{

using nlohmann::json;

namespace
{

// Who has lost the workspace that they were in is in the first that they joined.
constexpr auto CallerQuery = R"(
    SELECT users.id, workspace_id, administrator
    FROM users LEFT JOIN memberships ON user_id = users.id
    WHERE users.id = ?
    ORDER BY workspace_id = current_workspace_id DESC, joined_at, workspace_id LIMIT 1)";

constexpr auto MembershipsQuery = R"(
    SELECT workspace_id, slug AS workspace_slug, name AS workspace_name, role, person_id,
        role = 'owner' AND 1 = (SELECT count(*) FROM memberships AS owners
            WHERE owners.workspace_id = workspaces.id AND owners.role = 'owner') AS "only_owner:bool"
    FROM memberships JOIN workspaces ON workspaces.id = workspace_id
    WHERE user_id = ? ORDER BY joined_at, workspace_id)";

json currentOf(const json &memberships, const std::string &workspaceId)
{
    for (const json &membership : memberships) {
        if (membership["workspace_id"] == workspaceId)
            return membership;
    }
    return nullptr;
}

} // namespace

People::People(Database &database, AuditLog &audit, const Integrations &integrations)
    : m_database(database)
    , m_audit(audit)
    , m_integrations(integrations)
{}

std::optional<Person> People::person(const std::string &id) const
{
    const auto guard = m_database.lock();
    Statement query(m_database,
                    "SELECT id, coalesce(display_name, email), email FROM users WHERE id = ?");
    if (!query.bind(id).step())
        return std::nullopt;
    return Person{query.text(0), query.text(1), query.text(2)};
}

std::optional<Caller> People::callerOf(const std::string &userId) const
{
    const auto guard = m_database.lock();
    Statement query(m_database, CallerQuery);
    if (!query.bind(userId).step())
        return std::nullopt;
    return Caller{query.text(0), query.text(1), query.integer(2) != 0};
}

JsonAnswer People::me(const Call &call)
{
    const auto guard = m_database.lock();
    Statement query(m_database, R"(
        SELECT display_name AS name, email, image, pending_agreements AS "agreements:json"
        FROM users WHERE id = ?)");
    json user = rowOf(query.bind(call.caller.userId));
    Statement workspaces(m_database, R"(
        SELECT id, slug, name, role FROM memberships JOIN workspaces ON id = workspace_id
        WHERE user_id = ? ORDER BY joined_at, id)");
    Statement current(m_database, "SELECT person_id AS personId, workspace_id AS workspaceId"
                                  " FROM memberships WHERE user_id = ? AND workspace_id = ?");
    json me = rowOf(current.bind(call.caller.userId).bind(call.caller.workspaceId));
    me["userId"] = call.caller.userId;
    me["workspaces"] = rowsOf(workspaces.bind(call.caller.userId));
    // Of anyone else the role in the workspace tells what they may do.
    if (call.caller.administrator)
        me["isAdmin"] = true;
    me["pendingAgreements"] = user["agreements"];
    user.erase("agreements");
    me["user"] = std::move(user);
    return me;
}

JsonAnswer People::profile(const Call &call)
{
    const auto guard = m_database.lock();
    Statement user(m_database, R"(
        SELECT id, email, display_name, created_at AS "created_at:time",
            updated_at AS "updated_at:time" FROM users WHERE id = ?)");
    Statement workspace(m_database, "SELECT id, slug, name FROM workspaces WHERE id = ?");
    Statement memberships(m_database, MembershipsQuery);
    const std::string &current = call.caller.workspaceId;
    json profile{
        {"user", rowOf(user.bind(call.caller.userId))},
        {"memberships", rowsOf(memberships.bind(call.caller.userId))},
        {"current_workspace", rowOf(workspace.bind(current))},
        {"integrations", {{"google_connected", m_integrations.isConnected(current, "google")}}}};
    profile["current_membership"] = currentOf(profile["memberships"], current);
    return profile;
}

JsonAnswer People::switchWorkspace(const Call &call)
{
    const json body = parseBody(call.body);
    const std::string *id = textMember(body, "workspace_id");
    if (id == nullptr)
        return badRequest("The body must hold a workspace_id.");
    return change(m_database, [&]() -> JsonAnswer {
        Statement query(m_database, "SELECT 1 FROM memberships"
                                    " WHERE user_id = ? AND workspace_id = ?");
        if (!query.bind(call.caller.userId).bind(*id).step())
            return unknown("such workspace");
        Statement(m_database, "UPDATE users SET current_workspace_id = ? WHERE id = ?")
            .bind(*id)
            .bind(call.caller.userId)
            .done();
        if (*id != call.caller.workspaceId)
            m_audit.record(call.caller, {*id, "workspace.switched", "workspace", *id});
        return json{{"workspace_id", *id}};
    });
}

} // namespace velto::local
