// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/profilerecords.h"

#include "workspace/roles.h"

namespace velto::workspace
{

using base::json::field;
using base::json::Fields;

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

Fields ProfileUser::jsonFields()
{
    static constexpr std::array fields{
        field<&ProfileUser::id>("id"),
        field<&ProfileUser::email>("email"),
        field<&ProfileUser::displayName>("displayName"),
        field<&ProfileUser::createdAt>("createdAt"),
        field<&ProfileUser::updatedAt>("updatedAt"),
    };
    return fields;
}

Fields ProfileMembership::jsonFields()
{
    static constexpr std::array fields{
        field<&ProfileMembership::workspaceId>("workspaceId"),
        field<&ProfileMembership::workspaceSlug>("workspaceSlug"),
        field<&ProfileMembership::workspaceName>("workspaceName"),
        field<&ProfileMembership::role>("role"),
        field<&ProfileMembership::personId>("personId"),
        field<&ProfileMembership::onlyOwner>("onlyOwner"),
    };
    return fields;
}

Fields ProfileWorkspace::jsonFields()
{
    static constexpr std::array fields{
        field<&ProfileWorkspace::id>("id"),
        field<&ProfileWorkspace::slug>("slug"),
        field<&ProfileWorkspace::name>("name"),
    };
    return fields;
}

Fields ProfileIntegrations::jsonFields()
{
    static constexpr std::array fields{
        field<&ProfileIntegrations::googleConnected>("googleConnected"),
    };
    return fields;
}

Fields UserProfile::jsonFields()
{
    static constexpr std::array fields{
        field<&UserProfile::user>("user"),
        field<&UserProfile::memberships>("memberships"),
        field<&UserProfile::currentWorkspace>("currentWorkspace"),
        field<&UserProfile::currentMembership>("currentMembership"),
        field<&UserProfile::integrations>("integrations"),
    };
    return fields;
}

} // namespace velto::workspace
