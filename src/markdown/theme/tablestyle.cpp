// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/theme/tablestyle.h"

namespace velto::markdown
{

namespace
{

using Span = TableBounds::Span;

// Borders stand on the line between two spans: half on each.
QList<QRectF> rowLines(const TableBounds &table, qreal width, bool withOutside)
{
    QList<QRectF> lines;
    const qsizetype count = table.rows.size();
    const auto line = [&](qreal y) {
        lines.append({table.bounds.left(), y, table.bounds.width(), width});
    };
    if (withOutside && count > 0)
        line(table.bounds.top());
    for (qsizetype row = 1; row < count; ++row)
        line(table.rows[row].position - width / 2);
    if (withOutside && count > 0)
        line(table.bounds.bottom() - width);
    return lines;
}

QList<QRectF> columnLines(const TableBounds &table, qreal width, bool withOutside)
{
    QList<QRectF> lines;
    const qsizetype count = table.columns.size();
    const auto line = [&](qreal x) {
        lines.append({x, table.bounds.top(), width, table.bounds.height()});
    };
    if (withOutside && count > 0)
        line(table.bounds.left());
    for (qsizetype column = 1; column < count; ++column)
        line(table.columns[column].position - width / 2);
    if (withOutside && count > 0)
        line(table.bounds.right() - width);
    return lines;
}

TableBorderSelector lines(bool horizontal, bool vertical, bool outside)
{
    return {[=](const TableBounds &table, qreal width) {
        QList<QRectF> found;
        if (horizontal)
            found += rowLines(table, width, outside);
        if (vertical)
            found += columnLines(table, width, outside);
        return found;
    }};
}

} // namespace

TableBorderSelector TableBorderSelector::none()
{
    return {[](const TableBounds &, qreal) { return QList<QRectF>(); }};
}

TableBorderSelector TableBorderSelector::allBorders()
{
    return {[](const TableBounds &table, qreal) {
        QList<QRectF> found{table.bounds};
        for (qsizetype row = 0; row < table.rows.size(); ++row) {
            for (qsizetype column = 0; column < table.columns.size(); ++column)
                found.append(table.cell(row, column));
        }
        return found;
    }};
}

TableBorderSelector TableBorderSelector::outsideBorders()
{
    return {[](const TableBounds &table, qreal) { return QList<QRectF>{table.bounds}; }};
}

TableBorderSelector TableBorderSelector::insideBorders()
{
    return lines(true, true, false);
}

TableBorderSelector TableBorderSelector::horizontalBorders()
{
    return lines(true, false, true);
}

TableBorderSelector TableBorderSelector::insideHorizontalBorders()
{
    return lines(true, false, false);
}

TableBorderSelector TableBorderSelector::insideVerticalBorders()
{
    return lines(false, true, false);
}

TableBorderSelector TableBorderSelector::verticalBorders()
{
    return lines(false, true, true);
}

TableBackgroundStyle TableBackgroundStyle::clear()
{
    return {[](int, int) { return std::optional<Ink>(); }};
}

TableBackgroundStyle TableBackgroundStyle::header(Ink fill)
{
    return {[fill](int row, int) { return row == 0 ? std::optional(fill) : std::nullopt; }};
}

TableBackgroundStyle TableBackgroundStyle::alternatingRows(Ink even, Ink odd)
{
    return {[even, odd](int row, int) { return std::optional(row % 2 == 0 ? even : odd); }};
}

} // namespace velto::markdown
