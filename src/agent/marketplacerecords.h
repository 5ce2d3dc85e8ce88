// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/json.h"
#include "base/optional.h"

#include <QObject>
#include <QString>

/// The catalog of bundles, as the service sends it.
namespace velto::agent
{

struct MarketplaceAgentResource
{
    Q_GADGET
    Q_PROPERTY(QString slug MEMBER slug CONSTANT)
    Q_PROPERTY(QString description MEMBER description CONSTANT)
    Q_PROPERTY(QVariant model MEMBER model CONSTANT)
    Q_PROPERTY(QVariant maxTurns MEMBER maxTurns CONSTANT)
    Q_PROPERTY(QVariant mcpServerNames MEMBER mcpServerNames CONSTANT)
    Q_PROPERTY(QVariant tools MEMBER tools CONSTANT)

public:
    QString slug;
    QString description;
    base::Optional<QString> model;
    base::Optional<qint64> maxTurns;
    base::Optional<QList<QString>> mcpServerNames;
    base::Optional<QList<QString>> tools;

    static base::json::Fields jsonFields();
    bool operator==(const MarketplaceAgentResource &) const = default;
};

struct MarketplaceSkillResource
{
    Q_GADGET
    Q_PROPERTY(QString slug MEMBER slug CONSTANT)
    Q_PROPERTY(QString description MEMBER description CONSTANT)

public:
    QString slug;
    QString description;

    static base::json::Fields jsonFields();
    bool operator==(const MarketplaceSkillResource &) const = default;
};

/// What a bundle holds.
struct MarketplaceResources
{
    Q_GADGET
    Q_PROPERTY(QVariant agents MEMBER agents CONSTANT)
    Q_PROPERTY(QVariant skills MEMBER skills CONSTANT)

public:
    base::Optional<QList<MarketplaceAgentResource>> agents;
    base::Optional<QList<MarketplaceSkillResource>> skills;

    static base::json::Fields jsonFields();
    bool operator==(const MarketplaceResources &) const = default;
};

struct MarketplaceInstalledStatus
{
    Q_GADGET
    Q_PROPERTY(QVariant catalogId MEMBER catalogId CONSTANT)
    Q_PROPERTY(bool enabled MEMBER enabled CONSTANT)
    Q_PROPERTY(QVariant installedAt MEMBER installedAt CONSTANT)

public:
    base::Optional<QString> catalogId;
    bool enabled = false;
    base::Optional<QString> installedAt;

    static base::json::Fields jsonFields();
    bool operator==(const MarketplaceInstalledStatus &) const = default;
};

struct MarketplaceIntegrationState
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(QVariant connectUrl MEMBER connectUrl CONSTANT)
    Q_PROPERTY(bool connected MEMBER connected CONSTANT)

public:
    QString id;
    QString label;
    base::Optional<QString> connectUrl;
    bool connected = false;

    static base::json::Fields jsonFields();
    bool operator==(const MarketplaceIntegrationState &) const = default;
};

/// A bundle of the catalog.
struct MarketplaceItem
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
    Q_PROPERTY(QVariant resources MEMBER resources CONSTANT)
    Q_PROPERTY(QVariant installed MEMBER installed CONSTANT)
    Q_PROPERTY(QVariant integrations MEMBER integrations CONSTANT)
    Q_PROPERTY(bool isInstalled READ isInstalled CONSTANT)
    Q_PROPERTY(int agentCount READ agentCount CONSTANT)
    Q_PROPERTY(int skillCount READ skillCount CONSTANT)

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
    base::Optional<MarketplaceResources> resources;
    base::Optional<MarketplaceInstalledStatus>
        installed; ///< Present exactly when installed, enabled or not.
    base::Optional<QList<MarketplaceIntegrationState>> integrations;

    [[nodiscard]] bool isInstalled() const { return installed.has_value(); }
    /// What is not listed counts 0.
    [[nodiscard]] int agentCount() const;
    [[nodiscard]] int skillCount() const;

    static base::json::Fields jsonFields();
    bool operator==(const MarketplaceItem &) const = default;
};

struct MarketplaceCatalog
{
    QList<MarketplaceItem> entries;

    static base::json::Fields jsonFields();
    bool operator==(const MarketplaceCatalog &) const = default;
};

} // namespace velto::agent
