// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/company/audit.h"
#include "local/library/toolcatalog.h"

#include <string>

namespace velto::local
{

/// Which model the agent runs on. Each user has an engine and a Codex model of their own; the
/// Claude model is the workspace's.
class Settings final
{
public:
    Settings(Database &database, Clock clock, AuditLog &audit, ToolCatalog &tools);

    /// The model that answers this caller.
    [[nodiscard]] std::string effectiveModel(const Caller &caller) const;

    [[nodiscard]] JsonAnswer agentConfig(const Call &call);
    [[nodiscard]] JsonAnswer read(const Call &call);
    /// Body: {"provider": "claude" or "codex", "codexModel": text}, either or both.
    [[nodiscard]] JsonAnswer write(const Call &call);
    /// Body: {"model": text}. For who manages the workspace and for administrators.
    [[nodiscard]] JsonAnswer setWorkspaceModel(const Call &call);

private:
    [[nodiscard]] nlohmann::json record(const Caller &caller) const;

    Database &m_database;
    Clock m_clock;
    AuditLog &m_audit;
    ToolCatalog &m_tools;
};

} // namespace velto::local
