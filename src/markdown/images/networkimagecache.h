// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QUrl>

#include <optional>

namespace velto::markdown
{

/// Decoded images by their address. Any thread.
class NetworkImageCache
{
public:
    NetworkImageCache() = default;
    virtual ~NetworkImageCache() = default;
    NetworkImageCache(const NetworkImageCache &) = delete;
    NetworkImageCache &operator=(const NetworkImageCache &) = delete;

    [[nodiscard]] virtual std::optional<QImage> image(const QUrl &url) = 0;
    virtual void setImage(const QImage &image, const QUrl &url) = 0;
};

} // namespace velto::markdown
