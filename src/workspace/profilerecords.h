// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/json.h"
#include "base/optional.h"

#include <QObject>
#include <QString>

/// The signed-in person, as the service sends them.
namespace velto::workspace
{

struct ProfileUser
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString email MEMBER email CONSTANT)
    Q_PROPERTY(QVariant displayName MEMBER displayName CONSTANT)
    Q_PROPERTY(QVariant createdAt MEMBER createdAt CONSTANT)
    Q_PROPERTY(QVariant updatedAt MEMBER updatedAt CONSTANT)

public:
    QString id;
    QString email;
    base::Optional<QString> displayName;
    base::Optional<QString> createdAt;
    base::Optional<QString> updatedAt;

    static base::json::Fields jsonFields();
    bool operator==(const ProfileUser &) const = default;
};

struct ProfileMembership
{
    Q_GADGET
    Q_PROPERTY(QString workspaceId MEMBER workspaceId CONSTANT)
    Q_PROPERTY(QString workspaceSlug MEMBER workspaceSlug CONSTANT)
    Q_PROPERTY(QString workspaceName MEMBER workspaceName CONSTANT)
    Q_PROPERTY(QString role MEMBER role CONSTANT)
    Q_PROPERTY(QVariant personId MEMBER personId CONSTANT)
    Q_PROPERTY(QVariant onlyOwner MEMBER onlyOwner CONSTANT)
    Q_PROPERTY(QString subtitle READ subtitle CONSTANT)

public:
    QString workspaceId;
    QString workspaceSlug;
    QString workspaceName;
    QString role;
    base::Optional<QString> personId;
    base::Optional<bool> onlyOwner;

    /// The line below the name: "acme · Owner".
    [[nodiscard]] QString subtitle() const;

    static base::json::Fields jsonFields();
    bool operator==(const ProfileMembership &) const = default;
};

struct ProfileWorkspace
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString slug MEMBER slug CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)

public:
    QString id;
    QString slug;
    QString name;

    static base::json::Fields jsonFields();
    bool operator==(const ProfileWorkspace &) const = default;
};

struct ProfileIntegrations
{
    Q_GADGET
    Q_PROPERTY(bool googleConnected MEMBER googleConnected CONSTANT)

public:
    bool googleConnected = false;

    static base::json::Fields jsonFields();
    bool operator==(const ProfileIntegrations &) const = default;
};

/// The signed-in person.
struct UserProfile
{
    Q_GADGET
    Q_PROPERTY(QVariant user MEMBER user CONSTANT)
    Q_PROPERTY(QList<velto::workspace::ProfileMembership> memberships MEMBER memberships CONSTANT)
    Q_PROPERTY(QVariant currentWorkspace MEMBER currentWorkspace CONSTANT)
    Q_PROPERTY(QVariant currentMembership MEMBER currentMembership CONSTANT)
    Q_PROPERTY(velto::workspace::ProfileIntegrations integrations MEMBER integrations CONSTANT)
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QString email READ email CONSTANT)
    Q_PROPERTY(QString currentRole READ currentRole CONSTANT)

public:
    base::Optional<ProfileUser> user;
    QList<ProfileMembership> memberships;
    base::Optional<ProfileWorkspace> currentWorkspace;
    base::Optional<ProfileMembership> currentMembership; ///< That in the current workspace.
    ProfileIntegrations integrations;

    /// The display name, else the email; a dash where there is no user.
    [[nodiscard]] QString name() const;
    /// Empty where there is no user.
    [[nodiscard]] QString email() const;
    /// Empty unless there is a current membership with a role.
    [[nodiscard]] QString currentRole() const;
    Q_INVOKABLE [[nodiscard]] bool
    isCurrent(const velto::workspace::ProfileMembership &membership) const;

    static base::json::Fields jsonFields();
    bool operator==(const UserProfile &) const = default;
};

} // namespace velto::workspace
