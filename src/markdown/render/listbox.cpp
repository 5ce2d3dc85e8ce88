// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/listbox.h"

#include "controls/symbols.h"
#include "markdown/render/blockitem.h"
#include "markdown/render/blockviews.h"
#include "markdown/render/textnode.h"

#include <QFontMetricsF>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velto::markdown
{

namespace
{

// Between the frame of the marker and the item's text.
constexpr RelativeSize markerDistance = em(0.45);

qreal emSize(const Environment &environment)
{
    return environment.text.fontProperties.scaledSize();
}

EnvironmentPointer inList(const EnvironmentPointer &environment, bool isTight)
{
    auto changed = std::make_shared<Environment>(*environment);
    changed->tightSpacingEnabled = isTight;
    changed->listLevel = environment->listLevel + 1;
    return changed;
}

} // namespace

ListItemBox::ListItemBox(BoxHost &host, const EnvironmentPointer &environment,
                         const BlockView &view)
    : Box(host, environment, view)
    , m_content(host, styled(environment, view))
{
    m_content.setParent(this);
}

void ListItemBox::setMarker(const BlockView &marker, const QString &spoken,
                            std::optional<bool> isTicked)
{
    m_marker = marker;
    m_spoken = spoken;
    m_isTicked = isTicked;
    Box::repaint();
}

void ListItemBox::setContent(const QList<BlockNode> &blocks, const BlockView &view)
{
    setView(view);
    m_content.setBlocks(blocks);
}

AttributedString ListItemBox::markerText() const
{
    AttributedString text;
    if (const auto *words = std::get_if<BlockView::Text>(&m_marker.content()))
        text.append(words->text, m_marker.textStyle().applied(environment()->text));
    return text;
}

qreal ListItemBox::wantedMarkerWidth() const
{
    const RelativeSize least = m_marker.frame() ? m_marker.frame()->minimumWidth : em(0);
    const qreal minimum = least.points(emSize(*environment()), environment()->text.baseSize);
    if (!std::holds_alternative<BlockView::Text>(m_marker.content()))
        return minimum;
    return std::max(minimum, LaidText::measuredWidth(markerText()));
}

void ListItemBox::setMarkerWidth(qreal width)
{
    if (m_markerWidth == width)
        return;
    m_markerWidth = width;
    invalidate();
    Box::repaint();
}

qreal ListItemBox::layOutContent(qreal width)
{
    const qreal distance = std::round(markerDistance.points(emSize(*environment()), 0));
    const qreal indent = std::min(std::round(m_markerWidth + distance), width / 2);
    m_content.layOut(width - indent);
    m_content.setPosition(contentOrigin() + QPointF(isRightToLeft() ? 0 : indent, 0));
    const qreal line = LaidText::singleLineHeight(environment()->text, environment()->lineHeight);
    return std::max(line, m_content.size().height());
}

void ListItemBox::showContent(const QRectF &visible, QQuickItem &item)
{
    describe(item, QAccessible::ListItem, m_spoken);
    if (m_isTicked)
        describeCheckable(item, *m_isTicked);
    m_content.show(visible.translated(-m_content.position()), item, nullptr);
}

void ListItemBox::hideContent()
{
    m_content.hide();
}

bool ListItemBox::measureContent(const std::function<bool()> &isDone)
{
    return m_content.measure(isDone);
}

void ListItemBox::collectTexts(std::vector<TextBox *> &texts)
{
    m_content.collectTexts(texts);
}

TextBox *ListItemBox::textNear(QPointF point)
{
    return m_content.textNear(point - m_content.position());
}

QString ListItemBox::copiedMarker() const
{
    if (!m_isTicked)
        return m_spoken;
    return *m_isTicked ? QStringLiteral("\u2611") : QStringLiteral("\u2610");
}

void ListItemBox::repaint()
{
    Box::repaint();
    m_content.repaint();
}

std::optional<qreal> ListItemBox::contentBaseline() const
{
    return m_content.firstBaseline();
}

qreal ListItemBox::markerX(qreal width) const
{
    const auto alignment =
        m_marker.frame() ? m_marker.frame()->alignment : BlockView::Alignment::Leading;
    const qreal x = alignment == BlockView::Alignment::Leading  ? 0
                    : alignment == BlockView::Alignment::Center ? (m_markerWidth - width) / 2
                                                                : m_markerWidth - width;
    return isRightToLeft() ? size().width() - x - width : x;
}

qreal ListItemBox::markerBaseline() const
{
    const qreal own = LaidText::singleLineBaseline(environment()->text, environment()->lineHeight);
    return contentOrigin().y() + m_content.firstBaseline().value_or(own);
}

void ListItemBox::paintText(QSGNode &node, QQuickItem &item) const
{
    const AttributedString text = markerText();
    if (text.isEmpty())
        return;
    const LaidText marker(text, {1, Qt::AlignLeft, false});
    const QPointF position(std::round(markerX(marker.idealWidth())),
                           markerBaseline() - marker.firstBaseline());
    addText(node, item, marker, {position, 0, 0, {}});
}

// Drawn as a shape: a font of marks would have to be announced to the system's font matching.
void ListItemBox::paintSymbol(QSGNode &node, QQuickItem &item,
                              const BlockView::Symbol &symbol) const
{
    using controls::Symbols;
    const TextAttributes attributes = m_marker.textStyle().applied(environment()->text);
    const qreal textSize =
        symbol.size.points(attributes.fontProperties.scaledSize(), attributes.baseSize);
    const qreal ratio = item.window()->effectiveDevicePixelRatio();
    const int pixels =
        std::max(1, static_cast<int>(std::lround(textSize * Symbols::fontScale * ratio)));
    const qreal side = pixels / ratio;
    // Symbols stand centred at half the height of a capital.
    const QFontMetricsF metrics(environment()->text.fontProperties.font());
    const qreal y = markerBaseline() - metrics.capHeight() / 2 - side / 2;
    const QColor colour = attributes.foregroundColor.value_or(Ink::primary()).colour();
    addPicture(
        node, item,
        {std::round(markerX(side) * ratio) / ratio, std::round(y * ratio) / ratio, side, side},
        Symbols::picture(symbol.name, pixels, {colour, colour}));
}

void ListItemBox::paint(QSGNode &node, QQuickItem &item)
{
    Box::paint(node, item);
    if (const auto *symbol = std::get_if<BlockView::Symbol>(&m_marker.content()))
        paintSymbol(node, item, *symbol);
    else
        paintText(node, item);
}

ListBox::ListBox(BoxHost &host, const EnvironmentPointer &environment, const BlockView &view,
                 Items items)
    : BoxSequence(host, environment, view, QAccessible::List)
    , m_itemEnvironment(inList(styled(environment, view), items.isTight))
    , m_items(std::move(items))
{
    for (qsizetype index = 0; index < m_items.children.size(); ++index)
        append(makeItemBox(m_items, index));
}

std::unique_ptr<ListBox> ListBox::make(BoxHost &host, const EnvironmentPointer &environment,
                                       const BlockNode &block)
{
    const std::optional<Items> items = itemsOf(block);
    Q_ASSERT(items);
    return std::unique_ptr<ListBox>(
        new ListBox(host, environment, styledView(environment->theme.list(), block), *items));
}

std::optional<ListBox::Items> ListBox::itemsOf(const BlockNode &block)
{
    Items items;
    items.kind = block.kind.index();
    const auto take = [&](const auto &list) {
        items.isTight = list.isTight;
        for (const auto &item : list.items)
            items.children.append(item.children);
    };
    if (const auto *bulleted = std::get_if<blocks::BulletedList>(&block.kind)) {
        take(*bulleted);
    } else if (const auto *numbered = std::get_if<blocks::NumberedList>(&block.kind)) {
        take(*numbered);
        items.start = numbered->start;
    } else if (const auto *tasks = std::get_if<blocks::TaskList>(&block.kind)) {
        take(*tasks);
        for (const RawTaskListItem &item : tasks->items)
            items.ticks.append(item.isCompleted);
    } else {
        return std::nullopt;
    }
    return items;
}

std::unique_ptr<ListItemBox> ListBox::makeItemBox(const Items &items, qsizetype index)
{
    const BlockView view = styledView(m_itemEnvironment->theme.listItem(), items.children[index]);
    auto box = std::make_unique<ListItemBox>(host(), m_itemEnvironment, view);
    fill(*box, items, index);
    return box;
}

void ListBox::fill(ListItemBox &box, const Items &items, qsizetype index) const
{
    const Theme &theme = m_itemEnvironment->theme;
    const int level = m_itemEnvironment->listLevel;
    const int number = items.start + static_cast<int>(index);
    if (!items.ticks.isEmpty()) {
        const bool isTicked = items.ticks[index];
        box.setMarker(theme.taskListMarker()({isTicked}), QString(), isTicked);
    } else if (items.kind == BlockNode::Kind(blocks::NumberedList{}).index()) {
        box.setMarker(theme.numberedListMarker()({level, number}),
                      QString::number(number) + QLatin1Char('.'), std::nullopt);
    } else {
        box.setMarker(theme.bulletedListMarker()({level, number}), QStringLiteral("\u2022"),
                      std::nullopt);
    }
    box.setContent(items.children[index], styledView(theme.listItem(), items.children[index]));
}

bool ListBox::take(const BlockNode &block)
{
    std::optional<Items> items = itemsOf(block);
    if (!items || items->kind != m_items.kind || items->isTight != m_items.isTight ||
        items->start != m_items.start)
        return false;
    setView(styledView(environment()->theme.list(), block));
    const qsizetype common = std::min(m_items.children.size(), items->children.size());
    for (qsizetype index = 0; index < common; ++index) {
        const bool same = m_items.children[index] == items->children[index] &&
                          m_items.ticks.value(index) == items->ticks.value(index);
        if (!same)
            fill(static_cast<ListItemBox &>(at(index)), *items, index);
    }
    if (count() > common)
        remove(common, count() - common);
    for (qsizetype index = common; index < items->children.size(); ++index)
        append(makeItemBox(*items, index));
    m_items = *std::move(items);
    return true;
}

qreal ListBox::layOutContent(qreal width)
{
    if (count() == 0)
        return 0;
    // Digits are of one width, so the last number is the widest.
    const qreal markerWidth =
        std::max(static_cast<ListItemBox &>(at(0)).wantedMarkerWidth(),
                 static_cast<ListItemBox &>(at(count() - 1)).wantedMarkerWidth());
    for (qsizetype index = 0; index < count(); ++index)
        static_cast<ListItemBox &>(at(index)).setMarkerWidth(markerWidth);
    return BoxSequence::layOutContent(width);
}

} // namespace velto::markdown
