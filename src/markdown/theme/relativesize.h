// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

namespace velto::markdown
{

/// A length in proportion to a font size.
struct RelativeSize
{
    enum class Unit {
        Em,  ///< of the enclosing font size
        Rem, ///< of the base text size
    };

    qreal value = 1;
    Unit unit = Unit::Em;

    [[nodiscard]] constexpr qreal points(qreal fontSize, qreal baseSize) const
    {
        return value * (unit == Unit::Em ? fontSize : baseSize);
    }

    bool operator==(const RelativeSize &) const = default;
};

[[nodiscard]] constexpr RelativeSize em(qreal value)
{
    return {value, RelativeSize::Unit::Em};
}

[[nodiscard]] constexpr RelativeSize rem(qreal value)
{
    return {value, RelativeSize::Unit::Rem};
}

} // namespace velto::markdown
