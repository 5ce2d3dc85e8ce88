// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/library/settings.h"

#include "local/company/roles.h"
#include "local/http/reply.h"
#include "local/library/models.h"
#include "local/store/change.h"
#include "local/store/rows.h"

namespace velto::local
{

using nlohmann::json;

namespace
{

constexpr int MaxTokens = 16'384;
constexpr int MaxToolRounds = 24;

std::string modelIn(const json &settings)
{
    const std::string *provider = textMember(settings, "provider");
    if (provider == nullptr || *provider != engineName(Engine::Codex))
        return settings["model"];
    const std::string *model = textMember(settings, "codex_model");
    return model != nullptr ? *model : std::string(DefaultCodexModel);
}

// What is wrong with the member; empty when it is absent or in order.
template<typename Check>
std::string flawOf(const json &body, std::string_view key, Check check)
{
    if (!body.contains(key))
        return {};
    const std::string *text = textMember(body, key);
    return text != nullptr && check(*text) ? std::string()
                                           : "This is no " + std::string(key) + " of this service.";
}

// Where the setting of the model is told in the log: the workspace whose path it was, for those
// who may.
OrRefusal<std::string> workspaceToSet(Database &database, const Call &call)
{
    const std::string &slug = call.captures[0];
    if (!call.caller.administrator) {
        const auto member =
            membershipIn(database, call.caller, slug, Role::Admin, "choose a workspace's model");
        if (!member)
            return tl::unexpected(member.error());
        return member->workspaceId;
    }
    Statement query(database, "SELECT id FROM workspaces WHERE slug = ?");
    if (!query.bind(slug).step())
        return unknown("such workspace");
    return query.text(0);
}

} // namespace

Settings::Settings(Database &database, Clock clock, AuditLog &audit, ToolCatalog &tools)
    : m_database(database)
    , m_clock(std::move(clock))
    , m_audit(audit)
    , m_tools(tools)
{}

json Settings::record(const Caller &caller) const
{
    Statement query(m_database, R"(
        SELECT coalesce((SELECT model FROM workspaces WHERE id = ?2), ?3) AS model, provider,
            codex_model FROM users WHERE id = ?1)");
    return rowOf(query.bind(caller.userId).bind(caller.workspaceId).bind(DefaultModel));
}

std::string Settings::effectiveModel(const Caller &caller) const
{
    const auto guard = m_database.lock();
    return modelIn(record(caller));
}

JsonAnswer Settings::agentConfig(const Call &call)
{
    const auto guard = m_database.lock();
    const json tools = m_tools.usable(call.caller);
    return json{{"model", modelIn(record(call.caller))},
                {"max_tokens", MaxTokens},
                {"max_tool_rounds", MaxToolRounds},
                {"tools", tools},
                {"tool_count", tools.size()}};
}

JsonAnswer Settings::read(const Call &call)
{
    const auto guard = m_database.lock();
    return record(call.caller);
}

JsonAnswer Settings::write(const Call &call)
{
    const json body = parseBody(call.body);
    if (!body.is_object() || (!body.contains("provider") && !body.contains("codexModel")))
        return badRequest("The body must hold a provider or a codexModel.");
    std::string flaw = flawOf(body, "provider", [](const std::string &text) {
        return text == engineName(Engine::Claude) || text == engineName(Engine::Codex);
    });
    flaw += flawOf(body, "codexModel",
                   [](const std::string &text) { return isModelOf(Engine::Codex, text); });
    if (!flaw.empty())
        return badRequest(flaw);
    return change(m_database, [&]() -> JsonAnswer {
        const json before = record(call.caller);
        Statement(m_database, "UPDATE users SET provider = coalesce(?, provider),"
                              " codex_model = coalesce(?, codex_model), updated_at = ?"
                              " WHERE id = ?")
            .bindOrNull(body.value("provider", ""))
            .bindOrNull(body.value("codexModel", ""))
            .bind(m_clock())
            .bind(call.caller.userId)
            .done();
        const json after = record(call.caller);
        if (after != before && !call.caller.workspaceId.empty())
            m_audit.record(call.caller, {call.caller.workspaceId, "settings.changed", "user",
                                         call.caller.userId, body});
        return after;
    });
}

JsonAnswer Settings::setWorkspaceModel(const Call &call)
{
    const json body = parseBody(call.body);
    const std::string *model = textMember(body, "model");
    if (model == nullptr || !isModelOf(Engine::Claude, *model))
        return badRequest("The body must hold a model that a workspace can run on.");
    return change(m_database, [&]() -> JsonAnswer {
        const auto id = workspaceToSet(m_database, call);
        if (!id)
            return tl::unexpected(id.error());
        Statement set(m_database, "UPDATE workspaces SET model = ?1, updated_at = ?2"
                                  " WHERE id = ?3 AND model <> ?1");
        if (set.bind(*model).bind(m_clock()).bind(*id).change())
            m_audit.record(call.caller,
                           {*id, "workspace.model_changed", "workspace", *id, {{"model", *model}}});
        return json{{"model", *model}};
    });
}

} // namespace velto::local
