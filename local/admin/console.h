// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/admin/usage.h"
#include "local/company/audit.h"

namespace velto::local
{

/// The whole service as its administrators see it. Who may call this is settled by the route.
class Console final
{
public:
    Console(Database &database, Clock clock, AuditLog &audit, const UsageLedger &usage);

    [[nodiscard]] JsonAnswer overview(const Call &call);
    [[nodiscard]] JsonAnswer users(const Call &call);
    [[nodiscard]] JsonAnswer workspaces(const Call &call);
    [[nodiscard]] JsonAnswer workspace(const Call &call);
    [[nodiscard]] JsonAnswer catalog(const Call &call);
    /// Takes the bundle out of every workspace that has installed it.
    [[nodiscard]] JsonAnswer removeFromCatalog(const Call &call);

private:
    Database &m_database;
    Clock m_clock;
    AuditLog &m_audit;
    const UsageLedger &m_usage;
};

} // namespace velto::local
