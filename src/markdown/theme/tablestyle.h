// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/theme/ink.h"

#include <QList>
#include <QRectF>

#include <functional>
#include <optional>

namespace velto::markdown
{

/// Where the cells of a table are, in the table's own coordinates.
struct TableBounds
{
    /// The extent of one row or column.
    struct Span
    {
        qreal position = 0;
        qreal size = 0;
        [[nodiscard]] qreal end() const { return position + size; }
        bool operator==(const Span &) const = default;
    };

    QRectF bounds;
    QList<Span> rows;
    QList<Span> columns;

    [[nodiscard]] QRectF cell(qsizetype row, qsizetype column) const
    {
        return {columns[column].position, rows[row].position, columns[column].size, rows[row].size};
    }

    bool operator==(const TableBounds &) const = default;
};

/// Picks the rectangles of a table that get a border.
struct TableBorderSelector
{
    /// Gives the rectangles for borders of that width.
    std::function<QList<QRectF>(const TableBounds &, qreal borderWidth)> rectangles;

    [[nodiscard]] static TableBorderSelector none();
    /// Around the table and each cell.
    [[nodiscard]] static TableBorderSelector allBorders();
    [[nodiscard]] static TableBorderSelector outsideBorders();
    [[nodiscard]] static TableBorderSelector insideBorders();
    /// Lines above and below each row.
    [[nodiscard]] static TableBorderSelector horizontalBorders();
    /// Lines between rows only.
    [[nodiscard]] static TableBorderSelector insideHorizontalBorders();
    [[nodiscard]] static TableBorderSelector insideVerticalBorders();
    [[nodiscard]] static TableBorderSelector verticalBorders();
};

struct StrokeStyle
{
    qreal lineWidth = 1;
    bool operator==(const StrokeStyle &) const = default;
};

struct TableBorderStyle
{
    TableBorderSelector visibleBorders = TableBorderSelector::insideHorizontalBorders();
    Ink color = Ink::hairline();
    StrokeStyle strokeStyle;
};

struct TableBackgroundStyle
{
    /// The fill of a cell; absent for none.
    std::function<std::optional<Ink>(int row, int column)> background;

    /// Nothing is filled.
    [[nodiscard]] static TableBackgroundStyle clear();
    /// The header stands out from the rest.
    [[nodiscard]] static TableBackgroundStyle header(Ink fill);
    /// Rows in turns; the header counts as the first.
    [[nodiscard]] static TableBackgroundStyle alternatingRows(Ink even, Ink odd);
};

} // namespace velto::markdown
