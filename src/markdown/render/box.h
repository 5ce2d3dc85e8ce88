// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/blocknode.h"
#include "markdown/render/environment.h"
#include "markdown/theme/blockview.h"

#include <QPointF>
#include <QPointer>
#include <QRectF>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <vector>

class QSGNode;

namespace velto::markdown
{

class BlockItem;
class Box;
class TextBox;

/// What boxes need of the view that they are in.
class BoxHost
{
public:
    virtual ~BoxHost() = default;

    /// Something took another size by itself: lay out again before the next frame.
    virtual void layOutSoon() = 0;
    /// A text is about to be gone, or another text.
    virtual void forget(const TextBox &text) = 0;
    /// A picture for a line of text. Null while it isn't there; the host asks all boxes to
    /// `takeImages` when it has come.
    [[nodiscard]] virtual QImage inlineImage(const QString &source, const QString &label) = 0;
    /// An item of a QML component, null when it can't be made.
    [[nodiscard]] virtual QQuickItem *makeComponent(const QUrl &url, const QVariantMap &properties,
                                                    QQuickItem *parent) = 0;
    virtual void open(const QUrl &link) = 0;
    /// Something got the keyboard: bring that part of the item into view.
    virtual void reveal(const QQuickItem &item, const QRectF &part) = 0;
};

using EnvironmentPointer = std::shared_ptr<const Environment>;

/// One node of the layout: a block with what its style puts around it. Boxes are light; only those
/// that show have an item of the screen and a laid-out text. Their heights are known, or guessed
/// until somebody looks or measures.
class Box
{
public:
    Box(BoxHost &host, EnvironmentPointer environment, BlockView view);
    virtual ~Box();
    Box(const Box &) = delete;
    Box &operator=(const Box &) = delete;

    /// Becomes the box of another block of its kind with as little change as possible. False when
    /// it can't.
    [[nodiscard]] virtual bool take(const BlockNode &block);

    /// Settles the size for that width. Cheap when nothing has changed since the last time.
    void layOut(qreal width);
    [[nodiscard]] QSizeF size() const { return m_size; }
    [[nodiscard]] QPointF position() const { return m_position; }
    void setPosition(QPointF position) { m_position = position; }
    [[nodiscard]] QRectF rectangle() const { return {m_position, m_size}; }

    /// Shows what lies in `visible`, in the box's own coordinates, below `parent` and in front of
    /// `previous`. Texts that come into view may turn out to have another height, upon which the
    /// layout is invalid.
    void show(const QRectF &visible, QQuickItem &parent, QQuickItem *previous);
    void hide();
    [[nodiscard]] QQuickItem *item() const;
    /// Measures guessed texts until `isDone`; true when there are none left.
    [[nodiscard]] bool measure(const std::function<bool()> &isDone);

    /// Distances wanted above and below, those of the content included.
    [[nodiscard]] qreal topMargin() const;
    [[nodiscard]] qreal bottomMargin() const;
    /// Of the first line of text, from the top of the box; absent where there is no text.
    [[nodiscard]] std::optional<qreal> firstBaseline() const;
    /// Nothing shows of it, and it takes no room.
    [[nodiscard]] virtual bool isVoid() const { return false; }
    [[nodiscard]] virtual bool isRightToLeft() const { return false; }

    /// The texts within, in reading order.
    virtual void collectTexts(std::vector<TextBox *> &texts);
    [[nodiscard]] virtual TextBox *firstText();
    /// The text nearest to a point of the box; null when there is none.
    [[nodiscard]] virtual TextBox *textNear(QPointF point);
    /// Where the coordinates begin that the boxes within are placed in.
    [[nodiscard]] virtual QPointF innerOrigin() const { return {}; }
    /// A point of this box in the coordinates of the outermost one.
    [[nodiscard]] QPointF toOutermost(QPointF point) const;
    [[nodiscard]] virtual QString accessibleName() const { return {}; }
    virtual void takeImages();
    /// Colours have changed.
    virtual void repaint();

    /// Draws below `node`. Render thread, while the main thread waits.
    virtual void paint(QSGNode &node, QQuickItem &item);

    [[nodiscard]] Box *parent() const { return m_parent; }
    void setParent(Box *parent) { m_parent = parent; }
    /// The layout of this and all around it has to be done again.
    void invalidate();
    [[nodiscard]] bool isValid() const { return m_isValid; }

protected:
    /// Gives the height for a width.
    [[nodiscard]] virtual qreal layOutContent(qreal width) = 0;
    [[nodiscard]] virtual bool measureContent(const std::function<bool()> &isDone);
    virtual void showContent(const QRectF &visible, QQuickItem &item);
    virtual void hideContent();
    [[nodiscard]] virtual bool drawsContent() const { return false; }
    [[nodiscard]] virtual std::unique_ptr<BlockItem> makeItem();
    /// Room for what stands above the background.
    [[nodiscard]] virtual qreal roomAbove() const { return 0; }
    [[nodiscard]] virtual qreal contentTopMargin() const { return 0; }
    [[nodiscard]] virtual qreal contentBottomMargin() const { return 0; }
    [[nodiscard]] virtual std::optional<qreal> contentBaseline() const { return std::nullopt; }

    [[nodiscard]] BoxHost &host() const { return m_host; }
    [[nodiscard]] const EnvironmentPointer &environment() const { return m_environment; }
    [[nodiscard]] const BlockView &view() const { return m_view; }
    void setView(const BlockView &view);
    /// All room around the content, its sides as they are on the screen.
    [[nodiscard]] QMarginsF padding() const;
    /// What of it lies outside the background.
    [[nodiscard]] QMarginsF outside() const;
    /// The box without what is outside.
    [[nodiscard]] QRectF backgroundRectangle() const
    {
        return QRectF(QPointF(), m_size).marginsRemoved(outside());
    }
    [[nodiscard]] QPointF contentOrigin() const;
    [[nodiscard]] qreal contentWidth() const { return m_contentWidth; }

private:
    void paintAround(QSGNode &node, QQuickItem &item) const;
    [[nodiscard]] bool drawsAround() const;
    [[nodiscard]] bool marginsCollapse() const;

    BoxHost &m_host;
    EnvironmentPointer m_environment;
    BlockView m_view;
    Box *m_parent = nullptr;
    QPointF m_position;
    QSizeF m_size;
    qreal m_contentWidth = 0;
    bool m_isValid = false;
    bool m_isMeasured = false;
    std::unique_ptr<BlockItem> m_item;
};

/// The environment with a style's character look in it.
[[nodiscard]] EnvironmentPointer styled(const EnvironmentPointer &environment,
                                        const BlockView &view);

} // namespace velto::markdown
