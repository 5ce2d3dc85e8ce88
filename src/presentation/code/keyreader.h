// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/code/textrange.h"

#include <QStringView>

#include <optional>

namespace velto::presentation
{

/// A key is a name before a colon that only blanks, hyphens and one quote precede in its line.
/// White space between name and colon may hold line breaks.
struct KeyReading
{
    std::optional<TextRange> key;
    bool isUndecided = false; ///< there is none so far, but more text may make it one
};

/// Blanks and hyphens, as they may precede a key.
[[nodiscard]] constexpr bool isKeyIndent(char16_t c)
{
    return c == u' ' || c == u'\t' || c == u'-';
}

/// Looks for a key in the part of `text` from `start` to `end`. `start` is the start of a line, or
/// the end of a text in quotes, whose closing quote may be the one that precedes a key.
[[nodiscard]] KeyReading readKey(QStringView text, qsizetype start, qsizetype end);

} // namespace velto::presentation
