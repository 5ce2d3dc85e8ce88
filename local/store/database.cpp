// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/store/database.h"

#include <sqlite3.h>

#include <cstdio>

namespace velto::local
{

namespace
{

constexpr int SchemaVersion = 1;

// NORMAL: with the write-ahead log, what is committed outlives the process however it dies; only
// a loss of power can take the last commits, and it leaves the file sound.
constexpr auto Settings = "PRAGMA journal_mode = WAL;"
                          "PRAGMA synchronous = NORMAL;"
                          "PRAGMA foreign_keys = ON;";

constexpr auto Schema = R"(
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

int schemaVersion(Database &database)
{
    Statement statement(database, "PRAGMA user_version");
    return statement.step() ? static_cast<int>(statement.integer(0)) : -1;
}

bool prepareSchema(Database &database, std::string &error)
{
    const int version = schemaVersion(database);
    if (version == SchemaVersion)
        return true;
    if (version > SchemaVersion) {
        error = "it was written by a newer velto-local";
        return false;
    }
    Transaction transaction(database);
    if (version == 0 && database.run(Schema) && transaction.commit())
        return true;
    error = sqlite3_errmsg(database.handle());
    return false;
}

} // namespace

std::unique_ptr<Database> Database::open(const std::filesystem::path &file, std::string &error)
{
    sqlite3 *handle = nullptr;
    const int opened = sqlite3_open_v2(
        file.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX,
        nullptr);
    auto database = std::unique_ptr<Database>(new Database(handle));
    if (opened != SQLITE_OK) {
        error = handle != nullptr ? sqlite3_errmsg(handle) : "out of memory";
        return nullptr;
    }
    sqlite3_busy_timeout(handle, 5000);
    if (!database->run(Settings)) {
        error = sqlite3_errmsg(handle);
        return nullptr;
    }
    return prepareSchema(*database, error) ? std::move(database) : nullptr;
}

Database::~Database()
{
    sqlite3_close(m_handle);
}

bool Database::run(const char *sql)
{
    return sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

Statement::Statement(Database &database, const char *sql)
    : m_database(database)
{
    if (sqlite3_prepare_v2(database.handle(), sql, -1, &m_statement, nullptr) != SQLITE_OK)
        std::fprintf(stderr, "velto-local: database: %s\n", sqlite3_errmsg(database.handle()));
}

Statement::~Statement()
{
    sqlite3_finalize(m_statement);
}

Statement &Statement::bind(std::string_view value)
{
    // A view of nothing may have no address, which would bind NULL.
    sqlite3_bind_text64(m_statement, ++m_bound, value.empty() ? "" : value.data(), value.size(),
                        SQLITE_TRANSIENT, SQLITE_UTF8);
    return *this;
}

Statement &Statement::bind(std::int64_t value)
{
    sqlite3_bind_int64(m_statement, ++m_bound, value);
    return *this;
}

bool Statement::step()
{
    return m_statement != nullptr && sqlite3_step(m_statement) == SQLITE_ROW;
}

bool Statement::done()
{
    if (m_statement != nullptr && sqlite3_step(m_statement) == SQLITE_DONE)
        return true;
    std::fprintf(stderr, "velto-local: database: %s\n", sqlite3_errmsg(m_database.handle()));
    return false;
}

bool Statement::change()
{
    return done() && sqlite3_changes(m_database.handle()) > 0;
}

std::string Statement::text(int column) const
{
    const auto *data = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column));
    return data != nullptr ? std::string(data, size) : std::string();
}

std::int64_t Statement::integer(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

Transaction::Transaction(Database &database)
    : m_database(database)
    , m_open(database.run("BEGIN IMMEDIATE"))
{}

Transaction::~Transaction()
{
    if (m_open)
        m_database.run("ROLLBACK");
}

bool Transaction::commit()
{
    if (!m_open || !m_database.run("COMMIT"))
        return false;
    m_open = false;
    return true;
}

} // namespace velto::local
