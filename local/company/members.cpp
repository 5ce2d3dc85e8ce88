// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/company/members.h"

#include "local/http/reply.h"
#include "local/store/change.h"
#include "local/store/rows.h"

namespace velto::local
{

using nlohmann::json;

/// The member whom a change is about.
struct Members::Target
{
    std::string userId;
    std::string email;
    Role role = Role::Member;
    bool lastOwner = false;
};

Members::Members(Database &database, AuditLog &audit)
    : m_database(database)
    , m_audit(audit)
{}

JsonAnswer Members::list(const Call &call)
{
    const auto guard = m_database.lock();
    const auto member = membershipIn(m_database, call.caller, call.captures[0]);
    if (!member)
        return tl::unexpected(member.error());
    Statement query(m_database, R"(
        SELECT id AS user_id, coalesce(display_name, email) AS display_name, email, role
        FROM memberships JOIN users ON id = user_id
        WHERE workspace_id = ? ORDER BY joined_at, id)");
    return json{{"members", rowsOf(query.bind(member->workspaceId))}};
}

OrRefusal<Members::Target> Members::target(const Call &call, const Membership &actor)
{
    Statement query(m_database, R"(
        SELECT user_id, email, role, (SELECT count(*) FROM memberships AS owners
            WHERE owners.workspace_id = ?1 AND owners.role = 'owner')
        FROM memberships JOIN users ON id = user_id WHERE workspace_id = ?1 AND user_id = ?2)");
    if (!query.bind(actor.workspaceId).bind(call.captures[1]).step())
        return unknown("such member");
    const Role role = roleFrom(query.text(2)).value_or(Role::Member);
    if (role == Role::Owner && actor.role != Role::Owner)
        return forbidden("Only owners may change or remove an owner.");
    return Target{query.text(0), query.text(1), role, role == Role::Owner && query.integer(3) == 1};
}

JsonAnswer Members::setRole(const Call &call)
{
    const json body = parseBody(call.body);
    const std::string *name = textMember(body, "role");
    const auto role = name != nullptr ? roleFrom(*name) : std::nullopt;
    if (!role)
        return badRequest("The body must hold a role: member, admin or owner.");
    return change(m_database, [&]() -> JsonAnswer {
        const auto actor = membershipIn(m_database, call.caller, call.captures[0], Role::Admin,
                                        "change the role of a member");
        if (!actor)
            return tl::unexpected(actor.error());
        const auto member = target(call, *actor);
        if (!member)
            return tl::unexpected(member.error());
        if (*role == Role::Owner && actor->role != Role::Owner)
            return forbidden("Only owners may make somebody an owner.");
        if (*role == member->role)
            return nullptr;
        if (member->lastOwner)
            return conflict("The last owner of a workspace can't become anything else.");
        Statement(m_database, "UPDATE memberships SET role = ?"
                              " WHERE workspace_id = ? AND user_id = ?")
            .bind(*name)
            .bind(actor->workspaceId)
            .bind(member->userId)
            .done();
        m_audit.record(
            call.caller,
            {actor->workspaceId,
             "member.role_changed",
             "user",
             member->userId,
             {{"email", member->email}, {"from", roleName(member->role)}, {"to", *name}}});
        return nullptr;
    });
}

JsonAnswer Members::remove(const Call &call)
{
    return change(m_database, [&]() -> JsonAnswer {
        const bool leaves = call.captures[1] == call.caller.userId;
        const auto actor =
            membershipIn(m_database, call.caller, call.captures[0],
                         leaves ? Role::Member : Role::Admin, "remove another member");
        if (!actor)
            return tl::unexpected(actor.error());
        const auto member = target(call, *actor);
        if (!member)
            return tl::unexpected(member.error());
        if (member->lastOwner)
            return conflict("The last owner of a workspace can't be removed.");
        Statement(m_database, "DELETE FROM memberships WHERE workspace_id = ? AND user_id = ?")
            .bind(actor->workspaceId)
            .bind(member->userId)
            .done();
        m_audit.record(call.caller, {actor->workspaceId,
                                     leaves ? "member.left" : "member.removed",
                                     "user",
                                     member->userId,
                                     {{"email", member->email}, {"role", roleName(member->role)}}});
        return nullptr;
    });
}

} // namespace velto::local
