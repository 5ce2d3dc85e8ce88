// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/theme/fontproperties.h"
#include "markdown/theme/ink.h"

#include <QUrl>

#include <optional>

namespace velto::markdown
{

/// How a line is drawn under or through a text.
enum class LinePattern { Solid, Dash, Dot, Wave };

/// Everything that a run of text carries: the container that text styles change.
struct TextAttributes
{
    FontProperties fontProperties;
    qreal baseSize = FontProperties::defaultSize; ///< What `rem` is measured in.
    std::optional<Ink> foregroundColor;
    std::optional<Ink> backgroundColor;
    std::optional<LinePattern> strikethroughStyle;
    std::optional<LinePattern> underlineStyle;
    qreal kerning = 0;  ///< Added between letters, in device-independent pixels.
    qreal tracking = 0; ///< The same; both count.
    QUrl link;          ///< Resolved; invalid where there is none.

    bool operator==(const TextAttributes &) const = default;
};

} // namespace velto::markdown
