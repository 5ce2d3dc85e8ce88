// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/media/medialoader.h"

#include "service/imagefetch.h"

namespace velto::presentation
{

MediaLoader::MediaLoader(service::Transport &transport, qint64 byteLimit)
    : m_transport(transport)
    , m_byteLimit(byteLimit)
{}

QCoro::Task<base::Result<QByteArray>> MediaLoader::load(service::HTTPRequest request,
                                                        std::stop_token stop)
{
    const base::Result<service::HTTPResponse> response = co_await service::fetchWithin(
        m_transport, std::move(request), m_byteLimit, std::move(stop));
    if (!response)
        co_return tl::unexpected(response.error());
    if (response->head.status < 200 || response->head.status > 299)
        co_return base::fail(
            base::TransportError{base::TransportError::Kind::BadServerResponse, {}});
    co_return response->body;
}

} // namespace velto::presentation
