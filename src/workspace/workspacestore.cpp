// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/workspacestore.h"

#include "base/text.h"

#include <QPointer>

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

WorkspaceStore::WorkspaceStore(service::APIClient &api, QObject *parent)
    : FeatureStore(api, parent)
{}

WorkspaceStore::~WorkspaceStore() = default;

QCoro::Task<void> WorkspaceStore::loadDetail(QString slug)
{
    return load(get(pathOf(slug), m_detail, &WorkspaceStore::detailChanged));
}

QCoro::Task<void> WorkspaceStore::loadAudit(QString slug)
{
    return load({[this, slug](const std::stop_token &) { return api().auditLog(slug, auditLimit); },
                 into(m_audit, &AuditLogResponse::entries)});
}

QCoro::Task<void> WorkspaceStore::loadMembers(QString slug)
{
    return load([this, slug] { return fetchMembersAndInvites(slug); });
}

WorkspaceStore::Reply<void> WorkspaceStore::fetchMembersAndInvites(QString slug)
{
    const QPointer<WorkspaceStore> self(this);
    Reply<void> membersReply = fetch(get(pathOf(slug, QLatin1StringView("/members")), m_members,
                                         &WorkspaceMembersResponse::members));
    Reply<QByteArray> invitesReply = api().send("GET", pathOf(slug, QLatin1StringView("/invites")));
    const Result<void> members = co_await std::move(membersReply);
    if (self && !members)
        setLoadError(base::description(members.error()));
    const Result<QByteArray> invites = co_await std::move(invitesReply);
    if (!self || !members)
        co_return Result<void>{};
    // Who may not see the invitations gets the members alone, and no error.
    const Keep keep = into(m_invites, &WorkspaceInvitesResponse::invites);
    if (!invites || !keep(*invites))
        m_invites.assign({});
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
    const Result<QByteArray> answer =
        co_await api().send("POST", pathOf(slug, QLatin1StringView("/invites")), std::move(*body));
    if (!answer)
        co_return tl::unexpected(answer.error());
    // It has to be a proper answer, whatever it says.
    CreateInviteResult result;
    co_return base::json::decodeInto(result, *answer, base::json::Keys::Snake);
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
