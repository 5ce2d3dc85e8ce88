// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <algorithm>
#include <vector>

namespace velto::presentation
{

/// From `start` up to and without `end`, in UTF-16 units.
struct TextRange
{
    qsizetype start = 0;
    qsizetype end = 0;

    [[nodiscard]] qsizetype length() const { return end - start; }
    bool operator==(const TextRange &) const = default;
};

/// Sorted, none overlapping another: what each scanner finds and the functions below expect.
using TextRanges = std::vector<TextRange>;

[[nodiscard]] inline TextRanges::const_iterator firstStartingAt(const TextRanges &ranges,
                                                                qsizetype position)
{
    return std::ranges::lower_bound(ranges, position, {}, &TextRange::start);
}

[[nodiscard]] inline TextRanges::const_iterator firstEndingAfter(const TextRanges &ranges,
                                                                 qsizetype position)
{
    return std::ranges::upper_bound(ranges, position, {}, &TextRange::end);
}

[[nodiscard]] inline bool overlapsAny(const TextRanges &ranges, TextRange range)
{
    const auto near = firstEndingAfter(ranges, range.start);
    return near != ranges.end() && near->start < range.end;
}

/// The start of the range that holds `position`, which is the answer where there is none.
[[nodiscard]] inline qsizetype startAround(const TextRanges &ranges, qsizetype position)
{
    const auto near = firstEndingAfter(ranges, position);
    return near != ranges.end() ? std::min(near->start, position) : position;
}

} // namespace velto::presentation
