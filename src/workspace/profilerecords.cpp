// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/profilerecords.h"

#include "workspace/roles.h"

namespace velto::workspace
{

QString ProfileMembership::subtitle() const
{
    return workspaceSlug + QStringLiteral(" \u00b7 ") + capitalized(role);
}

QString UserProfile::name() const
{
    return user ? user->displayName.value_or(user->email) : QStringLiteral("\u2014");
}

QString UserProfile::email() const
{
    return user ? user->email : QString();
}

QString UserProfile::currentRole() const
{
    return currentMembership ? capitalized(currentMembership->role) : QString();
}

bool UserProfile::isCurrent(const ProfileMembership &membership) const
{
    return currentWorkspace && currentWorkspace->id == membership.workspaceId;
}

} // namespace velto::workspace
