// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/admin/usage.h"

#include "local/http/reply.h"
#include "local/store/rows.h"

#include <algorithm>

namespace velto::local
{

using nlohmann::json;

namespace
{

constexpr std::size_t BytesPerToken = 4;
// What the agent is told before the conversation.
constexpr std::int64_t InstructionTokens = 1800;
constexpr std::size_t TurnsSinceLastCall = 2;

std::int64_t tokensIn(std::size_t bytes)
{
    return static_cast<std::int64_t>((bytes + BytesPerToken - 1) / BytesPerToken);
}

std::int64_t tokensIn(const json &parts)
{
    return parts.empty() ? 0 : tokensIn(toText(parts).size());
}

TokenCount tokensOf(const json &row)
{
    return {row["input_tokens"], row["output_tokens"], row["cache_creation_tokens"],
            row["cache_read_tokens"]};
}

} // namespace

TokenCount estimateTokens(const std::vector<Turn> &asked, const json &answer)
{
    TokenCount count;
    count.output = tokensIn(answer);
    for (std::size_t i = 0; i < asked.size(); ++i) {
        const std::size_t left = asked.size() - i - 1;
        std::int64_t &kind = left == 0                    ? count.input
                             : left <= TurnsSinceLastCall ? count.cacheCreation
                                                          : count.cacheRead;
        kind += tokensIn(asked[i].parts);
    }
    (asked.size() > 1 ? count.cacheRead : count.cacheCreation) += InstructionTokens;
    return count;
}

std::int64_t modelCalls(const json &answer)
{
    return 1 + std::count_if(answer.begin(), answer.end(),
                             [](const json &part) { return part.value("type", "") != "text"; });
}

UsageLedger::UsageLedger(Database &database, Clock clock)
    : m_database(database)
    , m_clock(std::move(clock))
{}

void UsageLedger::record(const UsageEntry &entry)
{
    const auto guard = m_database.lock();
    Statement(m_database, "INSERT INTO usage (workspace_id, source, model, input_tokens,"
                          " output_tokens, cache_creation_tokens, cache_read_tokens, calls,"
                          " user_messages, created_at)"
                          " SELECT id, ?, ?, ?, ?, ?, ?, ?, ?, ? FROM workspaces WHERE id = ?")
        .bind(entry.source)
        .bind(entry.model)
        .bind(entry.tokens.input)
        .bind(entry.tokens.output)
        .bind(entry.tokens.cacheCreation)
        .bind(entry.tokens.cacheRead)
        .bind(entry.calls)
        .bind(entry.userMessages)
        .bind(m_clock())
        .bind(entry.workspaceId)
        .done();
}

json UsageLedger::summary(const std::string &workspaceId) const
{
    Statement sources(m_database, R"(
        SELECT source, model, sum(input_tokens) AS input_tokens,
            sum(output_tokens) AS output_tokens,
            sum(cache_creation_tokens) AS cache_creation_tokens,
            sum(cache_read_tokens) AS cache_read_tokens, sum(calls) AS calls
        FROM usage WHERE workspace_id = ? GROUP BY source, model ORDER BY source, model)");
    json bySource = rowsOf(sources.bind(workspaceId));
    if (bySource.empty())
        return json::object();
    Statement totals(m_database, R"(
        SELECT sum(input_tokens) AS total_input, sum(output_tokens) AS total_output,
            sum(cache_creation_tokens) AS total_cache_creation,
            sum(cache_read_tokens) AS total_cache_read, sum(calls) AS total_calls
        FROM usage WHERE workspace_id = ?)");
    Statement messages(m_database, "SELECT sum(user_messages) FROM usage WHERE workspace_id = ?");
    double cost = 0;
    double savings = 0;
    for (json &row : bySource) {
        const Model *model = findModel(row["model"].get_ref<const std::string &>());
        row["cost_usd"] = model != nullptr ? costOf(*model, tokensOf(row)) : 0.0;
        cost += row["cost_usd"].get<double>();
        savings += model != nullptr ? cacheSavings(*model, tokensOf(row)) : 0.0;
    }
    json summary = rowOf(totals.bind(workspaceId));
    summary["total_cost_usd"] = cost;
    const bool counted = messages.bind(workspaceId).step();
    return {{"usage_summary", summary},
            {"usage_by_source", bySource},
            {"user_messages", counted ? messages.integer(0) : 0},
            {"cache_savings_usd", savings}};
}

} // namespace velto::local
