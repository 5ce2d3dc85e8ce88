// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/code/textrange.h"

namespace velto::presentation
{

/// What a token is coloured as; `rgb` has the values.
enum class TokenColor : quint8 { Comment, String, Number, Keyword, Key };

/// In sRGB, each part from 0 to 1, at full opacity.
struct Rgb
{
    double red = 0;
    double green = 0;
    double blue = 0;
    bool operator==(const Rgb &) const = default;
};

/// The same in light and dark appearance.
[[nodiscard]] Rgb rgb(TokenColor color);

struct TokenRange
{
    TextRange range;
    TokenColor color = TokenColor::Comment;
    bool operator==(const TokenRange &) const = default;
};

/// Sorted by position; no two overlap, none is empty.
using TokenRanges = std::vector<TokenRange>;

} // namespace velto::presentation
