// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/store/conversations.h"

#include "local/auth/secrets.h"
#include "local/http/reply.h"
#include "local/text.h"

#include <algorithm>

namespace velto::local
{

namespace
{

constexpr std::size_t TitleLength = 60;
constexpr std::size_t SummaryLength = 120;

std::string titleFrom(const std::vector<Turn> &turns)
{
    const auto first = std::find_if(turns.begin(), turns.end(),
                                    [](const Turn &turn) { return turn.role == "user"; });
    return first == turns.end() ? std::string() : shortened(plainText(*first), TitleLength);
}

// What an answer came to: its last text, after all tools.
std::string summaryFrom(const Turn &answer)
{
    for (auto part = answer.parts.rbegin(); part != answer.parts.rend(); ++part) {
        if (const std::string *text = textMember(*part, "text"))
            return gist(*text, SummaryLength);
    }
    return {};
}

} // namespace

ConversationStore::ConversationStore(Database &database, Clock clock)
    : m_database(database)
    , m_clock(std::move(clock))
{}

std::vector<ConversationRow> ConversationStore::list(const Caller &caller, std::int64_t limit,
                                                     const std::string &channel) const
{
    const auto guard = m_database.lock();
    Statement query(m_database,
                    "SELECT id, channel, title, summary, created_at,"
                    " (SELECT count(*) FROM messages WHERE conversation_id = conversations.id)"
                    " FROM conversations WHERE user_id = ?1 AND workspace_id = ?2"
                    " AND (?3 = '' OR channel = ?3)"
                    " ORDER BY created_at DESC, rowid DESC LIMIT ?4");
    query.bind(caller.userId).bind(caller.workspaceId).bind(channel).bind(limit);
    std::vector<ConversationRow> rows;
    while (query.step())
        rows.push_back({query.text(0), query.text(1), query.text(2), query.text(3),
                        query.integer(5), query.integer(4)});
    return rows;
}

bool ConversationStore::contains(const Caller &caller, const std::string &id) const
{
    const auto guard = m_database.lock();
    return hasRow(caller, id);
}

std::optional<std::vector<Turn>> ConversationStore::turns(const Caller &caller,
                                                          const std::string &id) const
{
    const auto guard = m_database.lock();
    if (!hasRow(caller, id))
        return std::nullopt;
    return readTurns(id);
}

std::optional<OpenConversation> ConversationStore::accept(const Caller &caller,
                                                          const std::string &id,
                                                          const std::vector<Turn> &posted)
{
    const auto guard = m_database.lock();
    Transaction transaction(m_database);
    if (!transaction.isOpen())
        return std::nullopt;
    OpenConversation open{id.empty() ? randomId("conv_") : id, 0, {}};
    const std::vector<Turn> before = readTurns(open.id);
    open.turns = mergeTurns(before, posted);
    for (Turn &turn : open.turns) {
        if (turn.id.empty())
            turn.id = randomId("msg_");
    }
    if (id.empty() && !insertRow(caller, open.id, open.turns))
        return std::nullopt;
    Statement next(m_database, "UPDATE conversations SET revision = revision + 1 WHERE id = ?"
                               " RETURNING revision");
    if (!next.bind(open.id).step())
        return std::nullopt;
    open.revision = next.integer(0);
    if (next.step() || !writeTurns(open.id, before, open.turns) || !transaction.commit())
        return std::nullopt;
    return open;
}

bool ConversationStore::addAnswer(const OpenConversation &conversation, const Turn &answer)
{
    const auto guard = m_database.lock();
    Transaction transaction(m_database);
    Statement claim(m_database, "UPDATE conversations SET revision = revision + 1, summary = ?"
                                " WHERE id = ? AND revision = ?");
    claim.bind(summaryFrom(answer)).bind(conversation.id).bind(conversation.revision);
    const auto position = static_cast<std::int64_t>(conversation.turns.size());
    return transaction.isOpen() && claim.change() &&
           insertTurn(conversation.id, position, answer) && transaction.commit();
}

bool ConversationStore::rename(const Caller &caller, const std::string &id,
                               const std::string &title)
{
    const auto guard = m_database.lock();
    return Statement(m_database, "UPDATE conversations SET title = ?"
                                 " WHERE id = ? AND user_id = ? AND workspace_id = ?")
        .bind(title)
        .bind(id)
        .bind(caller.userId)
        .bind(caller.workspaceId)
        .change();
}

bool ConversationStore::remove(const Caller &caller, const std::string &id)
{
    const auto guard = m_database.lock();
    return Statement(m_database, "DELETE FROM conversations"
                                 " WHERE id = ? AND user_id = ? AND workspace_id = ?")
        .bind(id)
        .bind(caller.userId)
        .bind(caller.workspaceId)
        .change();
}

bool ConversationStore::hasRow(const Caller &caller, const std::string &id) const
{
    return Statement(m_database, "SELECT 1 FROM conversations"
                                 " WHERE id = ? AND user_id = ? AND workspace_id = ?")
        .bind(id)
        .bind(caller.userId)
        .bind(caller.workspaceId)
        .step();
}

std::vector<Turn> ConversationStore::readTurns(const std::string &id) const
{
    Statement query(m_database, "SELECT id, role, parts FROM messages"
                                " WHERE conversation_id = ? ORDER BY position");
    query.bind(id);
    std::vector<Turn> turns;
    while (query.step()) {
        auto parts = nlohmann::json::parse(query.text(2), nullptr, false);
        if (parts.is_array())
            turns.push_back({query.text(0), query.text(1), std::move(parts)});
    }
    return turns;
}

bool ConversationStore::insertRow(const Caller &caller, const std::string &id,
                                  const std::vector<Turn> &turns)
{
    return Statement(m_database, "INSERT INTO conversations (id, user_id, workspace_id, channel,"
                                 " title, created_at) VALUES (?, ?, ?, 'chat_ui', ?, ?)")
        .bind(id)
        .bind(caller.userId)
        .bind(caller.workspaceId)
        .bind(titleFrom(turns))
        .bind(m_clock())
        .done();
}

bool ConversationStore::insertTurn(const std::string &id, std::int64_t position, const Turn &turn)
{
    return Statement(m_database, "INSERT INTO messages (conversation_id, position, id, role, parts)"
                                 " VALUES (?, ?, ?, ?, ?)")
        .bind(id)
        .bind(position)
        .bind(turn.id)
        .bind(turn.role)
        .bind(toText(turn.parts))
        .done();
}

bool ConversationStore::writeTurns(const std::string &id, const std::vector<Turn> &before,
                                   const std::vector<Turn> &after)
{
    // A long conversation grows at its end: only what differs is written.
    const auto [kept, unused] =
        std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    auto position = static_cast<std::int64_t>(kept - before.begin());
    Statement drop(m_database, "DELETE FROM messages WHERE conversation_id = ? AND position >= ?");
    if (!drop.bind(id).bind(position).done())
        return false;
    for (; position < static_cast<std::int64_t>(after.size()); ++position) {
        if (!insertTurn(id, position, after[static_cast<std::size_t>(position)]))
            return false;
    }
    return true;
}

} // namespace velto::local
