// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/media/mediaurl.h"

#include "service/apibaseurl.h"
#include "service/redirect.h"

namespace velto::presentation
{
namespace
{

constexpr QLatin1StringView mediaFolder("/v1/media/");
constexpr QLatin1StringView mediaScheme("media");

bool endsSegment(QChar unit)
{
    return unit == u'/' || unit == u'\\' || unit == u'?' || unit == u'#';
}

bool climbsOut(QStringView path)
{
    int depth = 0;
    for (qsizetype start = 0, end = 0; start <= path.size(); start = end + 1) {
        end = start;
        while (end < path.size() && !endsSegment(path[end]))
            ++end;
        const QStringView segment = path.sliced(start, end - start);
        if (segment == u"..")
            --depth;
        else if (!segment.isEmpty() && segment != u".")
            ++depth;
        if (depth < 0)
            return true;
    }
    return false;
}

/// Whether a server, or a proxy before it, could read `path` as a way out of its folder. Each of
/// them may decode it once more.
bool mayClimbOut(QString path)
{
    constexpr int mostDecodings = 8;
    for (int i = 0; i < mostDecodings; ++i) {
        if (climbsOut(path))
            return true;
        const QString decoded = QUrl::fromPercentEncoding(path.toUtf8());
        if (decoded == path)
            return false;
        path = decoded;
    }
    return true;
}

bool isServiceMedia(const QUrl &url, const QUrl &baseURL)
{
    const QString path = url.path(QUrl::FullyEncoded);
    return service::isHTTPAddress(url) && service::isSameOrigin(url, baseURL) &&
           path.startsWith(mediaFolder) && !mayClimbOut(path.sliced(mediaFolder.size()));
}

} // namespace

std::optional<QUrl> mediaURL(QStringView path, const QUrl &baseURL)
{
    if (path.isEmpty() || !path.isValidUtf16())
        return std::nullopt;
    const QString name = path.toString();
    if (mayClimbOut(name))
        return std::nullopt;
    const QByteArray encoded = QUrl::toPercentEncoding(name, "!$&'()*+,;=:@/");
    const base::Result<QUrl> url =
        service::resolved(baseURL, mediaFolder + QString::fromLatin1(encoded));
    return url ? std::optional(*url) : std::nullopt;
}

std::optional<MediaAddress> resolveMediaURL(const QUrl &rawURL, const QUrl &baseURL)
{
    if (rawURL.isEmpty())
        return std::nullopt;
    if (rawURL.scheme() != mediaScheme)
        return MediaAddress{rawURL, isServiceMedia(rawURL, baseURL)};
    QString path = rawURL.toString(QUrl::FullyEncoded);
    path.remove(mediaScheme + u':');
    const std::optional<QUrl> url = mediaURL(path, baseURL);
    return url ? std::optional(MediaAddress{*url, true}) : std::nullopt;
}

} // namespace velto::presentation
