// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/json.h"
#include "base/optional.h"

#include <QObject>
#include <QString>

/// What an administrator sees of the whole platform, as the service sends it.
namespace velto::workspace
{

struct AdminTotals
{
    Q_GADGET
    Q_PROPERTY(qint64 users MEMBER users CONSTANT)
    Q_PROPERTY(qint64 workspaces MEMBER workspaces CONSTANT)
    Q_PROPERTY(qint64 memberships MEMBER memberships CONSTANT)
    Q_PROPERTY(qint64 workspacesWithVelto MEMBER workspacesWithVelto CONSTANT)

public:
    qint64 users = 0;
    qint64 workspaces = 0;
    qint64 memberships = 0;
    qint64 workspacesWithVelto = 0;

    static base::json::Fields jsonFields();
    bool operator==(const AdminTotals &) const = default;
};

struct AdminTrend
{
    Q_GADGET
    Q_PROPERTY(qint64 usersLast7d MEMBER usersLast7d CONSTANT)
    Q_PROPERTY(qint64 usersLast30d MEMBER usersLast30d CONSTANT)
    Q_PROPERTY(qint64 workspacesLast7d MEMBER workspacesLast7d CONSTANT)
    Q_PROPERTY(qint64 workspacesLast30d MEMBER workspacesLast30d CONSTANT)

public:
    qint64 usersLast7d = 0;
    qint64 usersLast30d = 0;
    qint64 workspacesLast7d = 0;
    qint64 workspacesLast30d = 0;

    static base::json::Fields jsonFields();
    bool operator==(const AdminTrend &) const = default;
};

struct AdminRecentUser
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString email MEMBER email CONSTANT)
    Q_PROPERTY(QVariant displayName MEMBER displayName CONSTANT)
    Q_PROPERTY(QVariant createdAt MEMBER createdAt CONSTANT)

public:
    QString id;
    QString email;
    base::Optional<QString> displayName;
    base::Optional<QString> createdAt;

    static base::json::Fields jsonFields();
    bool operator==(const AdminRecentUser &) const = default;
};

struct AdminRecentWorkspace
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString slug MEMBER slug CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QVariant createdByEmail MEMBER createdByEmail CONSTANT)
    Q_PROPERTY(qint64 memberCount MEMBER memberCount CONSTANT)
    Q_PROPERTY(QVariant createdAt MEMBER createdAt CONSTANT)

public:
    QString id;
    QString slug;
    QString name;
    base::Optional<QString> createdByEmail;
    qint64 memberCount = 0;
    base::Optional<QString> createdAt;

    static base::json::Fields jsonFields();
    bool operator==(const AdminRecentWorkspace &) const = default;
};

struct AdminOverview
{
    Q_GADGET
    Q_PROPERTY(velto::workspace::AdminTotals totals MEMBER totals CONSTANT)
    Q_PROPERTY(velto::workspace::AdminTrend trend MEMBER trend CONSTANT)
    Q_PROPERTY(QList<velto::workspace::AdminRecentUser> recentUsers MEMBER recentUsers CONSTANT)
    Q_PROPERTY(QList<velto::workspace::AdminRecentWorkspace> recentWorkspaces MEMBER
                   recentWorkspaces CONSTANT)

public:
    AdminTotals totals;
    AdminTrend trend;
    QList<AdminRecentUser> recentUsers;
    QList<AdminRecentWorkspace> recentWorkspaces;

    static base::json::Fields jsonFields();
    bool operator==(const AdminOverview &) const = default;
};

struct AdminUser
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString email MEMBER email CONSTANT)
    Q_PROPERTY(QVariant displayName MEMBER displayName CONSTANT)
    Q_PROPERTY(qint64 workspaceCount MEMBER workspaceCount CONSTANT)
    Q_PROPERTY(QVariant createdAt MEMBER createdAt CONSTANT)
    Q_PROPERTY(QVariant updatedAt MEMBER updatedAt CONSTANT)

public:
    QString id;
    QString email;
    base::Optional<QString> displayName;
    qint64 workspaceCount = 0;
    base::Optional<QString> createdAt;
    base::Optional<QString> updatedAt;

    static base::json::Fields jsonFields();
    bool operator==(const AdminUser &) const = default;
};

struct AdminUsersResponse
{
    QList<AdminUser> users;

    static base::json::Fields jsonFields();
    bool operator==(const AdminUsersResponse &) const = default;
};

struct AdminWorkspace
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString slug MEMBER slug CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QVariant veltoEmail MEMBER veltoEmail CONSTANT)
    Q_PROPERTY(QVariant createdByEmail MEMBER createdByEmail CONSTANT)
    Q_PROPERTY(qint64 memberCount MEMBER memberCount CONSTANT)
    Q_PROPERTY(QVariant createdAt MEMBER createdAt CONSTANT)

public:
    QString id;
    QString slug;
    QString name;
    base::Optional<QString> veltoEmail;
    base::Optional<QString> createdByEmail;
    qint64 memberCount = 0;
    base::Optional<QString> createdAt;

    static base::json::Fields jsonFields();
    bool operator==(const AdminWorkspace &) const = default;
};

struct AdminWorkspacesResponse
{
    QList<AdminWorkspace> workspaces;

    static base::json::Fields jsonFields();
    bool operator==(const AdminWorkspacesResponse &) const = default;
};

struct CatalogEntry
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString version MEMBER version CONSTANT)
    Q_PROPERTY(QVariant source MEMBER source CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString tagline MEMBER tagline CONSTANT)
    Q_PROPERTY(QString whatItDoes MEMBER whatItDoes CONSTANT)
    Q_PROPERTY(QVariant iconKey MEMBER iconKey CONSTANT)
    Q_PROPERTY(QVariant accent MEMBER accent CONSTANT)
    Q_PROPERTY(QVariant exampleQueries MEMBER exampleQueries CONSTANT)

public:
    QString id;
    QString version;
    base::Optional<QString> source;
    QString name;
    QString tagline;
    QString whatItDoes;
    base::Optional<QString> iconKey;
    base::Optional<QString> accent;
    base::Optional<QList<QString>> exampleQueries;

    static base::json::Fields jsonFields();
    bool operator==(const CatalogEntry &) const = default;
};

struct AdminCatalogResponse
{
    QList<CatalogEntry> entries;

    static base::json::Fields jsonFields();
    bool operator==(const AdminCatalogResponse &) const = default;
};

} // namespace velto::workspace
