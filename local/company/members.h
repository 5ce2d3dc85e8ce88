// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/company/audit.h"
#include "local/company/roles.h"

namespace velto::local
{

/// Who belongs to a workspace. No change leaves a workspace without an owner.
class Members final
{
public:
    Members(Database &database, AuditLog &audit);

    [[nodiscard]] JsonAnswer list(const Call &call);
    /// Body: {"role": "member", "admin" or "owner"}. Only owners make and unmake owners.
    [[nodiscard]] JsonAnswer setRole(const Call &call);
    /// Everyone may remove themselves.
    [[nodiscard]] JsonAnswer remove(const Call &call);

private:
    struct Target;
    [[nodiscard]] OrRefusal<Target> target(const Call &call, const Membership &actor);

    Database &m_database;
    AuditLog &m_audit;
};

} // namespace velto::local
