// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/imagefetch.h"

namespace velto::service
{
namespace
{

using base::TransportError;

base::Result<void> checkSize(qint64 size, qint64 limit)
{
    if (size <= limit)
        return {};
    return base::fail(
        TransportError{TransportError::Kind::Other,
                       QStringLiteral("a picture of more than %1 MiB").arg(limit >> 20)});
}

HTTPRequest requestFor(const QUrl &url, const ImageFetchLimits &limits)
{
    HTTPRequest request;
    request.url = url;
    request.headers = {{"Accept", "image/*"}};
    request.timeout = limits.timeout;
    return request;
}

} // namespace

QCoro::Task<base::Result<HTTPResponse>> fetchWithin(Transport &transport, HTTPRequest request,
                                                    qint64 bytes, std::stop_token stop)
{
    base::Result<HTTPStream> stream = co_await transport.open(std::move(request), std::move(stop));
    if (!stream)
        co_return tl::unexpected(stream.error());
    HTTPResponse response;
    response.head = stream->head();
    const qint64 promised = response.head.header("Content-Length").value_or("0").toLongLong();
    if (const auto fits = checkSize(promised, bytes); !fits)
        co_return tl::unexpected(fits.error());
    for (;;) {
        const base::Result<QByteArray> piece = co_await stream->read();
        if (!piece)
            co_return tl::unexpected(piece.error());
        if (piece->isEmpty())
            co_return response;
        response.body += *piece;
        if (const auto fits = checkSize(response.body.size(), bytes); !fits)
            co_return tl::unexpected(fits.error());
    }
}

QCoro::Task<base::Result<HTTPResponse>> fetchImage(Transport &transport, QUrl url,
                                                   ImageFetchLimits limits, std::stop_token stop)
{
    return fetchWithin(transport, requestFor(url, limits), limits.bytes, std::move(stop));
}

bool forbidsStoring(const HTTPHead &head)
{
    return head.header("Cache-Control").value_or("").toLower().contains("no-store");
}

} // namespace velto::service
