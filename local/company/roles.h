// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/http/refusal.h"
#include "local/http/route.h"
#include "local/store/database.h"

#include <optional>
#include <string>
#include <string_view>

namespace velto::local
{

/// What a member may do in a workspace. Each may do what those before it may.
enum class Role { Member, Admin, Owner };

[[nodiscard]] std::string_view roleName(Role role);
[[nodiscard]] std::optional<Role> roleFrom(std::string_view name);

/// A workspace as one of its members has it.
struct Membership
{
    std::string workspaceId;
    std::string workspaceName;
    Role role = Role::Member;
};

/// The caller's membership in the workspace with this slug. A workspace that is not the caller's
/// is refused like one that doesn't exist. Wants the database's lock, as those below do.
[[nodiscard]] OrRefusal<Membership> membershipIn(Database &database, const Caller &caller,
                                                 std::string_view slug);
/// The same for what `least` may do; `deed` completes “Only … may”.
[[nodiscard]] OrRefusal<Membership> membershipIn(Database &database, const Caller &caller,
                                                 std::string_view slug, Role least,
                                                 std::string_view deed);
/// Whether the caller may change what the members of their current workspace share.
[[nodiscard]] OrRefusal<Membership> managedWorkspace(Database &database, const Caller &caller,
                                                     std::string_view deed);

} // namespace velto::local
