// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/laidtext.h"
#include "markdown/render/sequencebox.h"

namespace velto::markdown
{

/// A marker, and beside it on its first baseline what the item holds.
class ListItemBox final : public Box
{
public:
    ListItemBox(BoxHost &host, const EnvironmentPointer &environment, const BlockView &view);

    void setMarker(const BlockView &marker, const QString &spoken, std::optional<bool> isTicked);
    void setContent(const QList<BlockNode> &blocks, const BlockView &view);
    /// The width of the marker's frame, shared by all items of a list.
    void setMarkerWidth(qreal width);
    [[nodiscard]] qreal wantedMarkerWidth() const;

    [[nodiscard]] bool isRightToLeft() const override { return m_content.isRightToLeft(); }
    void collectTexts(std::vector<TextBox *> &texts) override;
    [[nodiscard]] TextBox *firstText() override { return m_content.firstText(); }
    [[nodiscard]] TextBox *textNear(QPointF point) override;
    void takeImages() override { m_content.takeImages(); }
    void repaint() override;
    [[nodiscard]] QString accessibleName() const override { return m_spoken; }
    /// The marker in copied text.
    [[nodiscard]] QString copiedMarker() const;
    void paint(QSGNode &node, QQuickItem &item) override;

protected:
    [[nodiscard]] qreal layOutContent(qreal width) override;
    [[nodiscard]] bool measureContent(const std::function<bool()> &isDone) override;
    void showContent(const QRectF &visible, QQuickItem &item) override;
    void hideContent() override;
    [[nodiscard]] bool drawsContent() const override { return true; }
    [[nodiscard]] qreal contentTopMargin() const override { return m_content.topMargin(); }
    [[nodiscard]] qreal contentBottomMargin() const override { return m_content.bottomMargin(); }
    [[nodiscard]] std::optional<qreal> contentBaseline() const override;

private:
    /// Where a marker of that width begins.
    [[nodiscard]] qreal markerX(qreal width) const;
    [[nodiscard]] qreal markerBaseline() const;
    [[nodiscard]] AttributedString markerText() const;
    void paintText(QSGNode &node, QQuickItem &item) const;
    void paintSymbol(QSGNode &node, QQuickItem &item, const BlockView::Symbol &symbol) const;

    BlockView m_marker = BlockView::label();
    QString m_spoken;
    std::optional<bool> m_isTicked;
    qreal m_markerWidth = 0;
    BlockSequence m_content;
};

/// A list of any kind.
class ListBox final : public BoxSequence
{
public:
    static std::unique_ptr<ListBox> make(BoxHost &host, const EnvironmentPointer &environment,
                                         const BlockNode &block);

    [[nodiscard]] bool take(const BlockNode &block) override;

protected:
    [[nodiscard]] qreal layOutContent(qreal width) override;

private:
    /// What the three kinds of lists have in common.
    struct Items
    {
        std::size_t kind = 0;
        bool isTight = true;
        int start = 1;
        QList<QList<BlockNode>> children;
        QList<bool> ticks; ///< Of a task list.
    };

    ListBox(BoxHost &host, const EnvironmentPointer &environment, const BlockView &view,
            Items items);

    [[nodiscard]] static std::optional<Items> itemsOf(const BlockNode &block);
    [[nodiscard]] std::unique_ptr<ListItemBox> makeItemBox(const Items &items, qsizetype index);
    void fill(ListItemBox &box, const Items &items, qsizetype index) const;

    EnvironmentPointer m_itemEnvironment;
    Items m_items;
};

} // namespace velto::markdown
