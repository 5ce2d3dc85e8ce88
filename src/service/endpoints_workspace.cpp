// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/text.h"
#include "service/apiclient.h"

namespace velto::service
{
namespace
{

QString workspacePath(const QString &slug)
{
    return QStringLiteral("/v1/workspaces/") + base::pathEncoded(slug);
}

QString memberPath(const QString &slug, const QString &userId)
{
    return workspacePath(slug) + QStringLiteral("/members/") + base::pathEncoded(userId);
}

QString adminWorkspacePath(const QString &slug)
{
    return QStringLiteral("/v1/admin/workspaces/") + base::pathEncoded(slug);
}

} // namespace

QCoro::Task<base::Result<QByteArray>> APIClient::fetchAdminWorkspace(QString slug)
{
    return send("GET", adminWorkspacePath(slug));
}

QCoro::Task<base::Result<void>> APIClient::setAdminWorkspaceModel(QString slug, QString model)
{
    return sendJSON("PATCH", adminWorkspacePath(slug),
                    QMap<QString, QString>{{QStringLiteral("model"), model}});
}

QCoro::Task<base::Result<void>> APIClient::deleteAdminCatalogEntry(QString id)
{
    return sendOnly("DELETE", QStringLiteral("/v1/admin/catalog/") + base::pathEncoded(id));
}

QCoro::Task<base::Result<QByteArray>> APIClient::auditLog(QString slug, int limit)
{
    return send("GET",
                workspacePath(slug) + QStringLiteral("/audit?limit=") + QString::number(limit));
}

QCoro::Task<base::Result<void>> APIClient::revokeInvite(QString slug, QString id)
{
    return sendOnly("DELETE",
                    workspacePath(slug) + QStringLiteral("/invites/") + base::pathEncoded(id));
}

QCoro::Task<base::Result<void>> APIClient::setMemberRole(QString slug, QString userId, QString role)
{
    return sendJSON("PATCH", memberPath(slug, userId) + QStringLiteral("/role"),
                    MemberRolePatch{std::move(role)});
}

QCoro::Task<base::Result<void>> APIClient::removeMember(QString slug, QString userId)
{
    return sendOnly("DELETE", memberPath(slug, userId));
}

} // namespace velto::service
