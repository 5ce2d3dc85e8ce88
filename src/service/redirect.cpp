// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/redirect.h"

#include <array>

namespace velto::service
{
namespace
{

using Kind = base::TransportError::Kind;

bool isRedirect(int status)
{
    constexpr std::array statuses{301, 302, 303, 307, 308};
    return std::ranges::find(statuses, status) != statuses.end();
}

bool isNamed(const QByteArray &header, const char *name)
{
    return header.compare(name, Qt::CaseInsensitive) == 0;
}

void removeHeader(HTTPRequest &request, const char *name)
{
    request.headers.removeIf([name](const auto &header) { return isNamed(header.first, name); });
}

// 303 asks for the result of the work with a GET, and so do, by old custom, 301 and 302 after a
// POST. The other redirects repeat the request as it was.
bool becomesGet(const QByteArray &method, int status)
{
    if (status == 303)
        return method != "GET" && method != "HEAD";
    return (status == 301 || status == 302) && method == "POST";
}

void turnIntoGet(HTTPRequest &request)
{
    request.method = "GET";
    request.body.reset();
    request.headers.removeIf([](const auto &header) {
        return header.first.startsWith("Content-") || header.first.startsWith("content-");
    });
    removeHeader(request, "Transfer-Encoding");
}

} // namespace

bool isHTTPAddress(const QUrl &url)
{
    const QString scheme = url.scheme();
    return url.isValid() && !url.host().isEmpty() &&
           (scheme == QLatin1StringView("http") || scheme == QLatin1StringView("https"));
}

bool isSameOrigin(const QUrl &a, const QUrl &b)
{
    const auto portOf = [](const QUrl &url) {
        return url.port(url.scheme() == QLatin1StringView("https") ? 443 : 80);
    };
    return a.scheme() == b.scheme() && a.host() == b.host() && portOf(a) == portOf(b);
}

base::Result<std::optional<HTTPRequest>> nextHop(const HTTPRequest &current, const QUrl &origin,
                                                 const HTTPHead &head)
{
    const std::optional<QByteArray> location = head.header("Location");
    if (!isRedirect(head.status) || !location)
        return std::nullopt;
    const QUrl target = current.url.resolved(QUrl(QString::fromUtf8(*location)));
    if (!isHTTPAddress(target))
        return base::fail(base::TransportError{Kind::BadURL, {}});
    const QLatin1StringView https("https");
    if (current.url.scheme() == https && target.scheme() != https)
        return base::fail(base::TransportError{Kind::InsecureRedirect, {}});
    HTTPRequest next = current;
    next.url = target;
    if (becomesGet(current.method, head.status))
        turnIntoGet(next);
    if (!isSameOrigin(origin, target))
        removeHeader(next, "Authorization");
    return std::optional(next);
}

} // namespace velto::service
