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

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("users", &AdminTotals::users),
                          field("workspaces", &AdminTotals::workspaces),
                          field("memberships", &AdminTotals::memberships),
                          field("workspacesWithVelto", &AdminTotals::workspacesWithVelto)};
    }
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

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("usersLast7d", &AdminTrend::usersLast7d),
                          field("usersLast30d", &AdminTrend::usersLast30d),
                          field("workspacesLast7d", &AdminTrend::workspacesLast7d),
                          field("workspacesLast30d", &AdminTrend::workspacesLast30d)};
    }
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

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("id", &AdminRecentUser::id),
                          field("email", &AdminRecentUser::email),
                          field("displayName", &AdminRecentUser::displayName),
                          field("createdAt", &AdminRecentUser::createdAt)};
    }
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

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("id", &AdminRecentWorkspace::id),
                          field("slug", &AdminRecentWorkspace::slug),
                          field("name", &AdminRecentWorkspace::name),
                          field("createdByEmail", &AdminRecentWorkspace::createdByEmail),
                          field("memberCount", &AdminRecentWorkspace::memberCount),
                          field("createdAt", &AdminRecentWorkspace::createdAt)};
    }
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

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("totals", &AdminOverview::totals),
                          field("trend", &AdminOverview::trend),
                          field("recentUsers", &AdminOverview::recentUsers),
                          field("recentWorkspaces", &AdminOverview::recentWorkspaces)};
    }
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

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("id", &AdminUser::id),
                          field("email", &AdminUser::email),
                          field("displayName", &AdminUser::displayName),
                          field("workspaceCount", &AdminUser::workspaceCount),
                          field("createdAt", &AdminUser::createdAt),
                          field("updatedAt", &AdminUser::updatedAt)};
    }
    bool operator==(const AdminUser &) const = default;
};

struct AdminUsersResponse
{
    QList<AdminUser> users;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("users", &AdminUsersResponse::users)};
    }
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

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("id", &AdminWorkspace::id),
                          field("slug", &AdminWorkspace::slug),
                          field("name", &AdminWorkspace::name),
                          field("veltoEmail", &AdminWorkspace::veltoEmail),
                          field("createdByEmail", &AdminWorkspace::createdByEmail),
                          field("memberCount", &AdminWorkspace::memberCount),
                          field("createdAt", &AdminWorkspace::createdAt)};
    }
    bool operator==(const AdminWorkspace &) const = default;
};

struct AdminWorkspacesResponse
{
    QList<AdminWorkspace> workspaces;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("workspaces", &AdminWorkspacesResponse::workspaces)};
    }
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

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("id", &CatalogEntry::id),
                          field("version", &CatalogEntry::version),
                          field("source", &CatalogEntry::source),
                          field("name", &CatalogEntry::name),
                          field("tagline", &CatalogEntry::tagline),
                          field("whatItDoes", &CatalogEntry::whatItDoes),
                          field("iconKey", &CatalogEntry::iconKey),
                          field("accent", &CatalogEntry::accent),
                          field("exampleQueries", &CatalogEntry::exampleQueries)};
    }
    bool operator==(const CatalogEntry &) const = default;
};

struct AdminCatalogResponse
{
    QList<CatalogEntry> entries;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("entries", &AdminCatalogResponse::entries)};
    }
    bool operator==(const AdminCatalogResponse &) const = default;
};

} // namespace velto::workspace
