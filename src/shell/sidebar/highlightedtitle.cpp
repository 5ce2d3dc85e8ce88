// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/highlightedtitle.h"

#include "shell/sidebar/conversationfilter.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace velto::shell
{

namespace
{

/// Where characters begin, and where the last one ends.
QList<qsizetype> characterBoundaries(const QString &text)
{
    QList<qsizetype> boundaries{0};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    while (finder.toNextBoundary() > 0)
        boundaries.append(finder.position());
    return boundaries;
}

/// The number of the character that `position` lies in.
qsizetype characterAt(const QList<qsizetype> &boundaries, qsizetype position)
{
    const auto after = std::ranges::upper_bound(boundaries, position);
    return after - boundaries.begin() - 1;
}

/// The number of the first character that begins at `position` or behind it.
qsizetype characterFrom(const QList<qsizetype> &boundaries, qsizetype position)
{
    return std::ranges::lower_bound(boundaries, position) - boundaries.begin();
}

} // namespace

// Lowercasing may lengthen a character, so places in the lowercased text are carried over by the
// number of characters before them.
QList<TitleRange> highlightedTitle(const QString &text, const QString &query)
{
    const QString needle = searchNeedle(query);
    if (needle.isEmpty())
        return {};
    const QString lowered = text.toLower();
    qsizetype found = lowered.indexOf(needle);
    if (found < 0)
        return {};
    const QList<qsizetype> from = characterBoundaries(lowered);
    const QList<qsizetype> to = characterBoundaries(text);
    QList<TitleRange> ranges;
    for (; found >= 0; found = lowered.indexOf(needle, found + needle.size())) {
        const qsizetype before = ranges.isEmpty() ? 0 : ranges.last().end;
        const qsizetype start = characterAt(from, found);
        const qsizetype end = characterFrom(from, found + needle.size());
        if (end >= to.size())
            break;
        ranges.append({std::max(to.at(start), before), to.at(end)});
    }
    return ranges;
}

} // namespace velto::shell
