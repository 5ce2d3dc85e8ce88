// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/json.h"
#include "base/optional.h"

#include <QObject>
#include <QString>

/// How the agent is set up, as the service sends it. Times stay text.
namespace velto::agent
{

struct AgentConfigTool
{
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString description MEMBER description CONSTANT)

public:
    QString name;
    QString description;

    static base::json::Fields jsonFields();
    bool operator==(const AgentConfigTool &) const = default;
};

/// The configuration that the agent runs with.
struct AgentConfig
{
    Q_GADGET
    Q_PROPERTY(QString model MEMBER model CONSTANT)
    Q_PROPERTY(QVariant maxTokens MEMBER maxTokens CONSTANT)
    Q_PROPERTY(QVariant maxToolRounds MEMBER maxToolRounds CONSTANT)
    Q_PROPERTY(QVariant tools MEMBER tools CONSTANT)
    Q_PROPERTY(QVariant toolCount MEMBER toolCount CONSTANT)

public:
    QString model;                        ///< The effective one.
    base::Optional<qint64> maxTokens;     ///< Of an answer.
    base::Optional<qint64> maxToolRounds; ///< Of a turn.
    base::Optional<QList<AgentConfigTool>> tools;
    base::Optional<qint64> toolCount;

    static base::json::Fields jsonFields();
    bool operator==(const AgentConfig &) const = default;
};

/// The user's choice of a model.
struct AppSettings
{
    Q_GADGET
    Q_PROPERTY(QString model MEMBER model CONSTANT)
    Q_PROPERTY(QVariant provider MEMBER provider CONSTANT)
    Q_PROPERTY(QVariant codexModel MEMBER codexModel CONSTANT)

public:
    QString model;                      ///< That of the Claude engine.
    base::Optional<QString> provider;   ///< "claude" or "codex", absent means "claude".
    base::Optional<QString> codexModel; ///< That of the Codex engine.

    static base::json::Fields jsonFields();
    bool operator==(const AppSettings &) const = default;
};

struct LibrarySkill
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString description MEMBER description CONSTANT)
    Q_PROPERTY(bool enabled MEMBER enabled CONSTANT)
    Q_PROPERTY(QVariant updatedAt MEMBER updatedAt CONSTANT)

public:
    QString id;
    QString name;
    QString description;
    bool enabled = false;
    base::Optional<QString> updatedAt;

    static base::json::Fields jsonFields();
    bool operator==(const LibrarySkill &) const = default;
};

struct LibrarySubagent
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString description MEMBER description CONSTANT)
    Q_PROPERTY(bool enabled MEMBER enabled CONSTANT)
    Q_PROPERTY(QVariant source MEMBER source CONSTANT)
    Q_PROPERTY(QVariant model MEMBER model CONSTANT)
    Q_PROPERTY(QVariant maxTurns MEMBER maxTurns CONSTANT)
    Q_PROPERTY(QVariant mcpServerNames MEMBER mcpServerNames CONSTANT)
    Q_PROPERTY(QVariant tools MEMBER tools CONSTANT)
    Q_PROPERTY(QVariant updatedAt MEMBER updatedAt CONSTANT)

public:
    QString id;
    QString name;
    QString description;
    bool enabled = false;
    base::Optional<QString> source;
    base::Optional<QString> model;
    base::Optional<qint64> maxTurns;
    base::Optional<QList<QString>> mcpServerNames;
    base::Optional<QList<QString>> tools;
    base::Optional<QString> updatedAt;

    static base::json::Fields jsonFields();
    bool operator==(const LibrarySubagent &) const = default;
};

struct VeltoTool
{
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString description MEMBER description CONSTANT)
    Q_PROPERTY(bool available MEMBER available CONSTANT)
    Q_PROPERTY(QVariant source MEMBER source CONSTANT)

public:
    QString name;
    QString description;
    bool available = false;
    base::Optional<QString> source;

    static base::json::Fields jsonFields();
    bool operator==(const VeltoTool &) const = default;
};

struct VeltoToolGroup
{
    Q_GADGET
    Q_PROPERTY(QString key MEMBER key CONSTANT)
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(bool available MEMBER available CONSTANT)
    Q_PROPERTY(QVariant availabilityLabel MEMBER availabilityLabel CONSTANT)
    Q_PROPERTY(QVariant note MEMBER note CONSTANT)
    Q_PROPERTY(QVariant connectHref MEMBER connectHref CONSTANT)
    Q_PROPERTY(QVariant connectLabel MEMBER connectLabel CONSTANT)
    Q_PROPERTY(QList<velto::agent::VeltoTool> tools MEMBER tools CONSTANT)

public:
    QString key;
    QString label;
    bool available = false;
    base::Optional<QString> availabilityLabel;
    base::Optional<QString> note;
    base::Optional<QString> connectHref;
    base::Optional<QString> connectLabel;
    QList<VeltoTool> tools;

    static base::json::Fields jsonFields();
    bool operator==(const VeltoToolGroup &) const = default;
};

struct VeltoToolCatalog
{
    Q_GADGET
    Q_PROPERTY(QList<velto::agent::VeltoToolGroup> groups MEMBER groups CONSTANT)

public:
    QList<VeltoToolGroup> groups;

    static base::json::Fields jsonFields();
    bool operator==(const VeltoToolCatalog &) const = default;
};

} // namespace velto::agent
