// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/text.h"
#include "service/apiclient.h"

namespace velto::service
{
namespace
{

QString libraryPath(LibraryKind kind, const QString &id)
{
    const QString collection = kind == LibraryKind::Skills
                                   ? QStringLiteral("/v1/settings/skills/")
                                   : QStringLiteral("/v1/settings/subagents/");
    return collection + base::pathEncoded(id);
}

QString integrationPath(const QString &provider)
{
    return QStringLiteral("/v1/integrations/") + base::pathEncoded(provider) +
           QStringLiteral("/status");
}

} // namespace

QCoro::Task<base::Result<QByteArray>> APIClient::saveSettings(std::optional<QString> provider,
                                                              std::optional<QString> codexModel)
{
    QJsonObject body;
    if (provider)
        body.insert(QStringLiteral("provider"), *provider);
    if (codexModel)
        body.insert(QStringLiteral("codexModel"), *codexModel);
    return send("PUT", QStringLiteral("/v1/settings"), base::json::compact(body));
}

QCoro::Task<base::Result<void>> APIClient::setLibraryEnabled(LibraryKind kind, QString id,
                                                             bool enabled)
{
    return sendJSON("PATCH", libraryPath(kind, id), LibraryEnabledPatch{enabled});
}

QCoro::Task<base::Result<void>> APIClient::deleteLibraryItem(LibraryKind kind, QString id)
{
    return sendOnly("DELETE", libraryPath(kind, id));
}

QCoro::Task<base::Result<QByteArray>> APIClient::integrationStatus(QString provider)
{
    return send("GET", integrationPath(provider));
}

QCoro::Task<base::Result<void>> APIClient::disconnectIntegration(QString provider)
{
    return sendOnly("DELETE", integrationPath(provider));
}

QCoro::Task<base::Result<void>> APIClient::installBundle(QString catalogId)
{
    const QByteArray body =
        base::json::compact(QJsonObject{{QStringLiteral("catalogId"), catalogId}});
    const base::Result<HTTPResponse> response =
        co_await request("POST", QStringLiteral("/v1/marketplace/install"), body);
    if (!response)
        co_return tl::unexpected(response.error());
    const int status = response->head.status;
    if (status < 200 || status > 299)
        co_return base::fail(
            base::APIError{status, base::utf8Text(response->body).value_or(QString())});
    co_return base::Result<void>{};
}

QCoro::Task<base::Result<void>> APIClient::uninstallBundle(QString id)
{
    return sendOnly("DELETE", QStringLiteral("/v1/marketplace/installed/") + base::pathEncoded(id));
}

} // namespace velto::service
