// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/seed/plant.h"

#include "local/library/marketplace.h"
#include "local/library/models.h"
#include "local/seed/catalog.h"
#include "local/seed/company.h"
#include "local/seed/library.h"
#include "local/text.h"

#include <charconv>

namespace velto::local
{

namespace
{

constexpr std::int64_t Day = 86'400;
constexpr std::int64_t InviteDays = 7;

// Writes the company into a transaction that is open; a statement that fails spoils it.
class Planter final
{
public:
    Planter(Database &database, std::int64_t now)
        : m_database(database)
        , m_now(now)
    {}

    void plant()
    {
        for (const seed::User &user : seed::users())
            add(user);
        for (const seed::Workspace &workspace : seed::workspaces())
            add(workspace);
        for (const seed::Member &member : seed::members())
            add(member);
        for (const seed::Invite &invite : seed::invites())
            add(invite);
        std::int64_t position = 0;
        for (const seed::Bundle &bundle : seed::bundles())
            add(bundle, ++position);
        for (const seed::Installation &installation : seed::installations())
            add(installation);
        for (const seed::Skill &skill : seed::skills())
            add(skill);
        for (const seed::Subagent &subagent : seed::subagents())
            add(subagent);
        for (const seed::Connection &connection : seed::connections())
            add(connection);
        for (const seed::Usage &usage : seed::usage())
            add(usage);
        countFormerAnswers();
        writeHistory();
    }

private:
    // Not all at midnight.
    [[nodiscard]] std::int64_t daysAgo(std::int64_t days, std::string_view who) const
    {
        return m_now - days * Day - static_cast<std::int64_t>(who.size() * 1'777 % 20'000);
    }

    void add(const seed::User &user)
    {
        const std::int64_t time = daysAgo(user.daysAgo, user.email);
        Statement(m_database, "INSERT INTO users (id, email, display_name, administrator,"
                              " pending_agreements, created_at, updated_at)"
                              " VALUES (?, ?, ?, ?, ?, ?, ?)")
            .bind(user.id)
            .bind(user.email)
            .bindOrNull(user.displayName)
            .bind(std::int64_t{user.administrator})
            .bind(user.pendingAgreements)
            .bind(time)
            .bind(time)
            .done();
    }

    void add(const seed::Workspace &workspace)
    {
        const std::int64_t time = daysAgo(workspace.daysAgo, workspace.name);
        Statement(m_database, "INSERT INTO workspaces (id, slug, name, velto_email,"
                              " velto_display_name, model, created_by, created_at, updated_at)"
                              " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)")
            .bind(workspace.id)
            .bind(workspace.slug)
            .bind(workspace.name)
            .bindOrNull(workspace.veltoEmail)
            .bindOrNull(workspace.veltoEmail.empty() ? "" : "velto")
            .bind(workspace.model)
            .bind(workspace.createdBy)
            .bind(time)
            .bind(time)
            .done();
    }

    void add(const seed::Member &member)
    {
        const std::string person = "per_" + std::string(member.userId.substr(4));
        Statement(m_database, "INSERT INTO memberships (workspace_id, user_id, person_id, role,"
                              " joined_at) VALUES (?1, ?2, ?3, ?4, max(?5,"
                              " (SELECT created_at FROM workspaces WHERE id = ?1)))")
            .bind(member.workspaceId)
            .bind(member.userId)
            .bind(person)
            .bind(roleName(member.role))
            .bind(daysAgo(member.daysAgo, member.userId))
            .done();
    }

    void add(const seed::Invite &invite)
    {
        const std::int64_t time = daysAgo(invite.daysAgo, invite.email);
        Statement(m_database, "INSERT INTO invites (id, workspace_id, email, role, created_by,"
                              " created_at, expires_at) VALUES (?, ?, ?, ?, ?, ?, ?)")
            .bind(invite.id)
            .bind(invite.workspaceId)
            .bind(invite.email)
            .bind(roleName(invite.role))
            .bind(invite.createdBy)
            .bind(time)
            .bind(time + InviteDays * Day)
            .done();
    }

    void add(const seed::Bundle &bundle, std::int64_t position)
    {
        Statement(m_database, "INSERT INTO catalog (id, position, version, source, name, tagline,"
                              " what_it_does, icon_key, accent, example_queries, resources,"
                              " integrations) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
            .bind(bundle.id)
            .bind(position)
            .bind(bundle.version)
            .bindOrNull(bundle.source)
            .bind(bundle.name)
            .bind(bundle.tagline)
            .bind(bundle.whatItDoes)
            .bindOrNull(bundle.iconKey)
            .bindOrNull(bundle.accent)
            .bindOrNull(bundle.exampleQueries)
            .bindOrNull(bundle.resources)
            .bindOrNull(bundle.integrations)
            .done();
    }

    void add(const seed::Installation &installation)
    {
        const std::string workspace(installation.workspaceId);
        const std::string bundle(installation.catalogId);
        installBundle(m_database, workspace, bundle, daysAgo(installation.daysAgo, bundle));
        Statement(m_database, "UPDATE installed_bundles SET enabled = ?"
                              " WHERE workspace_id = ? AND catalog_id = ?")
            .bind(std::int64_t{installation.enabled})
            .bind(workspace)
            .bind(bundle)
            .done();
    }

    void add(const seed::Skill &skill)
    {
        Statement(m_database, "INSERT INTO skills (workspace_id, id, name, description, enabled,"
                              " updated_at) VALUES (?, ?, ?, ?, ?, ?)")
            .bind(skill.workspaceId)
            .bind(skill.id)
            .bind(skill.name)
            .bind(skill.description)
            .bind(std::int64_t{skill.enabled})
            .bind(daysAgo(skill.daysAgo, skill.id))
            .done();
    }

    void add(const seed::Subagent &subagent)
    {
        Statement(m_database, "INSERT INTO subagents (workspace_id, id, name, description, enabled,"
                              " source, model, max_turns, mcp_server_names, tools, updated_at)"
                              " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
            .bind(subagent.workspaceId)
            .bind(subagent.id)
            .bind(subagent.name)
            .bind(subagent.description)
            .bind(std::int64_t{subagent.enabled})
            .bindOrNull(subagent.source)
            .bindOrNull(subagent.model)
            .bindOrNull(subagent.maxTurns)
            .bindOrNull(subagent.mcpServerNames)
            .bindOrNull(subagent.tools)
            .bind(daysAgo(subagent.daysAgo, subagent.id))
            .done();
    }

    void add(const seed::Connection &connection)
    {
        auto details = nlohmann::json::parse(connection.details, nullptr, false);
        for (auto &value : details) {
            if (const auto *text = value.get_ptr<std::string *>(); text && text->starts_with('@')) {
                std::int64_t days = 0;
                std::from_chars(text->data() + 1, text->data() + text->size(), days);
                value = isoTime(daysAgo(-days, connection.provider));
            }
        }
        Statement(m_database, "INSERT INTO connections (workspace_id, provider, connected, details)"
                              " VALUES (?, ?, ?, ?)")
            .bind(connection.workspaceId)
            .bind(connection.provider)
            .bind(std::int64_t{connection.connected})
            .bind(details.dump())
            .done();
    }

    void add(const seed::Usage &usage)
    {
        Statement(m_database, "INSERT INTO usage (workspace_id, source, model, input_tokens,"
                              " output_tokens, cache_creation_tokens, cache_read_tokens, calls,"
                              " user_messages, created_at) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
            .bind(usage.workspaceId)
            .bind(usage.source)
            .bind(usage.model)
            .bind(usage.input)
            .bind(usage.output)
            .bind(usage.cacheCreation)
            .bind(usage.cacheRead)
            .bind(usage.calls)
            .bind(usage.userMessages)
            .bind(m_now)
            .done();
    }

    // A file of the former schema holds conversations of which nothing was counted.
    void countFormerAnswers()
    {
        Statement(m_database, R"(
            INSERT INTO usage (workspace_id, source, model, input_tokens, output_tokens,
                cache_creation_tokens, cache_read_tokens, calls, user_messages, created_at)
            SELECT workspace_id, channel, ?, sum(iif(role = 'user', length(parts), 0)) / 4,
                sum(iif(role = 'user', 0, length(parts))) / 4, 0, 0, sum(role <> 'user'),
                sum(role = 'user'), ?
            FROM messages JOIN conversations ON conversations.id = conversation_id
            GROUP BY workspace_id, channel)")
            .bind(DefaultModel)
            .bind(m_now)
            .done();
    }

    // The log tells how the company came to be what it is.
    void writeHistory()
    {
        Statement(m_database, R"(
            INSERT INTO audit (workspace_id, action, actor_email, target_type, target_id, metadata,
                created_at)
            SELECT workspace_id, action, (SELECT email FROM users WHERE users.id = actor),
                target_type, target_id, metadata, at
            FROM (
                SELECT id AS workspace_id, 'workspace.created' AS action, created_by AS actor,
                    'workspace' AS target_type, id AS target_id,
                    json_object('name', name) AS metadata, created_at AS at, 0 AS rank
                FROM workspaces
                UNION ALL
                SELECT workspace_id, 'member.joined', user_id, 'user', user_id,
                    json_object('role', role), joined_at, 1
                FROM memberships
                UNION ALL
                SELECT workspace_id, 'invite.created', created_by, 'invite', id,
                    json_object('email', email, 'role', role), created_at, 2
                FROM invites
                UNION ALL
                SELECT workspace_id, 'bundle.installed', workspaces.created_by, 'bundle', catalog_id,
                    json_object('name', catalog.name, 'version', version), installed_at, 3
                FROM installed_bundles JOIN catalog ON catalog.id = catalog_id
                    JOIN workspaces ON workspaces.id = workspace_id)
            ORDER BY at, rank)")
            .done();
    }

    Database &m_database;
    std::int64_t m_now;
};

} // namespace

bool plantCompany(Database &database, std::int64_t now)
{
    const auto guard = database.lock();
    Transaction transaction(database);
    if (!transaction.isOpen())
        return false;
    if (Statement(database, "SELECT 1 FROM users").step())
        return true;
    Planter(database, now).plant();
    return transaction.commit();
}

} // namespace velto::local
