// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace velto::local
{

/// The folder in which the service keeps its data. Several services may share one, but none can
/// empty it under another: whoever holds this object is known to be there.
class DataFolder final
{
public:
    /// Makes the folder where it is missing. With `reset` what the service has kept in it is
    /// deleted. Null with a sentence in `error` on failure.
    [[nodiscard]] static std::unique_ptr<DataFolder> open(const std::filesystem::path &folder,
                                                          bool reset, std::string &error);
    ~DataFolder();
    DataFolder(const DataFolder &) = delete;
    DataFolder &operator=(const DataFolder &) = delete;

    [[nodiscard]] const std::filesystem::path &database() const { return m_database; }

private:
    DataFolder(std::filesystem::path database, int lock);

    std::filesystem::path m_database;
    int m_lock;
};

} // namespace velto::local
