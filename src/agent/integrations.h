// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "agent/integrationstatus.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>

#include <array>
#include <optional>

namespace velto::agent
{
Q_NAMESPACE

/// The outside services, in the order of loading and of display.
enum class IntegrationProvider {
    Google,
    Slack,
    Linear,
    Notion,
    Github,
    Chatwork,
    Hubspot,
    Line,
    Lark,
    X,
};
Q_ENUM_NS(IntegrationProvider)

/// All of them, in their order.
[[nodiscard]] const std::array<IntegrationProvider, 10> &integrationProviders();

/// As it stands in paths: "github".
[[nodiscard]] QString rawValue(IntegrationProvider provider);
/// As a user reads it: "GitHub".
[[nodiscard]] QString label(IntegrationProvider provider);
/// The name of its symbol.
[[nodiscard]] QString symbol(IntegrationProvider provider);
/// The connected account: the one field that this service names its accounts in, whatever else may
/// be there.
[[nodiscard]] std::optional<QString> account(IntegrationProvider provider,
                                             const IntegrationStatus &status);

using Integrations = QMap<IntegrationProvider, IntegrationStatus>;

/// What is shown of one outside service, known or not.
struct IntegrationRow
{
    Q_GADGET
    Q_PROPERTY(velto::agent::IntegrationProvider provider MEMBER provider CONSTANT)
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(QString symbol MEMBER symbol CONSTANT)
    Q_PROPERTY(bool connected MEMBER connected CONSTANT)
    Q_PROPERTY(QVariant account MEMBER account CONSTANT)

public:
    IntegrationProvider provider = IntegrationProvider::Google;
    QString label;
    QString symbol;
    bool connected = false;
    base::Optional<QString> account; ///< Only while connected.

    bool operator==(const IntegrationRow &) const = default;
};

/// A row for each of the ten. One without a status counts as not connected.
[[nodiscard]] QList<IntegrationRow> integrationRows(const Integrations &integrations);

} // namespace velto::agent
