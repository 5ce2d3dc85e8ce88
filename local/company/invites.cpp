// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/company/invites.h"

#include "local/auth/secrets.h"
#include "local/http/reply.h"
#include "local/store/change.h"
#include "local/store/rows.h"
#include "local/text.h"

#include <algorithm>

namespace velto::local
{

using nlohmann::json;

namespace
{

constexpr std::int64_t InviteSeconds = 604'800;
constexpr std::size_t LongestEmail = 254;
constexpr std::size_t MostAtOnce = 50;

std::vector<std::string_view> addressesIn(std::string_view text)
{
    std::vector<std::string_view> addresses;
    while (!text.empty()) {
        const auto comma = text.find(',');
        const std::string_view one = trimmed(text.substr(0, comma));
        text = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
        if (!one.empty() && std::find(addresses.begin(), addresses.end(), one) == addresses.end())
            addresses.push_back(one);
    }
    return addresses;
}

} // namespace

bool isEmail(std::string_view text)
{
    const auto at = text.find('@');
    if (at == std::string_view::npos || at == 0 || text.size() > LongestEmail)
        return false;
    const std::string_view domain = text.substr(at + 1);
    const auto dot = domain.rfind('.');
    return domain.find('@') == std::string_view::npos && dot != std::string_view::npos && dot > 0 &&
           dot + 1 < domain.size() && std::all_of(text.begin(), text.end(), [](unsigned char c) {
               return c > 0x20 && c != 0x7f && c != '<' && c != '>' && c != '"';
           });
}

Invites::Invites(Database &database, Clock clock, AuditLog &audit)
    : m_database(database)
    , m_clock(std::move(clock))
    , m_audit(audit)
{}

JsonAnswer Invites::list(const Call &call)
{
    const auto guard = m_database.lock();
    const auto member =
        membershipIn(m_database, call.caller, call.captures[0], Role::Admin, "see invites");
    if (!member)
        return tl::unexpected(member.error());
    Statement query(m_database, R"(
        SELECT id, email, role, expires_at AS "expires_at:time" FROM invites
        WHERE workspace_id = ? AND expires_at > ? ORDER BY created_at, rowid)");
    return json{{"invites", rowsOf(query.bind(member->workspaceId).bind(m_clock()))}};
}

std::string Invites::flawOf(const std::string &workspaceId, std::string_view email)
{
    if (!isEmail(email))
        return "This is not an email address.";
    if (Statement(m_database, "SELECT 1 FROM memberships JOIN users ON id = user_id"
                              " WHERE workspace_id = ? AND email = ?")
            .bind(workspaceId)
            .bind(email)
            .step())
        return "This person is a member already.";
    if (Statement(m_database, "SELECT 1 FROM invites"
                              " WHERE workspace_id = ? AND email = ? AND expires_at > ?")
            .bind(workspaceId)
            .bind(email)
            .bind(m_clock())
            .step())
        return "An invite to this address is pending already.";
    return {};
}

std::string Invites::invite(const Caller &caller, const std::string &workspaceId,
                            std::string_view email, Role role)
{
    std::string id = randomId("inv_");
    // An expired one is in the way.
    Statement(m_database, "INSERT OR REPLACE INTO invites (id, workspace_id, email, role,"
                          " created_by, created_at, expires_at) VALUES (?, ?, ?, ?, ?, ?, ?)")
        .bind(id)
        .bind(workspaceId)
        .bind(email)
        .bind(roleName(role))
        .bind(caller.userId)
        .bind(m_clock())
        .bind(m_clock() + InviteSeconds)
        .done();
    m_audit.record(caller, {workspaceId,
                            "invite.created",
                            "invite",
                            id,
                            {{"email", email}, {"role", roleName(role)}}});
    return id;
}

JsonAnswer Invites::create(const Call &call)
{
    const json body = parseBody(call.body);
    const std::string *emails = textMember(body, "email");
    const std::string *name = textMember(body, "role");
    if (emails == nullptr || name == nullptr)
        return badRequest("The body must hold an email and a role.");
    const auto role = roleFrom(*name);
    if (!role || *role == Role::Owner)
        return badRequest("The role of an invite is member or admin.");
    const auto addresses = addressesIn(*emails);
    if (addresses.empty() || addresses.size() > MostAtOnce)
        return badRequest("The email must hold 1 to 50 addresses.");
    return change(m_database, [&]() -> JsonAnswer {
        const auto member =
            membershipIn(m_database, call.caller, call.captures[0], Role::Admin, "invite somebody");
        if (!member)
            return tl::unexpected(member.error());
        json result{{"invited", json::array()}, {"failed", json::array()}};
        for (const std::string_view email : addresses) {
            const std::string flaw = flawOf(member->workspaceId, email);
            if (!flaw.empty()) {
                result["failed"].push_back({{"email", email}, {"reason", flaw}});
                continue;
            }
            const std::string id = invite(call.caller, member->workspaceId, email, *role);
            result["invited"].push_back({{"email", email}, {"invite_id", id}});
        }
        return result;
    });
}

JsonAnswer Invites::revoke(const Call &call)
{
    return change(m_database, [&]() -> JsonAnswer {
        const auto member = membershipIn(m_database, call.caller, call.captures[0], Role::Admin,
                                         "revoke an invite");
        if (!member)
            return tl::unexpected(member.error());
        const std::string &id = call.captures[1];
        Statement drop(m_database, "DELETE FROM invites WHERE id = ? AND workspace_id = ?"
                                   " RETURNING email, role");
        const json gone = rowOf(drop.bind(id).bind(member->workspaceId));
        if (gone.is_null())
            return unknown("such invite");
        m_audit.record(call.caller, {member->workspaceId, "invite.revoked", "invite", id, gone});
        return nullptr;
    });
}

} // namespace velto::local
