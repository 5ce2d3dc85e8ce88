// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/company/audit.h"

#include <array>
#include <string_view>

namespace velto::local
{

/// An outside service that a workspace can be connected to.
struct Provider
{
    std::string_view id;
    std::string_view label;
};

inline constexpr std::array<Provider, 10> Providers{{
    {"google", "Google"},
    {"slack", "Slack"},
    {"linear", "Linear"},
    {"notion", "Notion"},
    {"github", "GitHub"},
    {"chatwork", "Chatwork"},
    {"hubspot", "HubSpot"},
    {"line", "LINE"},
    {"lark", "Lark"},
    {"x", "X"},
}};

/// Null when there is no such provider.
[[nodiscard]] const Provider *findProvider(std::string_view id);
/// Where a connection would be made: connecting isn't this service's business.
[[nodiscard]] std::string connectAddress(std::string_view provider);

/// The workspace's connections to outside services.
class Integrations final
{
public:
    Integrations(Database &database, AuditLog &audit);

    /// Wants the database's lock.
    [[nodiscard]] bool isConnected(const std::string &workspaceId, std::string_view provider) const;

    [[nodiscard]] JsonAnswer status(const Call &call);
    [[nodiscard]] JsonAnswer disconnect(const Call &call);

private:
    Database &m_database;
    AuditLog &m_audit;
};

} // namespace velto::local
