// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/library/integrations.h"

#include <string>

namespace velto::local
{

/// Puts the agents and skills of a bundle into a workspace. False when it is there already. Wants
/// the database's lock and a transaction.
bool installBundle(Database &database, const std::string &workspaceId, const std::string &catalogId,
                   std::int64_t now);

/// Bundles of agents and skills that a workspace can install.
class Marketplace final
{
public:
    Marketplace(Database &database, Clock clock, AuditLog &audit, const Integrations &integrations);

    [[nodiscard]] JsonAnswer catalog(const Call &call);
    /// Body: {"catalogId": text}.
    [[nodiscard]] JsonAnswer install(const Call &call);
    [[nodiscard]] JsonAnswer uninstall(const Call &call);

private:
    Database &m_database;
    Clock m_clock;
    AuditLog &m_audit;
    const Integrations &m_integrations;
};

} // namespace velto::local
