// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/apibaseurl.h"

namespace velto::service
{
namespace
{

bool isUsable(const QUrl &url)
{
    return url.isValid() && !url.scheme().isEmpty() && !url.host().isEmpty();
}

} // namespace

QUrl baseURLFrom(const QByteArray &environmentValue)
{
    QUrl chosen(QString::fromUtf8(environmentValue), QUrl::StrictMode);
    if (isUsable(chosen))
        return chosen;
    QUrl preset(QStringLiteral(VELTO_DEFAULT_BASE_URL), QUrl::StrictMode);
    if (!isUsable(preset))
        qFatal("The default base URL of this build is not a URL: %s", VELTO_DEFAULT_BASE_URL);
    return preset;
}

QUrl apiBaseURL()
{
    static const QUrl url = baseURLFrom(qgetenv("VELTO_API_BASE_URL"));
    return url;
}

base::Result<QUrl> resolved(const QUrl &base, const QString &path)
{
    const QUrl relative(path, QUrl::StrictMode);
    // A path that begins with "//" would name another host, and the token would go there.
    const bool isPath = path.startsWith(u'/') && !path.startsWith(QLatin1StringView("//"));
    if (!isPath || !relative.isValid() || !isUsable(base))
        return base::fail(base::TransportError{base::TransportError::Kind::BadURL, {}});
    return base.resolved(relative);
}

QUrl appended(const QUrl &base, const QString &path)
{
    QString prefix = base.path(QUrl::FullyEncoded);
    while (prefix.endsWith(u'/'))
        prefix.chop(1);
    QUrl url = base;
    url.setPath(prefix + (path.startsWith(u'/') ? path : u'/' + path), QUrl::TolerantMode);
    return url;
}

} // namespace velto::service
