// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/sidewaysbox.h"
#include "markdown/render/textbox.h"
#include "markdown/theme/tablestyle.h"

namespace velto::markdown
{

/// Cells on one grid, each column as wide as its widest cell. Text that has to share too little
/// room is broken into lines as far as it stays readable; what is still too wide scrolls.
class TableBox final : public SidewaysBox
{
public:
    TableBox(BoxHost &host, const EnvironmentPointer &environment, const BlockView &view,
             const blocks::Table &table);

    [[nodiscard]] bool take(const BlockNode &block) override;
    void collectTexts(std::vector<TextBox *> &texts) override;
    [[nodiscard]] TextBox *textNear(QPointF point) override;
    void takeImages() override;
    void repaint() override;
    void paintInner(QSGNode &node, QQuickItem &item) override;
    [[nodiscard]] const TableBounds &bounds() const { return m_bounds; }

    /// Widths of columns that share `room`: their own where all fit, else the wide ones give way,
    /// though never below `narrowest`.
    [[nodiscard]] static QList<qreal> sharedWidths(QList<qreal> wanted, qreal room,
                                                   qreal narrowest);

protected:
    [[nodiscard]] qreal layOutContent(qreal width) override;
    [[nodiscard]] bool measureContent(const std::function<bool()> &isDone) override;
    [[nodiscard]] qreal innerWidth() const override { return m_bounds.bounds.width(); }
    void showInner(const QRectF &visible, QQuickItem &inner) override;
    void hideInner() override;
    [[nodiscard]] bool drawsInner() const override { return true; }

private:
    struct Cell
    {
        std::unique_ptr<TextBox> box;
        QMarginsF inset;
        qreal drop = 0; ///< Down to the baseline that the row shares.
    };
    using Row = std::vector<Cell>;

    [[nodiscard]] Row makeRow(const blocks::Table &table, qsizetype row);
    [[nodiscard]] Cell makeCell(const blocks::Table &table, qsizetype row, qsizetype column);
    [[nodiscard]] QList<qreal> columnWidths(qreal room) const;
    [[nodiscard]] static qreal baselineOf(const Row &row);
    [[nodiscard]] QPointF placeOf(qsizetype row, qsizetype column) const;

    EnvironmentPointer m_cellEnvironment;
    blocks::Table m_table;
    std::vector<Row> m_rows;
    TableBounds m_bounds;
};

} // namespace velto::markdown
