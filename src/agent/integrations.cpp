// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/integrations.h"

namespace velto::agent
{
namespace
{

struct Entry
{
    const char *rawValue;
    const char *label;
    const char *symbol;
    base::Optional<QString> IntegrationStatus::*account;
};

using Status = IntegrationStatus;

/// In the order of `IntegrationProvider`.
constexpr std::array<Entry, 10> table{{
    {"google", "Google", "envelope", &Status::veltoEmail},
    {"slack", "Slack", "number", &Status::teamName},
    {"linear", "Linear", "line.3.horizontal", &Status::organizationId},
    {"notion", "Notion", "doc.text", &Status::workspaceName},
    {"github", "GitHub", "chevron.left.forwardslash.chevron.right", &Status::accountLogin},
    {"chatwork", "Chatwork", "bubble.left.and.bubble.right", &Status::accountName},
    {"hubspot", "HubSpot", "h.circle", &Status::hubDomain},
    {"line", "LINE", "message", &Status::botUserId},
    {"lark", "Lark", "bird", &Status::appId},
    {"x", "X", "xmark", &Status::username},
}};

const Entry &entry(IntegrationProvider provider)
{
    return table.at(static_cast<std::size_t>(provider));
}

} // namespace

const std::array<IntegrationProvider, 10> &integrationProviders()
{
    using enum IntegrationProvider;
    static constexpr std::array all{Google,   Slack,   Linear, Notion, Github,
                                    Chatwork, Hubspot, Line,   Lark,   X};
    return all;
}

QString rawValue(IntegrationProvider provider)
{
    return QString::fromLatin1(entry(provider).rawValue);
}

QString label(IntegrationProvider provider)
{
    return QString::fromLatin1(entry(provider).label);
}

QString symbol(IntegrationProvider provider)
{
    return QString::fromLatin1(entry(provider).symbol);
}

std::optional<QString> account(IntegrationProvider provider, const IntegrationStatus &status)
{
    return status.*entry(provider).account;
}

QList<IntegrationRow> integrationRows(const Integrations &integrations)
{
    QList<IntegrationRow> rows;
    for (const IntegrationProvider provider : integrationProviders()) {
        const IntegrationStatus status = integrations.value(provider);
        IntegrationRow row{provider, label(provider), symbol(provider), status.connected, {}};
        if (status.connected)
            row.account = account(provider, status);
        rows.append(row);
    }
    return rows;
}

} // namespace velto::agent
