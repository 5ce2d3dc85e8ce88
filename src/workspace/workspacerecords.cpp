// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/workspacerecords.h"

namespace velto::workspace
{

using base::json::field;
using base::json::Fields;

Fields WorkspaceInfo::jsonFields()
{
    static constexpr std::array fields{
        field<&WorkspaceInfo::id>("id"),
        field<&WorkspaceInfo::slug>("slug"),
        field<&WorkspaceInfo::name>("name"),
        field<&WorkspaceInfo::veltoEmail>("veltoEmail"),
        field<&WorkspaceInfo::veltoDisplayName>("veltoDisplayName"),
        field<&WorkspaceInfo::createdByUserId>("createdByUserId"),
        field<&WorkspaceInfo::createdAt>("createdAt"),
        field<&WorkspaceInfo::updatedAt>("updatedAt"),
    };
    return fields;
}

Fields WorkspaceMembership::jsonFields()
{
    static constexpr std::array fields{
        field<&WorkspaceMembership::workspaceId>("workspaceId"),
        field<&WorkspaceMembership::userId>("userId"),
        field<&WorkspaceMembership::personId>("personId"),
        field<&WorkspaceMembership::role>("role"),
        field<&WorkspaceMembership::joinedAt>("joinedAt"),
    };
    return fields;
}

Fields WorkspaceDetail::jsonFields()
{
    static constexpr std::array fields{
        field<&WorkspaceDetail::workspace>("workspace"),
        field<&WorkspaceDetail::membership>("membership"),
        field<&WorkspaceDetail::memberCount>("memberCount"),
    };
    return fields;
}

Fields WorkspaceMember::jsonFields()
{
    static constexpr std::array fields{
        field<&WorkspaceMember::userId>("userId"),
        field<&WorkspaceMember::displayName>("displayName"),
        field<&WorkspaceMember::email>("email"),
        field<&WorkspaceMember::role>("role"),
    };
    return fields;
}

Fields WorkspaceMembersResponse::jsonFields()
{
    static constexpr std::array fields{
        field<&WorkspaceMembersResponse::members>("members"),
    };
    return fields;
}

Fields WorkspaceInvite::jsonFields()
{
    static constexpr std::array fields{
        field<&WorkspaceInvite::id>("id"),
        field<&WorkspaceInvite::email>("email"),
        field<&WorkspaceInvite::role>("role"),
        field<&WorkspaceInvite::expiresAt>("expiresAt"),
    };
    return fields;
}

Fields WorkspaceInvitesResponse::jsonFields()
{
    static constexpr std::array fields{
        field<&WorkspaceInvitesResponse::invites>("invites"),
    };
    return fields;
}

Fields AuditRow::jsonFields()
{
    static constexpr std::array fields{
        field<&AuditRow::id>("id"),
        field<&AuditRow::action>("action"),
        field<&AuditRow::actorEmail>("actorEmail"),
        field<&AuditRow::targetType>("targetType"),
        field<&AuditRow::targetId>("targetId"),
        field<&AuditRow::metadata>("metadata"),
        field<&AuditRow::createdAt>("createdAt"),
    };
    return fields;
}

Fields AuditLogResponse::jsonFields()
{
    static constexpr std::array fields{
        field<&AuditLogResponse::entries>("entries"),
    };
    return fields;
}

Fields CreateInviteRequest::jsonFields()
{
    static constexpr std::array fields{
        field<&CreateInviteRequest::email>("email"),
        field<&CreateInviteRequest::role>("role"),
    };
    return fields;
}

Fields CreateInviteResult::Invited::jsonFields()
{
    static constexpr std::array fields{
        field<&Invited::email>("email"),
        field<&Invited::inviteId>("inviteId"),
    };
    return fields;
}

Fields CreateInviteResult::Failed::jsonFields()
{
    static constexpr std::array fields{
        field<&Failed::email>("email"),
        field<&Failed::reason>("reason"),
    };
    return fields;
}

Fields CreateInviteResult::jsonFields()
{
    static constexpr std::array fields{
        field<&CreateInviteResult::invited>("invited"),
        field<&CreateInviteResult::failed>("failed"),
    };
    return fields;
}

} // namespace velto::workspace
