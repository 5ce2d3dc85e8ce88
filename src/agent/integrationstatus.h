// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/json.h"
#include "base/optional.h"

#include <QObject>
#include <QString>

namespace velto::agent
{

/// What the service knows of the connection to one outside service. Which of the fields are there
/// depends on that service.
struct IntegrationStatus
{
    Q_GADGET
    Q_PROPERTY(bool connected MEMBER connected CONSTANT)
    Q_PROPERTY(QVariant veltoEmail MEMBER veltoEmail CONSTANT)
    Q_PROPERTY(QVariant expiresAt MEMBER expiresAt CONSTANT)
    Q_PROPERTY(QVariant expired MEMBER expired CONSTANT)
    Q_PROPERTY(QVariant teamId MEMBER teamId CONSTANT)
    Q_PROPERTY(QVariant teamName MEMBER teamName CONSTANT)
    Q_PROPERTY(QVariant workspaceId MEMBER workspaceId CONSTANT)
    Q_PROPERTY(QVariant workspaceName MEMBER workspaceName CONSTANT)
    Q_PROPERTY(QVariant installedAt MEMBER installedAt CONSTANT)
    Q_PROPERTY(QVariant organizationId MEMBER organizationId CONSTANT)
    Q_PROPERTY(QVariant accountLogin MEMBER accountLogin CONSTANT)
    Q_PROPERTY(QVariant accountType MEMBER accountType CONSTANT)
    Q_PROPERTY(QVariant appSlug MEMBER appSlug CONSTANT)
    Q_PROPERTY(QVariant accountName MEMBER accountName CONSTANT)
    Q_PROPERTY(QVariant hubDomain MEMBER hubDomain CONSTANT)
    Q_PROPERTY(QVariant botUserId MEMBER botUserId CONSTANT)
    Q_PROPERTY(QVariant appId MEMBER appId CONSTANT)
    Q_PROPERTY(QVariant username MEMBER username CONSTANT)

public:
    bool connected = false;
    base::Optional<QString> veltoEmail;
    base::Optional<QString> expiresAt;
    base::Optional<bool> expired;
    base::Optional<QString> teamId;
    base::Optional<QString> teamName;
    base::Optional<QString> workspaceId;
    base::Optional<QString> workspaceName;
    base::Optional<QString> installedAt;
    base::Optional<QString> organizationId;
    base::Optional<QString> accountLogin;
    base::Optional<QString> accountType;
    base::Optional<QString> appSlug;
    base::Optional<QString> accountName;
    base::Optional<QString> hubDomain;
    base::Optional<QString> botUserId;
    base::Optional<QString> appId;
    base::Optional<QString> username;

    static base::json::Fields jsonFields();
    bool operator==(const IntegrationStatus &) const = default;
};

} // namespace velto::agent
