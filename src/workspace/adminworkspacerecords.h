// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/json.h"
#include "base/optional.h"
#include "workspace/workspacerecords.h"

#include <QObject>
#include <QString>

/// One workspace with its use, as an administrator sees it.
namespace velto::workspace
{

struct AdminWorkspaceMemberRow
{
    Q_GADGET
    Q_PROPERTY(QString userId MEMBER userId CONSTANT)
    Q_PROPERTY(QString email MEMBER email CONSTANT)
    Q_PROPERTY(QVariant displayName MEMBER displayName CONSTANT)
    Q_PROPERTY(QString role MEMBER role CONSTANT)
    Q_PROPERTY(QVariant joinedAt MEMBER joinedAt CONSTANT)

public:
    QString userId;
    QString email;
    base::Optional<QString> displayName;
    QString role;
    base::Optional<QString> joinedAt;

    static base::json::Fields jsonFields();
    bool operator==(const AdminWorkspaceMemberRow &) const = default;
};

/// Tokens, but for the last two.
struct AdminUsageSummary
{
    Q_GADGET
    Q_PROPERTY(qint64 totalInput MEMBER totalInput CONSTANT)
    Q_PROPERTY(qint64 totalOutput MEMBER totalOutput CONSTANT)
    Q_PROPERTY(qint64 totalCacheCreation MEMBER totalCacheCreation CONSTANT)
    Q_PROPERTY(qint64 totalCacheRead MEMBER totalCacheRead CONSTANT)
    Q_PROPERTY(qint64 totalCalls MEMBER totalCalls CONSTANT)
    Q_PROPERTY(double totalCostUsd MEMBER totalCostUsd CONSTANT)

public:
    qint64 totalInput = 0;
    qint64 totalOutput = 0;
    qint64 totalCacheCreation = 0;
    qint64 totalCacheRead = 0;
    qint64 totalCalls = 0;
    double totalCostUsd = 0;

    static base::json::Fields jsonFields();
    bool operator==(const AdminUsageSummary &) const = default;
};

struct AdminUsageBySource
{
    Q_GADGET
    Q_PROPERTY(QString source MEMBER source CONSTANT)
    Q_PROPERTY(QString model MEMBER model CONSTANT)
    Q_PROPERTY(qint64 inputTokens MEMBER inputTokens CONSTANT)
    Q_PROPERTY(qint64 outputTokens MEMBER outputTokens CONSTANT)
    Q_PROPERTY(QVariant cacheCreationTokens MEMBER cacheCreationTokens CONSTANT)
    Q_PROPERTY(QVariant cacheReadTokens MEMBER cacheReadTokens CONSTANT)
    Q_PROPERTY(double costUsd MEMBER costUsd CONSTANT)
    Q_PROPERTY(qint64 calls MEMBER calls CONSTANT)

public:
    QString source;
    QString model;
    qint64 inputTokens = 0;
    qint64 outputTokens = 0;
    base::Optional<qint64> cacheCreationTokens;
    base::Optional<qint64> cacheReadTokens;
    double costUsd = 0;
    qint64 calls = 0;

    static base::json::Fields jsonFields();
    bool operator==(const AdminUsageBySource &) const = default;
};

struct AdminWorkspaceDetail
{
    Q_GADGET
    Q_PROPERTY(velto::workspace::WorkspaceInfo workspace MEMBER workspace CONSTANT)
    Q_PROPERTY(QList<velto::workspace::AdminWorkspaceMemberRow> members MEMBER members CONSTANT)
    Q_PROPERTY(QVariant usageSummary MEMBER usageSummary CONSTANT)
    Q_PROPERTY(QVariant usageBySource MEMBER usageBySource CONSTANT)
    Q_PROPERTY(QVariant userMessages MEMBER userMessages CONSTANT)
    Q_PROPERTY(QVariant cacheSavingsUsd MEMBER cacheSavingsUsd CONSTANT)

public:
    WorkspaceInfo workspace;
    QList<AdminWorkspaceMemberRow> members;
    base::Optional<AdminUsageSummary> usageSummary;
    base::Optional<QList<AdminUsageBySource>> usageBySource;
    base::Optional<qint64> userMessages;
    base::Optional<double> cacheSavingsUsd;

    static base::json::Fields jsonFields();
    bool operator==(const AdminWorkspaceDetail &) const = default;
};

} // namespace velto::workspace
