// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/sequencebox.h"

#include "markdown/render/blockitem.h"
#include "markdown/render/blockviews.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velto::markdown
{

BoxSequence::BoxSequence(BoxHost &host, EnvironmentPointer environment, BlockView view,
                         QAccessible::Role role)
    : Box(host, std::move(environment), std::move(view))
    , m_role(role)
{}

void BoxSequence::append(std::unique_ptr<Box> box)
{
    insert(count(), std::move(box));
}

void BoxSequence::insert(qsizetype at, std::unique_ptr<Box> box)
{
    box->setParent(this);
    m_boxes.insert(m_boxes.begin() + at, std::move(box));
    m_placed = std::min(m_placed, at);
    invalidate();
}

void BoxSequence::replace(qsizetype at, std::unique_ptr<Box> box)
{
    box->setParent(this);
    m_boxes[static_cast<std::size_t>(at)] = std::move(box);
    m_placed = std::min(m_placed, at);
    invalidate();
}

void BoxSequence::remove(qsizetype at, qsizetype count)
{
    m_boxes.erase(m_boxes.begin() + at, m_boxes.begin() + at + count);
    m_placed = std::min(m_placed, at);
    invalidate();
}

// Of a long text that grows, only the end has to be placed.
qsizetype BoxSequence::firstToPlace(qreal width) const
{
    if (m_placedWidth != width)
        return 0;
    const auto end = m_boxes.cbegin() + m_placed;
    const auto first =
        std::find_if(m_boxes.cbegin(), end, [](const auto &box) { return !box->isValid(); });
    return first - m_boxes.cbegin();
}

qreal BoxSequence::layOutContent(qreal width)
{
    const QPointF origin = contentOrigin();
    const qsizetype first = firstToPlace(width);
    const Box *previous = nullptr;
    for (qsizetype index = first - 1; index >= 0 && previous == nullptr; --index)
        previous = at(index).isVoid() ? nullptr : &at(index);
    qreal y = previous != nullptr ? previous->rectangle().bottom() - origin.y() : 0;
    for (qsizetype index = first; index < count(); ++index) {
        Box &box = at(index);
        box.layOut(width);
        if (previous != nullptr && !box.isVoid())
            y += std::round(std::max(previous->bottomMargin(), box.topMargin()));
        box.setPosition({origin.x(), origin.y() + y});
        if (box.isVoid())
            continue;
        y += box.size().height();
        previous = &box;
    }
    m_placed = count();
    m_placedWidth = width;
    return y;
}

void BoxSequence::showContent(const QRectF &visible, QQuickItem &item)
{
    if (m_role != QAccessible::NoRole)
        describe(item, m_role, accessibleName());
    QQuickItem *previous = nullptr;
    for (const auto &box : m_boxes) {
        const QRectF part = visible.translated(-box->position());
        const bool shows = box->position().y() < visible.bottom() &&
                           box->position().y() + box->size().height() > visible.top();
        if (!shows || box->isVoid()) {
            box->hide();
            continue;
        }
        box->show(part, item, previous);
        previous = box->item();
    }
}

void BoxSequence::hideContent()
{
    for (const auto &box : m_boxes)
        box->hide();
}

bool BoxSequence::measureContent(const std::function<bool()> &isDone)
{
    return std::all_of(m_boxes.cbegin(), m_boxes.cend(),
                       [&](const auto &box) { return box->measure(isDone); });
}

bool BoxSequence::isVoid() const
{
    return view().isPlainLabel() && std::all_of(m_boxes.cbegin(), m_boxes.cend(),
                                                [](const auto &box) { return box->isVoid(); });
}

bool BoxSequence::isRightToLeft() const
{
    return !m_boxes.empty() && m_boxes.front()->isRightToLeft();
}

void BoxSequence::collectTexts(std::vector<TextBox *> &texts)
{
    for (const auto &box : m_boxes)
        box->collectTexts(texts);
}

TextBox *BoxSequence::firstText()
{
    for (const auto &box : m_boxes) {
        if (TextBox *text = box->firstText())
            return text;
    }
    return nullptr;
}

TextBox *BoxSequence::textNear(QPointF point)
{
    const auto below =
        std::upper_bound(m_boxes.cbegin(), m_boxes.cend(), point.y(),
                         [](qreal y, const auto &box) { return y < box->position().y(); });
    for (auto box = below; box != m_boxes.cbegin();) {
        --box;
        if (TextBox *text = (*box)->textNear(point - (*box)->position()))
            return text;
    }
    for (auto box = below; box != m_boxes.cend(); ++box) {
        if (TextBox *text = (*box)->textNear(point - (*box)->position()))
            return text;
    }
    return nullptr;
}

void BoxSequence::takeImages()
{
    for (const auto &box : m_boxes) {
        if (box->item() != nullptr)
            box->takeImages();
    }
}

void BoxSequence::repaint()
{
    Box::repaint();
    for (const auto &box : m_boxes)
        box->repaint();
}

qreal BoxSequence::contentTopMargin() const
{
    const auto first = std::find_if(m_boxes.cbegin(), m_boxes.cend(),
                                    [](const auto &box) { return !box->isVoid(); });
    return first != m_boxes.cend() ? (*first)->topMargin() : 0;
}

qreal BoxSequence::contentBottomMargin() const
{
    const auto last = std::find_if(m_boxes.crbegin(), m_boxes.crend(),
                                   [](const auto &box) { return !box->isVoid(); });
    return last != m_boxes.crend() ? (*last)->bottomMargin() : 0;
}

std::optional<qreal> BoxSequence::contentBaseline() const
{
    if (m_boxes.empty())
        return std::nullopt;
    const std::optional<qreal> baseline = m_boxes.front()->firstBaseline();
    return baseline
               ? std::optional(*baseline + m_boxes.front()->position().y() - contentOrigin().y())
               : std::nullopt;
}

BlockSequence::BlockSequence(BoxHost &host, EnvironmentPointer environment, BlockView view,
                             QAccessible::Role role)
    : BoxSequence(host, std::move(environment), std::move(view), role)
{}

bool BlockSequence::take(const BlockNode &block)
{
    const auto *quote = std::get_if<blocks::Blockquote>(&block.kind);
    if (quote == nullptr)
        return false;
    setView(styledView(environment()->theme.blockquote(), block));
    setBlocks(quote->children);
    return true;
}

void BlockSequence::setBlocks(const QList<BlockNode> &blocks)
{
    const qsizetype common = std::min(m_blocks.size(), blocks.size());
    for (qsizetype index = 0; index < common; ++index) {
        if (m_blocks[index] == blocks[index] || at(index).take(blocks[index]))
            continue;
        replace(index, makeBox(host(), environment(), blocks[index]));
    }
    if (m_blocks.size() > common)
        remove(common, m_blocks.size() - common);
    for (qsizetype index = common; index < blocks.size(); ++index)
        append(makeBox(host(), environment(), blocks[index]));
    m_blocks = blocks;
}

} // namespace velto::markdown
