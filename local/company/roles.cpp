// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/company/roles.h"

#include <array>

namespace velto::local
{

namespace
{

constexpr std::array<std::string_view, 3> Names{"member", "admin", "owner"};

OrRefusal<Membership> readMembership(Statement &query)
{
    if (!query.step())
        return unknown("such workspace");
    return Membership{query.text(0), query.text(1), roleFrom(query.text(2)).value_or(Role::Member)};
}

OrRefusal<Membership> withLeast(OrRefusal<Membership> membership, Role least, std::string_view deed)
{
    if (!membership || membership->role >= least)
        return membership;
    return forbidden(std::string("Only ")
                         .append(least == Role::Owner ? "owners" : "owners and admins")
                         .append(" may ")
                         .append(deed)
                         .append("."));
}

} // namespace

std::string_view roleName(Role role)
{
    return Names.at(static_cast<std::size_t>(role));
}

std::optional<Role> roleFrom(std::string_view name)
{
    for (const Role role : {Role::Member, Role::Admin, Role::Owner}) {
        if (roleName(role) == name)
            return role;
    }
    return std::nullopt;
}

OrRefusal<Membership> membershipIn(Database &database, const Caller &caller, std::string_view slug)
{
    Statement query(database, "SELECT id, name, role FROM memberships JOIN workspaces"
                              " ON id = workspace_id WHERE user_id = ? AND slug = ?");
    return readMembership(query.bind(caller.userId).bind(slug));
}

OrRefusal<Membership> membershipIn(Database &database, const Caller &caller, std::string_view slug,
                                   Role least, std::string_view deed)
{
    return withLeast(membershipIn(database, caller, slug), least, deed);
}

OrRefusal<Membership> managedWorkspace(Database &database, const Caller &caller,
                                       std::string_view deed)
{
    Statement query(database, "SELECT id, name, role FROM memberships JOIN workspaces"
                              " ON id = workspace_id WHERE user_id = ? AND id = ?");
    query.bind(caller.userId).bind(caller.workspaceId);
    return withLeast(readMembership(query), Role::Admin, deed);
}

} // namespace velto::local
