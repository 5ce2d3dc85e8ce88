// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/sidewaysbox.h"

#include "controls/tokens.h"
#include "markdown/render/textnode.h"

#include <QKeyEvent>
#include <QSGNode>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace velto::markdown
{

namespace
{

constexpr qreal barThickness = 4;
constexpr qreal barMargin = 4;
constexpr qreal shortestHandle = 24;
constexpr qreal keyStep = 40;

} // namespace

/// What moves.
class SidewaysBox::Inner final : public BlockItem
{
public:
    Inner(SidewaysBox &box, bool draws)
        : BlockItem(&box, draws)
        , m_sideways(box)
    {}

protected:
    void paint(QSGNode &node) override { m_sideways.paintInner(node, *this); }

private:
    SidewaysBox &m_sideways;
};

/// The window that it moves behind; takes wheel and keys.
class SidewaysBox::Clip final : public QQuickItem
{
public:
    explicit Clip(SidewaysBox &box)
        : m_box(box)
    {
        setClip(true);
    }

protected:
    void wheelEvent(QWheelEvent *event) override
    {
        const QPoint pixels = event->pixelDelta();
        const QPoint delta = pixels.isNull() ? event->angleDelta() / 2 : pixels;
        const bool turned = event->modifiers().testFlag(Qt::ShiftModifier);
        const int way = turned && delta.x() == 0 ? delta.y() : delta.x();
        if (std::abs(way) < std::abs(delta.y()) && !turned)
            return event->ignore();
        event->setAccepted(way != 0 && m_box.maximumOffset() > 0);
        m_box.scrollTo(m_box.offset() - way);
    }

    void keyPressEvent(QKeyEvent *event) override
    {
        const bool plain =
            event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::KeypadModifier;
        if (plain && event->key() == Qt::Key_Left)
            m_box.scrollTo(m_box.offset() - keyStep);
        else if (plain && event->key() == Qt::Key_Right)
            m_box.scrollTo(m_box.offset() + keyStep);
        else
            event->ignore();
    }

    void focusInEvent(QFocusEvent *event) override
    {
        if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
            m_box.host().reveal(*this, boundingRect());
        m_box.repaint();
    }
    void focusOutEvent(QFocusEvent *) override { m_box.repaint(); }

private:
    SidewaysBox &m_box;
};

/// Shows how far it has moved, and moves it.
class SidewaysBox::Bar final : public QQuickItem
{
public:
    explicit Bar(SidewaysBox &box)
        : m_box(box)
    {
        setFlag(ItemHasContents);
        setAcceptedMouseButtons(Qt::LeftButton);
    }

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *) override
    {
        delete old;
        auto *node = new QSGNode;
        m_box.paintBar(*node, *this);
        return node;
    }

    void mousePressEvent(QMouseEvent *event) override
    {
        setKeepMouseGrab(true);
        m_grabbed = event->position().x();
        m_offsetThen = m_box.offset();
    }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        const qreal room = width() - m_box.handle().width();
        if (room > 0)
            m_box.scrollTo(m_offsetThen +
                           (event->position().x() - m_grabbed) * m_box.maximumOffset() / room);
    }
    void mouseReleaseEvent(QMouseEvent *) override { setKeepMouseGrab(false); }

private:
    SidewaysBox &m_box;
    qreal m_grabbed = 0;
    qreal m_offsetThen = 0;
};

SidewaysBox::SidewaysBox(BoxHost &host, EnvironmentPointer environment, BlockView view)
    : Box(host, std::move(environment), std::move(view))
{}

SidewaysBox::~SidewaysBox() = default;

qreal SidewaysBox::maximumOffset() const
{
    return std::max(0.0, innerWidth() - contentWidth());
}

qreal SidewaysBox::barRoom() const
{
    return showsBar() ? barThickness + barMargin : 0;
}

bool SidewaysBox::showsBar() const
{
    return maximumOffset() > 0 && view().scrollBar() == BlockView::ScrollBar::Shown;
}

bool SidewaysBox::scrollTo(qreal offset)
{
    const qreal wanted = std::round(std::clamp(offset, 0.0, maximumOffset()));
    if (std::exchange(m_offset, wanted) == wanted)
        return false;
    placeInner();
    if (m_bar)
        m_bar->update();
    host().layOutSoon(); // other parts come into view
    return true;
}

QRectF SidewaysBox::handle() const
{
    const qreal whole = innerWidth();
    const qreal room = contentWidth();
    if (maximumOffset() <= 0 || room <= 0)
        return {};
    const qreal width = std::max(std::min(shortestHandle, room), room * room / whole);
    return {(room - width) * m_offset / maximumOffset(), 0, width, barThickness};
}

void SidewaysBox::paintBar(QSGNode &node, QQuickItem &item) const
{
    const controls::Tokens &tokens = controls::Tokens::instance();
    const bool hasKeyboard = m_clip && m_clip->hasActiveFocus();
    const QColor colour = hasKeyboard ? controls::Tokens::faded(tokens.accent(), 0.8)
                                      : controls::Tokens::faded(tokens.primary(), 0.22);
    addRectangle(node, item, handle(), colour, barThickness / 2);
}

void SidewaysBox::paintInner(QSGNode &, QQuickItem &) {}

void SidewaysBox::repaint()
{
    Box::repaint();
    if (m_inner)
        m_inner->redraw();
    if (m_bar)
        m_bar->update();
}

std::unique_ptr<BlockItem> SidewaysBox::makeItem()
{
    auto item = Box::makeItem();
    m_clip = std::make_unique<Clip>(*this);
    m_clip->setParentItem(item.get());
    m_inner = std::make_unique<Inner>(*this, drawsInner());
    m_inner->setParentItem(m_clip.get());
    return item;
}

void SidewaysBox::placeInner()
{
    if (m_inner)
        m_inner->setPosition({-m_offset, 0});
}

void SidewaysBox::showContent(const QRectF &visible, QQuickItem &item)
{
    m_offset = std::clamp(m_offset, 0.0, maximumOffset());
    const QSizeF room(contentWidth(), size().height() - padding().top() - padding().bottom());
    const QSizeF inner(std::max(innerWidth(), contentWidth()), room.height());
    m_clip->setPosition(contentOrigin());
    m_clip->setSize(room);
    m_clip->setActiveFocusOnTab(maximumOffset() > 0);
    if (m_inner->size() != inner) {
        m_inner->setSize(inner);
        m_inner->redraw();
    }
    placeInner();
    if (!showsBar()) {
        m_bar.reset();
    } else if (!m_bar) {
        m_bar = std::make_unique<Bar>(*this);
        m_bar->setParentItem(&item);
    }
    if (m_bar) {
        m_bar->setPosition(
            {contentOrigin().x(), contentOrigin().y() + room.height() - barThickness});
        m_bar->setSize({contentWidth(), barThickness});
        m_bar->update();
    }
    showInner(visible.translated(-contentOrigin()), *m_inner);
}

void SidewaysBox::hideContent()
{
    hideInner();
    m_bar.reset();
    m_inner.reset();
    m_clip.reset();
}

} // namespace velto::markdown
