// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/code/language.h"
#include "presentation/code/tokenrange.h"

namespace velto::presentation
{

/// Appends the numbers, keywords and keys of `part` to `tokens`. `part` is what lies between two
/// comments or strings. Returns the start of what more text may make a key, or the end of `text`.
qsizetype scanWords(QStringView text, TextRange part, const Language &language,
                    TokenRanges &tokens);

/// Where the last run of characters starts that text appended to `text` may still make another
/// number or word; not before `from`.
[[nodiscard]] qsizetype unsettledWordStart(QStringView text, qsizetype from);

} // namespace velto::presentation
