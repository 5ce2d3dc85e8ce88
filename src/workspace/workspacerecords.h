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

    static base::json::Fields jsonFields();
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

    static base::json::Fields jsonFields();
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

    static base::json::Fields jsonFields();
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

    static base::json::Fields jsonFields();
    bool operator==(const WorkspaceMember &) const = default;
};

struct WorkspaceMembersResponse
{
    QList<WorkspaceMember> members;

    static base::json::Fields jsonFields();
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

    static base::json::Fields jsonFields();
    bool operator==(const WorkspaceInvite &) const = default;
};

struct WorkspaceInvitesResponse
{
    QList<WorkspaceInvite> invites;

    static base::json::Fields jsonFields();
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

    static base::json::Fields jsonFields();
    bool operator==(const AuditRow &) const = default;
};

struct AuditLogResponse
{
    QList<AuditRow> entries;

    static base::json::Fields jsonFields();
    bool operator==(const AuditLogResponse &) const = default;
};

struct CreateInviteRequest
{
    QString email;
    QString role;

    static base::json::Fields jsonFields();
    bool operator==(const CreateInviteRequest &) const = default;
};

/// An address is either invited or failed.
struct CreateInviteResult
{
    struct Invited
    {
        QString email;
        QString inviteId;

        static base::json::Fields jsonFields();
        bool operator==(const Invited &) const = default;
    };
    struct Failed
    {
        QString email;
        QString reason;

        static base::json::Fields jsonFields();
        bool operator==(const Failed &) const = default;
    };

    QList<Invited> invited;
    QList<Failed> failed;

    static base::json::Fields jsonFields();
    bool operator==(const CreateInviteResult &) const = default;
};

} // namespace velto::workspace
