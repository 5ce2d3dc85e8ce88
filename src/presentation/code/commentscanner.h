// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/code/language.h"
#include "presentation/code/textrange.h"

namespace velto::presentation
{

/// Comments to the end of the line, wherever their marker stands first in a line.
class LineComments final
{
public:
    explicit LineComments(QStringView marker)
        : m_marker(marker)
    {}

    /// Takes in what has been appended to `text` since the last call. Returns where what `ranges`
    /// said before may have changed.
    qsizetype grow(QStringView text);
    [[nodiscard]] const TextRanges &ranges() const { return m_ranges; }

private:
    QStringView m_marker;
    TextRanges m_ranges;
    qsizetype m_at = 0;
    bool m_isOpen = false; // the last one reaches to the end of the text
};

/// From each "/*" to the nearest "*/"; one without an end is none.
class BlockComments final
{
public:
    /// As that of `LineComments`.
    qsizetype grow(QStringView text);
    [[nodiscard]] const TextRanges &ranges() const { return m_ranges; }

private:
    TextRanges m_ranges;
    qsizetype m_at = 0;
    qsizetype m_open = -1;
};

/// Both kinds together: a block comment that touches a line comment is none.
class CommentScanner final
{
public:
    explicit CommentScanner(const Language &language);

    /// As that of `LineComments`.
    qsizetype grow(QStringView text);
    [[nodiscard]] const TextRanges &ranges() const { return m_ranges; }

private:
    LineComments m_line;
    BlockComments m_block;
    bool m_hasBlockComments;
    TextRanges m_ranges;
};

} // namespace velto::presentation
