// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/workspacestore.h"

#include "base/text.h"

namespace velto::workspace
{
namespace
{

constexpr int auditLimit = 100;

QString pathOf(const QString &slug, QLatin1StringView below = {})
{
    return QStringLiteral("/v1/workspaces/") + base::pathEncoded(slug) + below;
}

} // namespace

using base::Result;

QCoro::Task<void> WorkspaceStore::loadDetail(QString slug)
{
    return load(get(pathOf(slug), m_detail, &WorkspaceStore::detailChanged));
}

QCoro::Task<void> WorkspaceStore::loadAudit(QString slug)
{
    auto log = get({}, m_audit, &AuditLogResponse::entries);
    log.request = [this, slug](const std::stop_token &) {
        return api().auditLog<AuditLogResponse>(slug, auditLimit);
    };
    return load(log);
}

QCoro::Task<void> WorkspaceStore::loadMembers(QString slug)
{
    return load([this, slug] { return fetchMembersAndInvites(slug); });
}

WorkspaceStore::Reply<void> WorkspaceStore::fetchMembersAndInvites(QString slug)
{
    const QPointer<WorkspaceStore> self(this);
    Reply<WorkspaceMembersResponse> membersReply =
        api().read<WorkspaceMembersResponse>("GET", pathOf(slug, QLatin1StringView("/members")));
    Reply<WorkspaceInvitesResponse> invitesReply =
        api().read<WorkspaceInvitesResponse>("GET", pathOf(slug, QLatin1StringView("/invites")));
    auto members = co_await std::move(membersReply);
    if (self && members)
        m_members.assign(std::move(members->members));
    else if (self)
        setLoadError(base::description(members.error()));
    auto invites = co_await std::move(invitesReply);
    // Who may not see the invitations gets the members alone, and no error.
    if (self && members)
        m_invites.assign(invites ? std::optional(std::move(invites->invites)) : std::nullopt);
    co_return Result<void>{};
}

QCoro::Task<bool> WorkspaceStore::createInvite(QString slug, QString email, QString role)
{
    const QPointer<WorkspaceStore> self(this);
    const Work send = [=, this] { return sendInvite(slug, {email, role}); };
    const bool sent = co_await change(send);
    if (sent && self)
        co_await loadMembers(slug);
    co_return sent;
}

WorkspaceStore::Reply<void> WorkspaceStore::sendInvite(QString slug, CreateInviteRequest invite)
{
    Result<QByteArray> body = base::json::encode(invite, base::json::Keys::Snake);
    if (!body)
        co_return tl::unexpected(body.error());
    // It has to be a proper answer, whatever it says.
    const auto answer = co_await api().read<CreateInviteResult>(
        "POST", pathOf(slug, QLatin1StringView("/invites")), std::move(*body));
    if (!answer)
        co_return tl::unexpected(answer.error());
    co_return Result<void>{};
}

void WorkspaceStore::reset()
{
    FeatureStore::reset();
    assign(m_detail, {}, &WorkspaceStore::detailChanged);
    m_members.assign({});
    m_invites.assign({});
    m_audit.assign({});
}

} // namespace velto::workspace
