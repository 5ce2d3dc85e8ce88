// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/company/audit.h"

#include "local/company/roles.h"
#include "local/http/reply.h"
#include "local/store/rows.h"

namespace velto::local
{

AuditLog::AuditLog(Database &database, Clock clock)
    : m_database(database)
    , m_clock(std::move(clock))
{}

void AuditLog::record(const Caller &actor, const AuditEvent &event)
{
    Statement(m_database, "INSERT INTO audit (workspace_id, action, actor_email, target_type,"
                          " target_id, metadata, created_at)"
                          " VALUES (?, ?, (SELECT email FROM users WHERE id = ?), ?, ?, ?, ?)")
        .bind(event.workspaceId)
        .bind(event.action)
        .bind(actor.userId)
        .bindOrNull(event.targetType)
        .bindOrNull(event.targetId)
        .bindOrNull(event.metadata.empty() ? std::string() : toText(event.metadata))
        .bind(m_clock())
        .done();
}

JsonAnswer AuditLog::list(const Call &call)
{
    const auto limit = readLimit(call.request);
    if (!limit)
        return tl::unexpected(limit.error());
    const auto guard = m_database.lock();
    const auto member =
        membershipIn(m_database, call.caller, call.captures[0], Role::Admin, "read the audit log");
    if (!member)
        return tl::unexpected(member.error());
    Statement query(m_database, R"(
        SELECT id, action, actor_email, target_type, target_id, metadata AS "metadata:json",
            created_at AS "created_at:time"
        FROM audit WHERE workspace_id = ? ORDER BY id DESC LIMIT ?)");
    return nlohmann::json{{"entries", rowsOf(query.bind(member->workspaceId).bind(*limit))}};
}

} // namespace velto::local
