// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/library/integrations.h"

namespace velto::local
{

/// The tools of the agent, in groups. A group that works through an outside service is available
/// while the workspace is connected to it.
class ToolCatalog final
{
public:
    ToolCatalog(Database &database, const Integrations &integrations);

    /// Name and description of what can be used now. Wants the database's lock.
    [[nodiscard]] nlohmann::json usable(const Caller &caller) const;

    [[nodiscard]] JsonAnswer list(const Call &call);

private:
    [[nodiscard]] nlohmann::json groups(const Caller &caller) const;

    Database &m_database;
    const Integrations &m_integrations;
};

} // namespace velto::local
