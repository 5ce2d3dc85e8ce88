// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/company/roles.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace velto::local::seed
{

// Times are days before the service's first start, so that the company is never out of date.

struct User
{
    std::string_view id;
    std::string_view email;
    /// Empty for somebody who has never given one.
    std::string_view displayName;
    std::int64_t daysAgo = 0;
    bool administrator = false;
    /// JSON: agreements that wait for the user's word.
    std::string_view pendingAgreements = "[]";
};

struct Workspace
{
    std::string_view id;
    std::string_view slug;
    std::string_view name;
    /// Empty where the agent has no mailbox.
    std::string_view veltoEmail;
    std::string_view model;
    std::string_view createdBy;
    std::int64_t daysAgo = 0;
};

struct Member
{
    std::string_view workspaceId;
    std::string_view userId;
    Role role = Role::Member;
    std::int64_t daysAgo = 0;
};

struct Invite
{
    std::string_view id;
    std::string_view workspaceId;
    std::string_view email;
    Role role = Role::Member;
    std::string_view createdBy;
    std::int64_t daysAgo = 0;
};

[[nodiscard]] const std::vector<User> &users();
[[nodiscard]] const std::vector<Workspace> &workspaces();
[[nodiscard]] const std::vector<Member> &members();
[[nodiscard]] const std::vector<Invite> &invites();

/// The user who has this role in the first workspace.
[[nodiscard]] std::string_view userWithRole(Role role);

} // namespace velto::local::seed
