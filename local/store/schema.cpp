// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/store/schema.h"

#include <array>

namespace velto::local
{

namespace
{

constexpr auto Conversations = R"(
CREATE TABLE conversations (
    id TEXT PRIMARY KEY,
    channel TEXT NOT NULL,
    title TEXT NOT NULL DEFAULT '',
    summary TEXT NOT NULL DEFAULT '',
    created_at INTEGER NOT NULL,
    revision INTEGER NOT NULL DEFAULT 0
);
CREATE TABLE messages (
    conversation_id TEXT NOT NULL REFERENCES conversations(id) ON DELETE CASCADE,
    position INTEGER NOT NULL,
    id TEXT NOT NULL,
    role TEXT NOT NULL,
    parts TEXT NOT NULL,
    PRIMARY KEY (conversation_id, position)
) WITHOUT ROWID;
CREATE TABLE grants (
    id TEXT PRIMARY KEY,
    client_id TEXT NOT NULL,
    scope TEXT NOT NULL,
    created_at INTEGER NOT NULL,
    revoked INTEGER NOT NULL DEFAULT 0
);
CREATE TABLE codes (
    hash TEXT PRIMARY KEY,
    grant_id TEXT NOT NULL REFERENCES grants(id) ON DELETE CASCADE,
    redirect_uri TEXT NOT NULL,
    challenge TEXT NOT NULL,
    expires_at INTEGER NOT NULL,
    used INTEGER NOT NULL DEFAULT 0
);
CREATE TABLE refresh_tokens (
    hash TEXT PRIMARY KEY,
    grant_id TEXT NOT NULL REFERENCES grants(id) ON DELETE CASCADE,
    used INTEGER NOT NULL DEFAULT 0
);
CREATE TABLE access_tokens (
    hash TEXT PRIMARY KEY,
    grant_id TEXT NOT NULL REFERENCES grants(id) ON DELETE CASCADE,
    expires_at INTEGER NOT NULL
);
PRAGMA user_version = 1;
)";

// What was there before the service knew several users belongs to the one that it had, in the
// workspace that this user was in.
constexpr auto Company = R"(
ALTER TABLE grants ADD COLUMN user_id TEXT NOT NULL DEFAULT 'usr_robin';
ALTER TABLE conversations ADD COLUMN user_id TEXT NOT NULL DEFAULT 'usr_robin';
ALTER TABLE conversations ADD COLUMN workspace_id TEXT NOT NULL DEFAULT 'ws_harbourlight';
CREATE INDEX conversations_of ON conversations (user_id, workspace_id, created_at);
CREATE TABLE users (
    id TEXT PRIMARY KEY,
    email TEXT NOT NULL UNIQUE COLLATE NOCASE,
    display_name TEXT,
    image TEXT,
    administrator INTEGER NOT NULL DEFAULT 0,
    pending_agreements TEXT NOT NULL DEFAULT '[]',
    current_workspace_id TEXT,
    provider TEXT,
    codex_model TEXT,
    created_at INTEGER NOT NULL,
    updated_at INTEGER NOT NULL
);
CREATE TABLE workspaces (
    id TEXT PRIMARY KEY,
    slug TEXT NOT NULL UNIQUE,
    name TEXT NOT NULL,
    velto_email TEXT,
    velto_display_name TEXT,
    model TEXT NOT NULL,
    created_by TEXT NOT NULL REFERENCES users(id),
    created_at INTEGER NOT NULL,
    updated_at INTEGER NOT NULL
);
CREATE TABLE memberships (
    workspace_id TEXT NOT NULL REFERENCES workspaces(id) ON DELETE CASCADE,
    user_id TEXT NOT NULL REFERENCES users(id),
    person_id TEXT NOT NULL,
    role TEXT NOT NULL,
    joined_at INTEGER NOT NULL,
    PRIMARY KEY (workspace_id, user_id)
);
CREATE INDEX memberships_of ON memberships (user_id);
CREATE TABLE invites (
    id TEXT PRIMARY KEY,
    workspace_id TEXT NOT NULL REFERENCES workspaces(id) ON DELETE CASCADE,
    email TEXT NOT NULL COLLATE NOCASE,
    role TEXT NOT NULL,
    created_by TEXT NOT NULL REFERENCES users(id),
    created_at INTEGER NOT NULL,
    expires_at INTEGER NOT NULL,
    UNIQUE (workspace_id, email)
);
CREATE TABLE audit (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    workspace_id TEXT NOT NULL REFERENCES workspaces(id) ON DELETE CASCADE,
    action TEXT NOT NULL,
    actor_email TEXT,
    target_type TEXT,
    target_id TEXT,
    metadata TEXT,
    created_at INTEGER NOT NULL
);
CREATE INDEX audit_of ON audit (workspace_id, id);
CREATE TABLE catalog (
    id TEXT PRIMARY KEY,
    position INTEGER NOT NULL,
    version TEXT NOT NULL,
    source TEXT,
    name TEXT NOT NULL,
    tagline TEXT NOT NULL,
    what_it_does TEXT NOT NULL,
    icon_key TEXT,
    accent TEXT,
    example_queries TEXT,
    resources TEXT,
    integrations TEXT
);
CREATE TABLE installed_bundles (
    workspace_id TEXT NOT NULL REFERENCES workspaces(id) ON DELETE CASCADE,
    catalog_id TEXT NOT NULL REFERENCES catalog(id) ON DELETE CASCADE,
    enabled INTEGER NOT NULL DEFAULT 1,
    installed_at INTEGER NOT NULL,
    PRIMARY KEY (workspace_id, catalog_id)
);
CREATE TABLE skills (
    workspace_id TEXT NOT NULL REFERENCES workspaces(id) ON DELETE CASCADE,
    id TEXT NOT NULL,
    bundle_id TEXT,
    name TEXT NOT NULL,
    description TEXT NOT NULL,
    enabled INTEGER NOT NULL DEFAULT 1,
    updated_at INTEGER NOT NULL,
    PRIMARY KEY (workspace_id, id),
    FOREIGN KEY (workspace_id, bundle_id) REFERENCES installed_bundles ON DELETE CASCADE
);
CREATE TABLE subagents (
    workspace_id TEXT NOT NULL REFERENCES workspaces(id) ON DELETE CASCADE,
    id TEXT NOT NULL,
    bundle_id TEXT,
    name TEXT NOT NULL,
    description TEXT NOT NULL,
    enabled INTEGER NOT NULL DEFAULT 1,
    source TEXT,
    model TEXT,
    max_turns INTEGER,
    mcp_server_names TEXT,
    tools TEXT,
    updated_at INTEGER NOT NULL,
    PRIMARY KEY (workspace_id, id),
    FOREIGN KEY (workspace_id, bundle_id) REFERENCES installed_bundles ON DELETE CASCADE
);
CREATE TABLE connections (
    workspace_id TEXT NOT NULL REFERENCES workspaces(id) ON DELETE CASCADE,
    provider TEXT NOT NULL,
    connected INTEGER NOT NULL,
    details TEXT NOT NULL,
    PRIMARY KEY (workspace_id, provider)
);
CREATE TABLE usage (
    id INTEGER PRIMARY KEY,
    workspace_id TEXT NOT NULL REFERENCES workspaces(id) ON DELETE CASCADE,
    source TEXT NOT NULL,
    model TEXT NOT NULL,
    input_tokens INTEGER NOT NULL,
    output_tokens INTEGER NOT NULL,
    cache_creation_tokens INTEGER NOT NULL,
    cache_read_tokens INTEGER NOT NULL,
    calls INTEGER NOT NULL,
    user_messages INTEGER NOT NULL,
    created_at INTEGER NOT NULL
);
CREATE INDEX usage_of ON usage (workspace_id);
PRAGMA user_version = 2;
)";

// Each leads from the version that is its position to the next one.
constexpr std::array Steps{Conversations, Company};

int schemaVersion(Database &database)
{
    Statement statement(database, "PRAGMA user_version");
    return statement.step() ? static_cast<int>(statement.integer(0)) : -1;
}

} // namespace

bool prepareSchema(Database &database, std::string &error)
{
    const int version = schemaVersion(database);
    if (version > static_cast<int>(Steps.size())) {
        error = "it was written by a newer velto-local";
        return false;
    }
    Transaction transaction(database);
    bool good = version >= 0 && transaction.isOpen();
    for (auto step = static_cast<std::size_t>(version); good && step < Steps.size(); ++step)
        good = database.run(Steps[step]);
    if (good && transaction.commit())
        return true;
    error = database.reason();
    return false;
}

} // namespace velto::local
