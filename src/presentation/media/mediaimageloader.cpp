// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/media/mediaimageloader.h"

#include "presentation/media/mediaurl.h"

#include <utility>

namespace velto::presentation
{

using markdown::ImageResponse;

MediaImageLoader::MediaImageLoader(service::Transport &transport, QUrl baseURL,
                                   AccessToken accessToken, QObject *parent)
    : NetworkImageLoader(parent)
    , m_baseURL(std::move(baseURL))
    , m_accessToken(std::move(accessToken))
    , m_loader(transport)
    , m_images([this](const QUrl &url, std::stop_token stop) { return fetch(url, stop); }, m_cache,
               {})
{}

QCoro::Task<base::Result<QImage>> MediaImageLoader::image(QUrl url, std::stop_token stop)
{
    const std::optional<MediaAddress> address = resolveMediaURL(url, m_baseURL);
    if (!address)
        co_return base::fail(base::TransportError{base::TransportError::Kind::BadURL, {}});
    co_return co_await m_images.image(address->url, std::move(stop));
}

QCoro::Task<base::Result<ImageResponse>> MediaImageLoader::fetch(QUrl url, std::stop_token stop)
{
    service::HTTPRequest request;
    request.url = url;
    const std::optional<MediaAddress> address = resolveMediaURL(url, m_baseURL);
    const std::optional<QString> token = m_accessToken();
    if (address && address->needsAuth && token)
        request.headers.emplaceBack("Authorization", "Bearer " + token->toUtf8());
    base::Result<QByteArray> bytes = co_await m_loader.load(std::move(request), std::move(stop));
    if (!bytes)
        co_return tl::unexpected(bytes.error());
    co_return ImageResponse{200, std::move(*bytes), false};
}

} // namespace velto::presentation
