// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/company/audit.h"
#include "local/company/roles.h"

#include <string>

namespace velto::local
{

/// Invites that wait for an answer. Each is good for a week.
class Invites final
{
public:
    Invites(Database &database, Clock clock, AuditLog &audit);

    [[nodiscard]] JsonAnswer list(const Call &call);
    /// Body: {"email": one address or several with commas between, "role": "member" or "admin"}.
    /// Tells of each address whether it was invited, or why it wasn't.
    [[nodiscard]] JsonAnswer create(const Call &call);
    [[nodiscard]] JsonAnswer revoke(const Call &call);

private:
    [[nodiscard]] std::string flawOf(const std::string &workspaceId, std::string_view email);
    [[nodiscard]] std::string invite(const Caller &caller, const std::string &workspaceId,
                                     std::string_view email, Role role);

    Database &m_database;
    Clock m_clock;
    AuditLog &m_audit;
};

/// Whether the text has the form of an email address.
[[nodiscard]] bool isEmail(std::string_view text);

} // namespace velto::local
