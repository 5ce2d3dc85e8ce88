// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/tablebox.h"

#include "markdown/render/blockviews.h"
#include "markdown/render/textnode.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace velto::markdown
{

namespace
{

// Between a cell's text and its edges, unless the style has a padding of its own.
const QMarginsF usualInset(12, 6, 12, 6);
constexpr RelativeSize narrowestColumn = em(13);

Qt::Alignment textAlignment(RawTableColumnAlignment alignment)
{
    switch (alignment) {
    case RawTableColumnAlignment::None:
    case RawTableColumnAlignment::Left:
        return Qt::AlignLeading;
    case RawTableColumnAlignment::Center:
        return Qt::AlignHCenter;
    case RawTableColumnAlignment::Right:
        return Qt::AlignTrailing;
    }
    return Qt::AlignLeading;
}

void strokeInside(QSGNode &node, QQuickItem &item, const QRectF &box, qreal width,
                  const QColor &colour)
{
    if (box.width() <= 2 * width || box.height() <= 2 * width)
        return addRectangle(node, item, box, colour);
    addRectangle(node, item, {box.left(), box.top(), box.width(), width}, colour);
    addRectangle(node, item, {box.left(), box.bottom() - width, box.width(), width}, colour);
    const qreal between = box.height() - 2 * width;
    addRectangle(node, item, {box.left(), box.top() + width, width, between}, colour);
    addRectangle(node, item, {box.right() - width, box.top() + width, width, between}, colour);
}

} // namespace

TableBox::TableBox(BoxHost &host, const EnvironmentPointer &environment, const BlockView &view,
                   const blocks::Table &table)
    : SidewaysBox(host, environment, view)
    , m_cellEnvironment(styled(environment, view))
    , m_table(table)
{
    for (qsizetype row = 0; row < table.rows.size(); ++row)
        m_rows.push_back(makeRow(table, row));
}

TableBox::Row TableBox::makeRow(const blocks::Table &table, qsizetype row)
{
    Row cells;
    for (qsizetype column = 0; column < table.columnAlignments.size(); ++column)
        cells.push_back(makeCell(table, row, column));
    return cells;
}

TableBox::Cell TableBox::makeCell(const blocks::Table &table, qsizetype row, qsizetype column)
{
    // Cells that a row lacks are there, and empty.
    const QList<InlineNode> content = table.rows[row].cells.value(column).content;
    const BlockView view = environment()->theme.tableCell()(
        {static_cast<int>(row), static_cast<int>(column), BlockView::label(),
         MarkdownContent({BlockNode{blocks::Paragraph{content}}})});
    Cell cell;
    cell.inset = view.padding().isNull() ? usualInset : QMarginsF();
    cell.box = std::make_unique<TextBox>(
        host(), m_cellEnvironment, view, TextBox::Kind::Cell,
        TextSetting{1, textAlignment(table.columnAlignments[column]), true});
    cell.box->setParent(this);
    cell.box->setGridRow(static_cast<int>(row));
    cell.box->setNodes(content);
    return cell;
}

bool TableBox::take(const BlockNode &block)
{
    const auto *table = std::get_if<blocks::Table>(&block.kind);
    if (table == nullptr || table->columnAlignments != m_table.columnAlignments)
        return false;
    const qsizetype common = std::min(m_table.rows.size(), table->rows.size());
    for (qsizetype row = 0; row < common; ++row) {
        if (m_table.rows[row] == table->rows[row])
            continue;
        for (qsizetype column = 0; column < table->columnAlignments.size(); ++column)
            m_rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)].box->setNodes(
                table->rows[row].cells.value(column).content);
    }
    m_rows.resize(static_cast<std::size_t>(common));
    for (qsizetype row = common; row < table->rows.size(); ++row)
        m_rows.push_back(makeRow(*table, row));
    m_table = *table;
    setView(styledView(environment()->theme.table(), block));
    invalidate();
    return true;
}

QList<qreal> TableBox::sharedWidths(QList<qreal> wanted, qreal room, qreal narrowest)
{
    const qreal sum = std::accumulate(wanted.cbegin(), wanted.cend(), 0.0);
    if (sum <= room)
        return wanted;
    QList<qreal> sorted = wanted;
    std::sort(sorted.begin(), sorted.end());
    // The narrow ones keep what they want; what they leave is shared by the rest.
    qreal left = room;
    qreal limit = 0;
    for (qsizetype at = 0; at < sorted.size(); ++at) {
        limit = left / static_cast<qreal>(sorted.size() - at);
        if (sorted[at] > limit)
            break;
        left -= sorted[at];
    }
    limit = std::floor(std::max(limit, narrowest));
    for (qreal &width : wanted)
        width = std::min(width, limit);
    return wanted;
}

QList<qreal> TableBox::columnWidths(qreal room) const
{
    QList<qreal> wanted(m_table.columnAlignments.size(), 0.0);
    for (const Row &row : m_rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            const Cell &cell = row[column];
            const qreal width =
                cell.box->naturalWidth() + cell.inset.left() + cell.inset.right() + 1;
            qreal &widest = wanted[static_cast<qsizetype>(column)];
            widest = std::max(widest, std::ceil(width));
        }
    }
    const qreal size = environment()->text.fontProperties.scaledSize();
    return sharedWidths(wanted, room, narrowestColumn.points(size, environment()->text.baseSize));
}

qreal TableBox::layOutContent(qreal width)
{
    m_bounds.columns.clear();
    m_bounds.rows.clear();
    qreal x = 0;
    for (const qreal column : columnWidths(width)) {
        m_bounds.columns.append({x, column});
        x += column;
    }
    qreal y = 0;
    for (Row &row : m_rows) {
        const qreal baseline = baselineOf(row);
        // An empty cell is as tall as one with a line in it.
        qreal height =
            LaidText::singleLineHeight(m_cellEnvironment->text, m_cellEnvironment->lineHeight) +
            usualInset.top() + usualInset.bottom();
        for (std::size_t column = 0; column < row.size(); ++column) {
            Cell &cell = row[column];
            const qreal room = m_bounds.columns[static_cast<qsizetype>(column)].size;
            cell.box->layOut(room - cell.inset.left() - cell.inset.right());
            cell.drop = std::round(baseline - cell.box->firstBaseline().value_or(baseline));
            height = std::max(height, cell.drop + cell.box->size().height() + cell.inset.top() +
                                          cell.inset.bottom());
        }
        m_bounds.rows.append({y, std::ceil(height)});
        y += std::ceil(height);
    }
    m_bounds.bounds = {0, 0, x, y};
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        for (std::size_t column = 0; column < m_rows[row].size(); ++column)
            m_rows[row][column].box->setPosition(
                placeOf(static_cast<qsizetype>(row), static_cast<qsizetype>(column)));
    }
    return y + (x > width ? 8 : 0);
}

qreal TableBox::baselineOf(const Row &row)
{
    qreal lowest = 0;
    for (const Cell &cell : row)
        lowest = std::max(lowest, cell.box->firstBaseline().value_or(0));
    return lowest;
}

QPointF TableBox::placeOf(qsizetype row, qsizetype column) const
{
    const Cell &cell = m_rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    return m_bounds.cell(row, column).topLeft() +
           QPointF(cell.inset.left(), cell.inset.top() + cell.drop);
}

void TableBox::showInner(const QRectF &visible, QQuickItem &inner)
{
    describe(*item(), QAccessible::Table, {});
    QQuickItem *previous = nullptr;
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const TableBounds::Span &span = m_bounds.rows[static_cast<qsizetype>(row)];
        const bool shows = span.position < visible.bottom() && span.end() > visible.top();
        for (const Cell &cell : m_rows[row]) {
            if (!shows || cell.box->isVoid()) {
                cell.box->hide();
                continue;
            }
            cell.box->show(visible.translated(-cell.box->position()), inner, previous);
            previous = cell.box->item();
        }
    }
}

void TableBox::hideInner()
{
    for (const Row &row : m_rows) {
        for (const Cell &cell : row)
            cell.box->hide();
    }
}

bool TableBox::measureContent(const std::function<bool()> &isDone)
{
    return std::all_of(m_rows.cbegin(), m_rows.cend(), [&](const Row &row) {
        return std::all_of(row.cbegin(), row.cend(),
                           [&](const Cell &cell) { return cell.box->measure(isDone); });
    });
}

void TableBox::collectTexts(std::vector<TextBox *> &texts)
{
    for (const Row &row : m_rows) {
        for (const Cell &cell : row)
            cell.box->collectTexts(texts);
    }
}

TextBox *TableBox::textNear(QPointF point)
{
    const QPointF inner = point - innerOrigin();
    TextBox *nearest = nullptr;
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        if (nearest != nullptr && m_bounds.rows[static_cast<qsizetype>(row)].position > inner.y())
            break;
        TextBox *inRow = nullptr;
        for (std::size_t column = 0; column < m_rows[row].size(); ++column) {
            const qreal x = m_bounds.columns[static_cast<qsizetype>(column)].position;
            TextBox *text = m_rows[row][column].box->textNear(inner);
            if (text != nullptr && (inRow == nullptr || x <= inner.x()))
                inRow = text;
        }
        nearest = inRow != nullptr ? inRow : nearest;
    }
    return nearest;
}

void TableBox::takeImages()
{
    for (const Row &row : m_rows) {
        for (const Cell &cell : row)
            cell.box->takeImages();
    }
}

void TableBox::repaint()
{
    SidewaysBox::repaint();
    for (const Row &row : m_rows) {
        for (const Cell &cell : row)
            cell.box->repaint();
    }
}

void TableBox::paintInner(QSGNode &node, QQuickItem &item)
{
    const TableBackgroundStyle &background = environment()->tableBackgroundStyle;
    for (qsizetype row = 0; row < m_bounds.rows.size(); ++row) {
        for (qsizetype column = 0; column < m_bounds.columns.size(); ++column) {
            const auto fill =
                background.background(static_cast<int>(row), static_cast<int>(column));
            if (fill)
                addRectangle(node, item, m_bounds.cell(row, column), fill->colour());
        }
    }
    const TableBorderStyle &border = environment()->tableBorderStyle;
    const qreal width = border.strokeStyle.lineWidth;
    for (const QRectF &box : border.visibleBorders.rectangles(m_bounds, width)) {
        const QPointF snapped(std::round(box.x()), std::round(box.y()));
        strokeInside(node, item, {snapped, box.size()}, width, border.color.colour());
    }
}

} // namespace velto::markdown
