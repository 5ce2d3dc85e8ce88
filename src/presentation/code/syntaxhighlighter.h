// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/code/tokenrange.h"

#include <QString>

#include <optional>

namespace velto::presentation
{

/// What all code looks like before tokens are coloured.
struct CodeAttributes
{
    double fontSize = 11; ///< points of the design, which are device-independent pixels
    bool isMonospaced = true;
    double foregroundOpacity = 0.88; ///< of the primary colour
    bool operator==(const CodeAttributes &) const = default;
};

/// Code with its looks: `base` everywhere, the foreground of each token in its own colour.
struct HighlightedCode
{
    QString text;
    CodeAttributes base;
    TokenRanges tokens;
    bool operator==(const HighlightedCode &) const = default;
};

/// Colours source code by pattern, without a parser. Twelve families of languages are known; the
/// cost is linear in the text, whatever is in it. For text that still grows see `GrowingCode`.
class SyntaxHighlighter final
{
public:
    using TokenRange = presentation::TokenRange;

    SyntaxHighlighter() = delete;

    /// The tokens of `text` in UTF-16 units, by position. `language` is the name of a code fence in
    /// any mix of cases and not trimmed; with one that is not known there are no tokens.
    [[nodiscard]] static TokenRanges tokenRanges(QStringView text, QStringView language);

    [[nodiscard]] static HighlightedCode highlightedCode(const QString &text,
                                                         const std::optional<QString> &language);
};

} // namespace velto::presentation
