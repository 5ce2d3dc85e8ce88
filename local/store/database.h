// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace velto::local
{

/// The one SQLite file of the service. Its stores share the connection; whoever uses it holds
/// `lock()` for the whole of one operation.
class Database
{
public:
    /// Opens the file, making it and its tables where they are missing. Null on failure, with
    /// the reason in `error`.
    [[nodiscard]] static std::unique_ptr<Database> open(const std::filesystem::path &file,
                                                        std::string &error);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    [[nodiscard]] std::unique_lock<std::mutex> lock() { return std::unique_lock(m_mutex); }
    [[nodiscard]] sqlite3 *handle() const { return m_handle; }
    /// Runs statements that give back no rows.
    bool run(const char *sql);

private:
    explicit Database(sqlite3 *handle)
        : m_handle(handle)
    {}

    sqlite3 *m_handle;
    std::mutex m_mutex;
};

/// A prepared statement: bind its values in their order, then step through its rows.
class Statement final
{
public:
    Statement(Database &database, const char *sql);
    ~Statement();
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    Statement &bind(std::string_view value);
    Statement &bind(std::int64_t value);

    /// True while there is a row to read.
    [[nodiscard]] bool step();
    /// Runs a statement that gives back no row. True when it changed at least one.
    bool change();
    /// Runs a statement that gives back no row. True unless it failed.
    [[nodiscard]] bool done();

    [[nodiscard]] std::string text(int column) const;
    [[nodiscard]] std::int64_t integer(int column) const;

private:
    Database &m_database;
    sqlite3_stmt *m_statement = nullptr;
    int m_bound = 0;
};

/// Rolls back unless it was committed.
class Transaction final
{
public:
    explicit Transaction(Database &database);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    /// False when it could not begin; nothing may be written then.
    [[nodiscard]] bool isOpen() const { return m_open; }
    [[nodiscard]] bool commit();

private:
    Database &m_database;
    bool m_open;
};

} // namespace velto::local
