// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/theme/textstyle.h"

namespace velto::markdown
{

void FontSize::apply(TextAttributes &attributes) const
{
    FontProperties &font = attributes.fontProperties;
    const auto *relative = std::get_if<RelativeSize>(&size);
    if (relative == nullptr) {
        font.size = std::get<qreal>(size);
        font.scale = 1;
    } else if (relative->unit == RelativeSize::Unit::Rem) {
        font.size = attributes.baseSize;
        font.scale = relative->value;
    } else {
        font.scale *= relative->value;
    }
}

} // namespace velto::markdown
