// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QSizeF>

#include <variant>

namespace velto::markdown
{

namespace imagestate
{

/// Nothing has been loaded yet.
struct Empty
{
    bool operator==(const Empty &) const = default;
};

struct Success
{
    QImage image;
    QSizeF idealSize; ///< In device-independent pixels.

    /// The same decoded image, not one that happens to look alike.
    bool operator==(const Success &other) const
    {
        return image.cacheKey() == other.image.cacheKey() && idealSize == other.idealSize;
    }
};

struct Failure
{
    bool operator==(const Failure &) const = default;
};

} // namespace imagestate

/// How far the load of a remote image has come.
using NetworkImageState = std::variant<imagestate::Empty, imagestate::Success, imagestate::Failure>;

} // namespace velto::markdown
