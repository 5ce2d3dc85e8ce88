// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/box.h"

#include "markdown/render/blockitem.h"
#include "markdown/render/textbox.h"
#include "markdown/render/textnode.h"

#include <QGuiApplication>

#include <algorithm>
#include <utility>

namespace velto::markdown
{

namespace
{

// What a block keeps below it unless its style says otherwise, in base text sizes.
constexpr RelativeSize usualDistance = rem(0.75);
constexpr qreal hairline = 1;

QMarginsF onScreen(const QMarginsF &margins, bool rightToLeft)
{
    return rightToLeft ? QMarginsF(margins.right(), margins.top(), margins.left(), margins.bottom())
                       : margins;
}

} // namespace

Box::Box(BoxHost &host, EnvironmentPointer environment, BlockView view)
    : m_host(host)
    , m_environment(std::move(environment))
    , m_view(std::move(view))
{}

Box::~Box() = default;

bool Box::take(const BlockNode &)
{
    return false;
}

void Box::layOut(qreal width)
{
    if (m_isValid && m_size.width() == width)
        return;
    m_isMeasured = m_isMeasured && m_size.width() == width;
    m_isValid = true;
    const QMarginsF around = padding();
    m_contentWidth = std::max(0.0, width - around.left() - around.right());
    const qreal below = m_view.dividerBelow() ? hairline : 0;
    const qreal height = layOutContent(m_contentWidth);
    m_size = {width, height + around.top() + around.bottom() + below};
}

void Box::invalidate()
{
    for (Box *box = this; box != nullptr; box = box->m_parent)
        box->m_isValid = box->m_isMeasured = false;
}

void Box::setView(const BlockView &view)
{
    m_view = view;
    if (m_item)
        m_item->redraw();
}

QMarginsF Box::padding() const
{
    return onScreen(m_view.padding(), isRightToLeft()) + outside();
}

QMarginsF Box::outside() const
{
    return onScreen(m_view.inset(), isRightToLeft()) + QMarginsF(0, roomAbove(), 0, 0);
}

QPointF Box::contentOrigin() const
{
    const QMarginsF around = padding();
    return {around.left(), around.top()};
}

QQuickItem *Box::item() const
{
    return m_item.get();
}

std::unique_ptr<BlockItem> Box::makeItem()
{
    return std::make_unique<BlockItem>(this, drawsContent() || drawsAround());
}

void Box::show(const QRectF &visible, QQuickItem &parent, QQuickItem *previous)
{
    if (!m_item) {
        m_item = makeItem();
        m_item->setParentItem(&parent);
        placeAfter(*m_item, previous);
    }
    m_item->setPosition(m_position);
    if (m_item->size() != m_size) {
        m_item->setSize(m_size);
        m_item->redraw();
    }
    showContent(visible, *m_item);
}

void Box::hide()
{
    if (!m_item)
        return;
    hideContent();
    m_item.reset();
}

void Box::showContent(const QRectF &, QQuickItem &) {}
void Box::hideContent() {}
void Box::takeImages() {}
void Box::collectTexts(std::vector<TextBox *> &) {}

TextBox *Box::firstText()
{
    std::vector<TextBox *> texts;
    collectTexts(texts);
    return texts.empty() ? nullptr : texts.front();
}

TextBox *Box::textNear(QPointF)
{
    return nullptr;
}

QPointF Box::toOutermost(QPointF point) const
{
    for (const Box *box = this; box->m_parent != nullptr; box = box->m_parent)
        point += box->m_position + box->m_parent->innerOrigin();
    return point;
}

void Box::repaint()
{
    if (m_item)
        m_item->redraw();
}

bool Box::measure(const std::function<bool()> &isDone)
{
    if (!m_isMeasured)
        m_isMeasured = measureContent(isDone);
    return m_isMeasured;
}

bool Box::measureContent(const std::function<bool()> &)
{
    return true;
}

bool Box::marginsCollapse() const
{
    return padding().isNull() && !m_view.background() && !m_view.outline() &&
           !m_view.dividerBelow();
}

qreal Box::topMargin() const
{
    const qreal own = m_view.margin().top.value_or(0);
    return marginsCollapse() ? std::max(own, contentTopMargin()) : own;
}

qreal Box::bottomMargin() const
{
    const qreal usual = m_environment->tightSpacingEnabled
                            ? 0
                            : usualDistance.points(0, m_environment->text.baseSize);
    const qreal own = m_view.margin().bottom.value_or(usual);
    return marginsCollapse() ? std::max(own, contentBottomMargin()) : own;
}

std::optional<qreal> Box::firstBaseline() const
{
    const std::optional<qreal> baseline = contentBaseline();
    return baseline ? std::optional(*baseline + padding().top()) : std::nullopt;
}

bool Box::drawsAround() const
{
    return m_view.background() || m_view.outline() || m_view.leadingBar() || m_view.dividerBelow();
}

void Box::paint(QSGNode &node, QQuickItem &item)
{
    paintAround(node, item);
}

void Box::paintAround(QSGNode &node, QQuickItem &item) const
{
    const QRectF all = backgroundRectangle();
    const qreal radius = m_view.background() ? m_view.background()->radius : 0;
    if (m_view.background())
        addRectangle(node, item, all, m_view.background()->fill.colour(), radius);
    if (m_view.outline())
        addRectangle(node, item, all, m_view.outline()->colour(), radius, hairline);
    if (m_view.leadingBar()) {
        const qreal width = m_view.leadingBar()->width;
        const qreal x = isRightToLeft() ? all.right() - width : all.left();
        addRectangle(node, item, {x, all.top(), width, all.height()},
                     m_view.leadingBar()->ink.colour(), width / 2);
    }
    if (m_view.dividerBelow())
        addRectangle(node, item, {all.left(), all.bottom() - hairline, all.width(), hairline},
                     m_view.dividerBelow()->colour());
}

EnvironmentPointer styled(const EnvironmentPointer &environment, const BlockView &view)
{
    const TextAttributes text = view.textStyle().applied(environment->text);
    const qreal lineHeight = view.lineHeight().value_or(environment->lineHeight);
    if (text == environment->text && lineHeight == environment->lineHeight)
        return environment;
    auto changed = std::make_shared<Environment>(*environment);
    changed->text = text;
    changed->lineHeight = lineHeight;
    return changed;
}

} // namespace velto::markdown
