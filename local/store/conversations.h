// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/http/route.h"
#include "local/store/database.h"
#include "local/store/turns.h"

#include <optional>
#include <string>
#include <vector>

namespace velto::local
{

/// One row of the history.
struct ConversationRow
{
    std::string id;
    std::string channel;
    std::string title;
    std::string summary;
    std::int64_t messageCount = 0;
    std::int64_t createdAt = 0;
};

/// What an answer needs to find its place again when it is finished.
struct OpenConversation
{
    std::string id;
    std::int64_t revision = 0;
    std::vector<Turn> turns;
};

/// The conversations of all users. Each belongs to one user in one workspace, and only a caller who
/// is that user in that workspace meets it. Safe from any thread.
class ConversationStore final
{
public:
    ConversationStore(Database &database, Clock clock);

    /// Newest first, of one channel or, when it is empty, of all.
    [[nodiscard]] std::vector<ConversationRow> list(const Caller &caller, std::int64_t limit,
                                                    const std::string &channel) const;
    [[nodiscard]] bool contains(const Caller &caller, const std::string &id) const;
    [[nodiscard]] std::optional<std::vector<Turn>> turns(const Caller &caller,
                                                         const std::string &id) const;

    /// Stores posted turns, in the conversation `id` or in a new one when it is empty. Absent
    /// when the database refuses.
    [[nodiscard]] std::optional<OpenConversation>
    accept(const Caller &caller, const std::string &id, const std::vector<Turn> &posted);
    /// Adds an answer. False when the conversation is gone or has taken other turns meanwhile:
    /// the answer then has no place.
    bool addAnswer(const OpenConversation &conversation, const Turn &answer);
    bool rename(const Caller &caller, const std::string &id, const std::string &title);
    bool remove(const Caller &caller, const std::string &id);

private:
    [[nodiscard]] bool hasRow(const Caller &caller, const std::string &id) const;
    [[nodiscard]] std::vector<Turn> readTurns(const std::string &id) const;
    [[nodiscard]] bool insertRow(const Caller &caller, const std::string &id,
                                 const std::vector<Turn> &turns);
    [[nodiscard]] bool insertTurn(const std::string &id, std::int64_t position, const Turn &turn);
    [[nodiscard]] bool writeTurns(const std::string &id, const std::vector<Turn> &before,
                                  const std::vector<Turn> &after);

    Database &m_database;
    Clock m_clock;
};

} // namespace velto::local
