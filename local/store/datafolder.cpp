// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/store/datafolder.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace velto::local
{

namespace fs = std::filesystem;

namespace
{

constexpr auto DatabaseName = "velto-local.sqlite";
constexpr auto LockName = "velto-local.lock";

bool emptyFolder(const fs::path &database, std::string &error)
{
    // The database last: its journal without it would spoil the next one.
    for (const char *suffix : {"-wal", "-shm", ""}) {
        fs::path file = database;
        file += suffix;
        std::error_code failure;
        fs::remove(file, failure);
        if (failure) {
            error = "can't delete " + file.string() + ": " + failure.message();
            return false;
        }
    }
    return true;
}

} // namespace

DataFolder::DataFolder(fs::path database, int lock)
    : m_database(std::move(database))
    , m_lock(lock)
{}

DataFolder::~DataFolder()
{
    ::close(m_lock);
}

std::unique_ptr<DataFolder> DataFolder::open(const fs::path &folder, bool reset, std::string &error)
{
    std::error_code failure;
    fs::create_directories(folder, failure);
    // What is said to an agent is nobody else's business.
    if (!failure)
        fs::permissions(folder, fs::perms::owner_all, failure);
    if (failure) {
        error = "can't use the folder " + folder.string() + ": " + failure.message();
        return nullptr;
    }
    const fs::path lockFile = folder / LockName;
    const int lock = ::open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (lock < 0) {
        error = "can't use " + lockFile.string() + ": " + std::strerror(errno);
        return nullptr;
    }
    auto held = std::unique_ptr<DataFolder>(new DataFolder(folder / DatabaseName, lock));
    if (reset && ::flock(lock, LOCK_EX | LOCK_NB) != 0) {
        error = "another velto-local uses " + folder.string() + "; end it before --reset";
        return nullptr;
    }
    if (reset && !emptyFolder(held->m_database, error))
        return nullptr;
    if (::flock(lock, LOCK_SH) == 0)
        return held;
    error = "can't lock " + lockFile.string() + ": " + std::strerror(errno);
    return nullptr;
}

} // namespace velto::local
