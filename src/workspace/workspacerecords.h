// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/json.h"
#include "base/optional.h"

#include <QObject>
#include <QString>

/// A workspace and who belongs to it, as the service sends it. Roles are texts that are compared as
/// they stand.
namespace velto::workspace
{

struct WorkspaceInfo
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString slug MEMBER slug CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QVariant veltoEmail MEMBER veltoEmail CONSTANT)
    Q_PROPERTY(QVariant veltoDisplayName MEMBER veltoDisplayName CONSTANT)
    Q_PROPERTY(QVariant createdByUserId MEMBER createdByUserId CONSTANT)
    Q_PROPERTY(QVariant createdAt MEMBER createdAt CONSTANT)
    Q_PROPERTY(QVariant updatedAt MEMBER updatedAt CONSTANT)

public:
    QString id;
    QString slug;
    QString name;
    base::Optional<QString> veltoEmail;
    base::Optional<QString> veltoDisplayName;
    base::Optional<QString> createdByUserId;
    base::Optional<QString> createdAt;
    base::Optional<QString> updatedAt;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("id", &WorkspaceInfo::id),
                          field("slug", &WorkspaceInfo::slug),
                          field("name", &WorkspaceInfo::name),
                          field("veltoEmail", &WorkspaceInfo::veltoEmail),
                          field("veltoDisplayName", &WorkspaceInfo::veltoDisplayName),
                          field("createdByUserId", &WorkspaceInfo::createdByUserId),
                          field("createdAt", &WorkspaceInfo::createdAt),
                          field("updatedAt", &WorkspaceInfo::updatedAt)};
    }
    bool operator==(const WorkspaceInfo &) const = default;
};

struct WorkspaceMembership
{
    Q_GADGET
    Q_PROPERTY(QString workspaceId MEMBER workspaceId CONSTANT)
    Q_PROPERTY(QString userId MEMBER userId CONSTANT)
    Q_PROPERTY(QVariant personId MEMBER personId CONSTANT)
    Q_PROPERTY(QString role MEMBER role CONSTANT)
    Q_PROPERTY(QVariant joinedAt MEMBER joinedAt CONSTANT)

public:
    QString workspaceId;
    QString userId;
    base::Optional<QString> personId;
    QString role;
    base::Optional<QString> joinedAt;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("workspaceId", &WorkspaceMembership::workspaceId),
                          field("userId", &WorkspaceMembership::userId),
                          field("personId", &WorkspaceMembership::personId),
                          field("role", &WorkspaceMembership::role),
                          field("joinedAt", &WorkspaceMembership::joinedAt)};
    }
    bool operator==(const WorkspaceMembership &) const = default;
};

struct WorkspaceDetail
{
    Q_GADGET
    Q_PROPERTY(velto::workspace::WorkspaceInfo workspace MEMBER workspace CONSTANT)
    Q_PROPERTY(velto::workspace::WorkspaceMembership membership MEMBER membership CONSTANT)
    Q_PROPERTY(qint64 memberCount MEMBER memberCount CONSTANT)

public:
    WorkspaceInfo workspace;
    WorkspaceMembership membership; ///< The caller's own.
    qint64 memberCount = 0;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("workspace", &WorkspaceDetail::workspace),
                          field("membership", &WorkspaceDetail::membership),
                          field("memberCount", &WorkspaceDetail::memberCount)};
    }
    bool operator==(const WorkspaceDetail &) const = default;
};

struct WorkspaceMember
{
    Q_GADGET
    Q_PROPERTY(QString userId MEMBER userId CONSTANT)
    Q_PROPERTY(QString displayName MEMBER displayName CONSTANT)
    Q_PROPERTY(QString email MEMBER email CONSTANT)
    Q_PROPERTY(QString role MEMBER role CONSTANT)

public:
    QString userId;
    QString displayName;
    QString email;
    QString role;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("userId", &WorkspaceMember::userId),
                          field("displayName", &WorkspaceMember::displayName),
                          field("email", &WorkspaceMember::email),
                          field("role", &WorkspaceMember::role)};
    }
    bool operator==(const WorkspaceMember &) const = default;
};

struct WorkspaceMembersResponse
{
    QList<WorkspaceMember> members;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("members", &WorkspaceMembersResponse::members)};
    }
    bool operator==(const WorkspaceMembersResponse &) const = default;
};

struct WorkspaceInvite
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString email MEMBER email CONSTANT)
    Q_PROPERTY(QString role MEMBER role CONSTANT)
    Q_PROPERTY(QVariant expiresAt MEMBER expiresAt CONSTANT)

public:
    QString id;
    QString email;
    QString role;
    base::Optional<QString> expiresAt;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{
            field("id", &WorkspaceInvite::id), field("email", &WorkspaceInvite::email),
            field("role", &WorkspaceInvite::role), field("expiresAt", &WorkspaceInvite::expiresAt)};
    }
    bool operator==(const WorkspaceInvite &) const = default;
};

struct WorkspaceInvitesResponse
{
    QList<WorkspaceInvite> invites;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("invites", &WorkspaceInvitesResponse::invites)};
    }
    bool operator==(const WorkspaceInvitesResponse &) const = default;
};

/// One entry of the audit log.
struct AuditRow
{
    Q_GADGET
    Q_PROPERTY(qint64 id MEMBER id CONSTANT)
    Q_PROPERTY(QString action MEMBER action CONSTANT)
    Q_PROPERTY(QVariant actorEmail MEMBER actorEmail CONSTANT)
    Q_PROPERTY(QVariant targetType MEMBER targetType CONSTANT)
    Q_PROPERTY(QVariant targetId MEMBER targetId CONSTANT)
    Q_PROPERTY(QVariant createdAt MEMBER createdAt CONSTANT)

public:
    qint64 id = 0;
    QString action;
    base::Optional<QString> actorEmail;
    base::Optional<QString> targetType;
    base::Optional<QString> targetId;
    base::Optional<QMap<QString, base::AnyJSON>> metadata;
    base::Optional<QString> createdAt;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("id", &AuditRow::id),
                          field("action", &AuditRow::action),
                          field("actorEmail", &AuditRow::actorEmail),
                          field("targetType", &AuditRow::targetType),
                          field("targetId", &AuditRow::targetId),
                          field("metadata", &AuditRow::metadata),
                          field("createdAt", &AuditRow::createdAt)};
    }
    bool operator==(const AuditRow &) const = default;
};

struct AuditLogResponse
{
    QList<AuditRow> entries;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("entries", &AuditLogResponse::entries)};
    }
    bool operator==(const AuditLogResponse &) const = default;
};

struct CreateInviteRequest
{
    QString email;
    QString role;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("email", &CreateInviteRequest::email),
                          field("role", &CreateInviteRequest::role)};
    }
    bool operator==(const CreateInviteRequest &) const = default;
};

/// An address is either invited or failed.
struct CreateInviteResult
{
    struct Invited
    {
        QString email;
        QString inviteId;

        static constexpr auto jsonFields()
        {
            using base::json::field;
            return std::tuple{field("email", &Invited::email),
                              field("inviteId", &Invited::inviteId)};
        }
        bool operator==(const Invited &) const = default;
    };
    struct Failed
    {
        QString email;
        QString reason;

        static constexpr auto jsonFields()
        {
            using base::json::field;
            return std::tuple{field("email", &Failed::email), field("reason", &Failed::reason)};
        }
        bool operator==(const Failed &) const = default;
    };

    QList<Invited> invited;
    QList<Failed> failed;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("invited", &CreateInviteResult::invited),
                          field("failed", &CreateInviteResult::failed)};
    }
    bool operator==(const CreateInviteResult &) const = default;
};

} // namespace velto::workspace
