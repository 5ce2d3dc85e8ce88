// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/company/audit.h"

#include <string_view>

namespace velto::local
{

/// The record of a workspace, null when there is none. Wants the database's lock.
[[nodiscard]] nlohmann::json workspaceRecord(Database &database, std::string_view id);

/// A workspace as its members see it.
class Workspaces final
{
public:
    explicit Workspaces(Database &database);

    [[nodiscard]] JsonAnswer detail(const Call &call);
    /// Takes with it everything that belongs to the workspace, its audit log too.
    [[nodiscard]] JsonAnswer remove(const Call &call);

private:
    Database &m_database;
};

} // namespace velto::local
