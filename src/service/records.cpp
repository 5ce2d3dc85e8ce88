// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/records.h"

namespace velto::service
{

using base::json::field;
using base::json::Fields;

Fields Workspace::jsonFields()
{
    static constexpr std::array fields{
        field<&Workspace::id>("id"),
        field<&Workspace::slug>("slug"),
        field<&Workspace::name>("name"),
        field<&Workspace::role>("role"),
    };
    return fields;
}

Fields UserInfo::jsonFields()
{
    static constexpr std::array fields{
        field<&UserInfo::name>("name"),
        field<&UserInfo::email>("email"),
        field<&UserInfo::image>("image"),
    };
    return fields;
}

Fields PendingAgreement::jsonFields()
{
    static constexpr std::array fields{
        field<&PendingAgreement::kind>("kind"),
        field<&PendingAgreement::version>("version"),
    };
    return fields;
}

Fields Me::jsonFields()
{
    static constexpr std::array fields{
        field<&Me::userId>("userId"),
        field<&Me::personId>("personId"),
        field<&Me::workspaceId>("workspaceId"),
        field<&Me::workspaces>("workspaces"),
        field<&Me::user>("user"),
        field<&Me::isAdmin>("isAdmin"),
        field<&Me::pendingAgreements>("pendingAgreements"),
    };
    return fields;
}

Fields ConversationSummary::jsonFields()
{
    static constexpr std::array fields{
        field<&ConversationSummary::id>("id"),
        field<&ConversationSummary::channel>("channel"),
        field<&ConversationSummary::title>("title"),
        field<&ConversationSummary::summary>("summary"),
        field<&ConversationSummary::messageCount>("messageCount"),
        field<&ConversationSummary::createdAt>("createdAt"),
    };
    return fields;
}

Fields StoredPart::jsonFields()
{
    static constexpr std::array fields{
        field<&StoredPart::type>("type"),         field<&StoredPart::text>("text"),
        field<&StoredPart::toolName>("toolName"), field<&StoredPart::toolCallId>("toolCallId"),
        field<&StoredPart::input>("input"),       field<&StoredPart::output>("output"),
    };
    return fields;
}

Fields StoredUIMessage::jsonFields()
{
    static constexpr std::array fields{
        field<&StoredUIMessage::id>("id"),
        field<&StoredUIMessage::role>("role"),
        field<&StoredUIMessage::parts>("parts"),
    };
    return fields;
}

Fields SwitchWorkspaceRequest::jsonFields()
{
    static constexpr std::array fields{
        field<&SwitchWorkspaceRequest::workspaceId>("workspaceId"),
    };
    return fields;
}

Fields LibraryEnabledPatch::jsonFields()
{
    static constexpr std::array fields{
        field<&LibraryEnabledPatch::enabled>("enabled"),
    };
    return fields;
}

Fields MemberRolePatch::jsonFields()
{
    static constexpr std::array fields{
        field<&MemberRolePatch::role>("role"),
    };
    return fields;
}

Fields Tokens::jsonFields()
{
    static constexpr std::array fields{
        field<&Tokens::accessToken>("accessToken"),
        field<&Tokens::tokenType>("tokenType"),
        field<&Tokens::expiresIn>("expiresIn"),
        field<&Tokens::refreshToken>("refreshToken"),
    };
    return fields;
}

} // namespace velto::service
