// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/code/commentscanner.h"

namespace velto::presentation
{
namespace
{

/// QStringView::indexOf(QChar) compares many characters at once, which makes this several times
/// faster than a search for the marker as a whole.
qsizetype find(QStringView text, QStringView marker, qsizetype at)
{
    for (;; ++at) {
        at = text.indexOf(marker.front(), at);
        if (at < 0 || marker.size() == 1)
            return at;
        if (at + 1 < text.size() && text[at + 1] == marker.back())
            return at;
    }
}

/// Where a search that found nothing goes on: half a marker may stand at the end.
qsizetype restart(QStringView text, QStringView marker, qsizetype at)
{
    return std::max(at, text.size() - (marker.size() - 1));
}

} // namespace

qsizetype LineComments::grow(QStringView text)
{
    qsizetype changedFrom = text.size();
    if (m_marker.isEmpty())
        return changedFrom;
    for (;;) {
        if (m_isOpen) {
            TextRange &last = m_ranges.back();
            changedFrom = std::min(changedFrom, last.start);
            const qsizetype lineEnd = text.indexOf(u'\n', m_at);
            m_isOpen = lineEnd < 0;
            m_at = last.end = m_isOpen ? text.size() : lineEnd;
            if (m_isOpen)
                return changedFrom;
        }
        const qsizetype start = find(text, m_marker, m_at);
        if (start < 0) {
            m_at = restart(text, m_marker, m_at);
            return changedFrom;
        }
        m_at = start + m_marker.size();
        m_ranges.push_back({start, m_at});
        m_isOpen = true;
    }
}

qsizetype BlockComments::grow(QStringView text)
{
    static constexpr QStringView opening = u"/*";
    static constexpr QStringView closing = u"*/";
    qsizetype changedFrom = text.size();
    for (;;) {
        const QStringView wanted = m_open < 0 ? opening : closing;
        const qsizetype found = find(text, wanted, m_at);
        if (found < 0) {
            m_at = restart(text, wanted, m_at);
            return changedFrom;
        }
        m_at = found + wanted.size();
        if (m_open < 0) {
            m_open = found;
        } else {
            changedFrom = std::min(changedFrom, m_open);
            m_ranges.push_back({m_open, m_at});
            m_open = -1;
        }
    }
}

CommentScanner::CommentScanner(const Language &language)
    : m_line(language.lineComment)
    , m_hasBlockComments(language.hasBlockComments)
{}

qsizetype CommentScanner::grow(QStringView text)
{
    qsizetype from = m_line.grow(text);
    if (m_hasBlockComments)
        from = std::min(from, m_block.grow(text));
    // What happens inside a block comment decides whether it is one.
    from = startAround(m_block.ranges(), from);

    m_ranges.erase(firstStartingAt(m_ranges, from), m_ranges.cend());
    const TextRanges &lines = m_line.ranges();
    auto line = firstStartingAt(lines, from);
    for (auto block = firstStartingAt(m_block.ranges(), from); block != m_block.ranges().end();
         ++block) {
        for (; line != lines.end() && line->start < block->start; ++line)
            m_ranges.push_back(*line);
        if (!overlapsAny(lines, *block))
            m_ranges.push_back(*block);
    }
    m_ranges.insert(m_ranges.end(), line, lines.end());
    return from;
}

} // namespace velto::presentation
