// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

namespace velto::shell
{

/// From `start` up to and without `end`, in UTF-16 units.
struct TitleRange
{
    qsizetype start = 0;
    qsizetype end = 0;

    bool operator==(const TitleRange &) const = default;
};

/// Where the query stands in a title, whatever the case, from left to right and without overlaps.
/// Nothing for a blank query. Ranges hold whole characters as readers count them.
[[nodiscard]] QList<TitleRange> highlightedTitle(const QString &text, const QString &query);

} // namespace velto::shell
