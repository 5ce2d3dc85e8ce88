// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/store/database.h"

#include "local/store/schema.h"

#include <sqlite3.h>

#include <cstdio>

namespace velto::local
{

namespace
{

// NORMAL: with the write-ahead log, what is committed outlives the process however it dies; only
// a loss of power can take the last commits, and it leaves the file sound.
constexpr auto Settings = "PRAGMA journal_mode = WAL;"
                          "PRAGMA synchronous = NORMAL;"
                          "PRAGMA foreign_keys = ON;";

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

std::string Database::reason() const
{
    return m_failure.empty() ? sqlite3_errmsg(m_handle) : m_failure;
}

Statement::Statement(Database &database, const char *sql)
    : m_database(database)
{
    if (sqlite3_prepare_v2(database.handle(), sql, -1, &m_statement, nullptr) != SQLITE_OK)
        fail();
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

Statement &Statement::bindOrNull(std::string_view value)
{
    if (!value.empty())
        return bind(value);
    sqlite3_bind_null(m_statement, ++m_bound);
    return *this;
}

bool Statement::step()
{
    if (m_statement == nullptr)
        return false;
    const int result = sqlite3_step(m_statement);
    return result == SQLITE_ROW || (result != SQLITE_DONE && fail());
}

bool Statement::done()
{
    return m_statement != nullptr && (sqlite3_step(m_statement) == SQLITE_DONE || fail());
}

bool Statement::fail()
{
    const std::string reason = sqlite3_errmsg(m_database.m_handle);
    std::fprintf(stderr, "velto-local: database: %s\n", reason.c_str());
    if (m_database.m_failure.empty())
        m_database.m_failure = reason;
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

bool Statement::isNull(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

bool Statement::isInteger(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_INTEGER;
}

int Statement::columns() const
{
    return sqlite3_column_count(m_statement);
}

std::string_view Statement::name(int column) const
{
    const char *name = sqlite3_column_name(m_statement, column);
    return name != nullptr ? name : "";
}

Transaction::Transaction(Database &database)
    : m_database(database)
    , m_open(database.run("BEGIN IMMEDIATE"))
{
    database.m_failure.clear();
}

Transaction::~Transaction()
{
    if (m_open)
        m_database.run("ROLLBACK");
}

bool Transaction::commit()
{
    if (!m_open || !m_database.m_failure.empty() || !m_database.run("COMMIT"))
        return false;
    m_open = false;
    return true;
}

} // namespace velto::local
