// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/http/route.h"
#include "local/library/models.h"
#include "local/store/database.h"
#include "local/store/turns.h"

#include <nlohmann/json.hpp>

#include <string>

namespace velto::local
{

/// What one answer has used.
struct UsageEntry
{
    std::string workspaceId;
    /// Where the question came from, as in "chat_ui".
    std::string source;
    std::string model;
    TokenCount tokens;
    std::int64_t calls = 1;
    std::int64_t userMessages = 1;
};

/// An estimate, four bytes to a token. The history up to the last answer but one is read from the
/// cache, what has come since is written to it, and the user's last words are plain input.
[[nodiscard]] TokenCount estimateTokens(const std::vector<Turn> &asked,
                                        const nlohmann::json &answer);
/// The agent's calls to its model: one for the answer and one more for each tool.
[[nodiscard]] std::int64_t modelCalls(const nlohmann::json &answer);

/// What the workspaces have used. Entries stay when the conversation is deleted: it was used all
/// the same.
class UsageLedger final
{
public:
    UsageLedger(Database &database, Clock clock);

    /// Does nothing when the workspace is gone.
    void record(const UsageEntry &entry);

    /// The members that the details of a workspace hold about its use; none when nothing was used.
    /// Wants the database's lock.
    [[nodiscard]] nlohmann::json summary(const std::string &workspaceId) const;

private:
    Database &m_database;
    Clock m_clock;
};

} // namespace velto::local
