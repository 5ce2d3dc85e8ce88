// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/company/audit.h"
#include "local/library/integrations.h"

#include <optional>
#include <string>

namespace velto::local
{

struct Person
{
    std::string id;
    std::string name;
    std::string email;
};

/// The users, and what each of them sees of themselves.
class People final
{
public:
    People(Database &database, AuditLog &audit, const Integrations &integrations);

    [[nodiscard]] std::optional<Person> person(const std::string &id) const;
    /// A user in the workspace that they are in; absent when there is no such user.
    [[nodiscard]] std::optional<Caller> callerOf(const std::string &userId) const;

    [[nodiscard]] JsonAnswer me(const Call &call);
    [[nodiscard]] JsonAnswer profile(const Call &call);
    /// Body: {"workspace_id": text}.
    [[nodiscard]] JsonAnswer switchWorkspace(const Call &call);

private:
    Database &m_database;
    AuditLog &m_audit;
    const Integrations &m_integrations;
};

} // namespace velto::local
