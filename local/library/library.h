// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/company/audit.h"

namespace velto::local
{

/// The skills or the subagents of the caller's workspace.
class Library final
{
public:
    enum class Kind { Skills, Subagents };

    Library(Kind kind, Database &database, Clock clock, AuditLog &audit);

    [[nodiscard]] JsonAnswer list(const Call &call);
    /// Body: {"enabled": truth value}.
    [[nodiscard]] JsonAnswer setEnabled(const Call &call);
    [[nodiscard]] JsonAnswer remove(const Call &call);

private:
    [[nodiscard]] std::string_view noun() const;
    [[nodiscard]] std::string table() const;

    Kind m_kind;
    Database &m_database;
    Clock m_clock;
    AuditLog &m_audit;
};

} // namespace velto::local
