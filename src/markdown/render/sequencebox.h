// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/box.h"

#include <QAccessible>

namespace velto::markdown
{

/// Boxes below one another. Their margins decide the gaps: of two that meet, the greater one holds.
class BoxSequence : public Box
{
public:
    BoxSequence(BoxHost &host, EnvironmentPointer environment, BlockView view,
                QAccessible::Role role);

    void append(std::unique_ptr<Box> box);
    void replace(qsizetype at, std::unique_ptr<Box> box);
    void insert(qsizetype at, std::unique_ptr<Box> box);
    void remove(qsizetype at, qsizetype count);
    [[nodiscard]] qsizetype count() const { return static_cast<qsizetype>(m_boxes.size()); }
    /// Every box is where it was laid out last, though it may have changed since.
    [[nodiscard]] bool isPlaced() const { return m_placed == count(); }
    [[nodiscard]] Box &at(qsizetype index) const
    {
        return *m_boxes[static_cast<std::size_t>(index)];
    }

    [[nodiscard]] bool isVoid() const override;
    [[nodiscard]] bool isRightToLeft() const override;
    void collectTexts(std::vector<TextBox *> &texts) override;
    [[nodiscard]] TextBox *firstText() override;
    [[nodiscard]] TextBox *textNear(QPointF point) override;
    void takeImages() override;
    void repaint() override;

protected:
    [[nodiscard]] qreal layOutContent(qreal width) override;
    [[nodiscard]] bool measureContent(const std::function<bool()> &isDone) override;
    void showContent(const QRectF &visible, QQuickItem &item) override;
    void hideContent() override;
    [[nodiscard]] qreal contentTopMargin() const override;
    [[nodiscard]] qreal contentBottomMargin() const override;
    [[nodiscard]] std::optional<qreal> contentBaseline() const override;

private:
    [[nodiscard]] qsizetype firstToPlace(qreal width) const;

    const QAccessible::Role m_role;
    std::vector<std::unique_ptr<Box>> m_boxes;
    qsizetype m_placed = 0;   ///< So many boxes from the front are where they belong,
    qreal m_placedWidth = -1; ///< for that width.
};

/// The views of a list of blocks, such as those of a quote.
class BlockSequence final : public BoxSequence
{
public:
    BlockSequence(BoxHost &host, EnvironmentPointer environment,
                  BlockView view = BlockView::label(),
                  QAccessible::Role role = QAccessible::NoRole);

    [[nodiscard]] bool take(const BlockNode &block) override;
    /// Shows other blocks, keeping what stays the same.
    void setBlocks(const QList<BlockNode> &blocks);

private:
    QList<BlockNode> m_blocks;
};

} // namespace velto::markdown
