// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace velto::local
{

/// Unix seconds, injected so that tests can move it.
using Clock = std::function<std::int64_t()>;

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
    /// Why the last call or transaction failed, for a person.
    [[nodiscard]] std::string reason() const;

private:
    explicit Database(sqlite3 *handle)
        : m_handle(handle)
    {}

    friend class Statement;
    friend class Transaction;

    sqlite3 *m_handle;
    std::mutex m_mutex;
    /// Why a statement has failed since the last transaction began; empty when none has.
    std::string m_failure;
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
    /// NULL when the text is empty.
    Statement &bindOrNull(std::string_view value);

    /// True while there is a row to read.
    [[nodiscard]] bool step();
    /// Runs a statement that gives back no row. True when it changed at least one.
    bool change();
    /// Runs a statement that gives back no row. True unless it failed; in a transaction it needn't
    /// be asked, since a failure keeps the transaction from being committed.
    bool done();

    [[nodiscard]] std::string text(int column) const;
    [[nodiscard]] std::int64_t integer(int column) const;
    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] bool isInteger(int column) const;
    [[nodiscard]] int columns() const;
    [[nodiscard]] std::string_view name(int column) const;

private:
    /// Reports the failure, so that the open transaction can't be committed; false.
    bool fail();

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
    /// False when any of its statements has failed: all of them count, or none.
    [[nodiscard]] bool commit();

private:
    Database &m_database;
    bool m_open;
};

} // namespace velto::local
