// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/images/defaultnetworkimagecache.h"
#include "markdown/images/defaultnetworkimageloader.h"
#include "presentation/media/medialoader.h"

#include <functional>
#include <optional>

namespace velto::presentation
{

/// The pictures of answers: those of the service, which take the access token, and any others.
///
/// They are decoded off the main thread and kept in memory only, since what the service has is the
/// user's own.
class MediaImageLoader final : public markdown::NetworkImageLoader
{
    Q_OBJECT

public:
    /// The access token as it is now, or absent: asked for each request.
    using AccessToken = std::function<std::optional<QString>()>;

    /// `transport`, and what `accessToken` uses, outlive the loader.
    MediaImageLoader(service::Transport &transport, QUrl baseURL, AccessToken accessToken,
                     QObject *parent = nullptr);

    /// The picture behind a URL as it stands in an answer.
    [[nodiscard]] QCoro::Task<base::Result<QImage>> image(QUrl url,
                                                          std::stop_token stop = {}) override;
    /// Drops the pictures, as when the user signs out.
    void forget() { m_cache.clear(); }

private:
    QCoro::Task<base::Result<markdown::ImageResponse>> fetch(QUrl url, std::stop_token stop);

    const QUrl m_baseURL;
    const AccessToken m_accessToken;
    MediaLoader m_loader;
    markdown::DefaultNetworkImageCache m_cache;
    markdown::DefaultNetworkImageLoader m_images;
};

} // namespace velto::presentation
