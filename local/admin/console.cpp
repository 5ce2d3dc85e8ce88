// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/admin/console.h"

#include "local/company/workspaces.h"
#include "local/store/change.h"
#include "local/store/rows.h"

namespace velto::local
{

using nlohmann::json;

namespace
{

constexpr std::int64_t Day = 86'400;
constexpr std::int64_t Week = 7 * Day;
constexpr std::int64_t Month = 30 * Day;
constexpr std::int64_t RecentRows = 5;
constexpr std::int64_t AllRows = -1;

constexpr auto TotalsQuery = R"(
    SELECT (SELECT count(*) FROM users) AS users, (SELECT count(*) FROM workspaces) AS workspaces,
        (SELECT count(*) FROM memberships) AS memberships,
        (SELECT count(*) FROM workspaces WHERE velto_email IS NOT NULL) AS workspaces_with_velto)";

constexpr auto TrendQuery = R"(
    SELECT (SELECT count(*) FROM users WHERE created_at >= ?1) AS users_last7d,
        (SELECT count(*) FROM users WHERE created_at >= ?2) AS users_last30d,
        (SELECT count(*) FROM workspaces WHERE created_at >= ?1) AS workspaces_last7d,
        (SELECT count(*) FROM workspaces WHERE created_at >= ?2) AS workspaces_last30d)";

constexpr auto UsersQuery = R"(
    SELECT id, email, display_name,
        (SELECT count(*) FROM memberships WHERE user_id = users.id) AS workspace_count,
        created_at AS "created_at:time", updated_at AS "updated_at:time"
    FROM users ORDER BY created_at DESC, id LIMIT ?)";

constexpr auto WorkspacesQuery = R"(
    SELECT id, slug, name, velto_email,
        (SELECT email FROM users WHERE users.id = created_by) AS created_by_email,
        (SELECT count(*) FROM memberships WHERE workspace_id = workspaces.id) AS member_count,
        created_at AS "created_at:time"
    FROM workspaces ORDER BY created_at DESC, id LIMIT ?)";

constexpr auto MembersQuery = R"(
    SELECT user_id, email, display_name, role, joined_at AS "joined_at:time"
    FROM memberships JOIN users ON users.id = user_id
    WHERE workspace_id = ? ORDER BY joined_at, user_id)";

json rowsUpTo(Database &database, const char *sql, std::int64_t limit)
{
    Statement query(database, sql);
    return rowsOf(query.bind(limit));
}

// The entries of a list are the records of the console, less what only the console shows.
json without(json rows, std::initializer_list<const char *> keys)
{
    for (json &row : rows) {
        for (const char *key : keys)
            row.erase(key);
    }
    return rows;
}

} // namespace

Console::Console(Database &database, Clock clock, AuditLog &audit, const UsageLedger &usage)
    : m_database(database)
    , m_clock(std::move(clock))
    , m_audit(audit)
    , m_usage(usage)
{}

JsonAnswer Console::overview(const Call &)
{
    const auto guard = m_database.lock();
    Statement totals(m_database, TotalsQuery);
    Statement trend(m_database, TrendQuery);
    trend.bind(m_clock() - Week).bind(m_clock() - Month);
    return json{{"totals", rowOf(totals)},
                {"trend", rowOf(trend)},
                {"recent_users", without(rowsUpTo(m_database, UsersQuery, RecentRows),
                                         {"workspace_count", "updated_at"})},
                {"recent_workspaces",
                 without(rowsUpTo(m_database, WorkspacesQuery, RecentRows), {"velto_email"})}};
}

JsonAnswer Console::users(const Call &)
{
    const auto guard = m_database.lock();
    return json{{"users", rowsUpTo(m_database, UsersQuery, AllRows)}};
}

JsonAnswer Console::workspaces(const Call &)
{
    const auto guard = m_database.lock();
    return json{{"workspaces", rowsUpTo(m_database, WorkspacesQuery, AllRows)}};
}

JsonAnswer Console::workspace(const Call &call)
{
    const auto guard = m_database.lock();
    Statement find(m_database, "SELECT id FROM workspaces WHERE slug = ?");
    if (!find.bind(call.captures[0]).step())
        return unknown("such workspace");
    const std::string id = find.text(0);
    Statement members(m_database, MembersQuery);
    json detail = m_usage.summary(id);
    detail["workspace"] = workspaceRecord(m_database, id);
    detail["members"] = rowsOf(members.bind(id));
    return detail;
}

JsonAnswer Console::catalog(const Call &)
{
    const auto guard = m_database.lock();
    Statement query(m_database, R"(
        SELECT id, version, source, name, tagline, what_it_does, icon_key, accent,
            example_queries AS "example_queries:json"
        FROM catalog ORDER BY position, id)");
    return json{{"entries", rowsOf(query)}};
}

JsonAnswer Console::removeFromCatalog(const Call &call)
{
    return change(m_database, [&]() -> JsonAnswer {
        const std::string &id = call.captures[0];
        Statement installed(m_database,
                            "SELECT workspace_id FROM installed_bundles WHERE catalog_id = ?");
        const json workspaces = rowsOf(installed.bind(id));
        Statement drop(m_database, "DELETE FROM catalog WHERE id = ?");
        if (!drop.bind(id).change())
            return unknown("such bundle");
        for (const json &row : workspaces)
            m_audit.record(call.caller, {row["workspace_id"].get_ref<const std::string &>(),
                                         "bundle.withdrawn", "bundle", id});
        return nullptr;
    });
}

} // namespace velto::local
