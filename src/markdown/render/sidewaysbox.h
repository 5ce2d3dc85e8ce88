// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/blockitem.h"
#include "markdown/render/box.h"

namespace velto::markdown
{

/// A box whose content may be wider than there is room. It then scrolls sideways inside itself, by
/// wheel, by its bar and by keyboard, and nothing around it moves.
class SidewaysBox : public Box
{
public:
    SidewaysBox(BoxHost &host, EnvironmentPointer environment, BlockView view);
    ~SidewaysBox() override;

    [[nodiscard]] qreal offset() const { return m_offset; }
    [[nodiscard]] qreal maximumOffset() const;
    /// True when that made a difference.
    bool scrollTo(qreal offset);
    void paintBar(QSGNode &node, QQuickItem &item) const;
    /// The bar's handle in the box's coordinates; empty when all fits.
    [[nodiscard]] QRectF handle() const;
    /// Draws what moves with the content.
    virtual void paintInner(QSGNode &node, QQuickItem &item);
    void repaint() override;
    [[nodiscard]] QPointF innerOrigin() const override
    {
        return contentOrigin() - QPointF(m_offset, 0);
    }

protected:
    [[nodiscard]] virtual qreal innerWidth() const = 0;
    /// Room for the bar below the content, none when it doesn't show.
    [[nodiscard]] qreal barRoom() const;
    void showContent(const QRectF &visible, QQuickItem &item) override;
    void hideContent() override;
    /// As showContent, in the coordinates of what moves.
    virtual void showInner(const QRectF &visible, QQuickItem &inner) = 0;
    virtual void hideInner() = 0;
    [[nodiscard]] virtual bool drawsInner() const { return false; }
    [[nodiscard]] std::unique_ptr<BlockItem> makeItem() override;

private:
    class Inner;
    class Clip;
    class Bar;

    [[nodiscard]] bool showsBar() const;
    void placeInner();

    std::unique_ptr<QQuickItem> m_clip;
    std::unique_ptr<BlockItem> m_inner;
    std::unique_ptr<QQuickItem> m_bar;
    qreal m_offset = 0;
};

} // namespace velto::markdown
