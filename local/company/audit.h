// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/http/refusal.h"
#include "local/http/route.h"
#include "local/store/database.h"

#include <nlohmann/json.hpp>

#include <string_view>

namespace velto::local
{

/// Something that happened in a workspace.
struct AuditEvent
{
    std::string_view workspaceId;
    /// What and how, as in "invite.created".
    std::string_view action;
    std::string_view targetType;
    std::string_view targetId;
    nlohmann::json metadata = nlohmann::json::object();
};

/// What has happened in the workspaces, and who did it.
class AuditLog final
{
public:
    AuditLog(Database &database, Clock clock);

    /// Writes into the transaction of the change itself, so that one never stands without the
    /// other.
    void record(const Caller &actor, const AuditEvent &event);

    /// Newest first. Query: `limit`.
    [[nodiscard]] JsonAnswer list(const Call &call);

private:
    Database &m_database;
    Clock m_clock;
};

} // namespace velto::local
