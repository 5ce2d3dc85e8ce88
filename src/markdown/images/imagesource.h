// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QUrl>

namespace velto::markdown
{

/// A remote image and how many of its pixels make one device-independent pixel.
struct ImageSource
{
    QUrl url;
    qreal scale = 1;
    bool operator==(const ImageSource &) const = default;
};

[[nodiscard]] inline std::size_t qHash(const ImageSource &source, std::size_t seed = 0)
{
    return qHashMulti(seed, source.url, source.scale);
}

} // namespace velto::markdown
