// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/symbol.h"

#include "controls/symbols.h"
#include "controls/tokens.h"

#include <QImage>
#include <QQuickWindow>
#include <QSGImageNode>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velto::controls
{

Symbol::Symbol(QQuickItem *parent)
    : QQuickItem(parent)
    , m_size(13)
{
    setFlag(ItemHasContents);
    setImplicitSize(side(), side());
    connect(&Tokens::instance(), &Tokens::coloursChanged, this, [this] {
        redraw();
        if (!m_color.isValid())
            emit colorChanged();
        if (!m_letterColor.isValid())
            emit letterColorChanged();
    });
}

int Symbol::side() const
{
    return static_cast<int>(std::lround(m_size * Symbols::fontScale));
}

QColor Symbol::color() const
{
    return m_color.isValid() ? m_color : Tokens::instance().primary();
}

QColor Symbol::letterColor() const
{
    return m_letterColor.isValid() ? m_letterColor : Tokens::instance().background();
}

void Symbol::setName(const QString &name)
{
    if (m_name == name)
        return;
    m_name = name;
    redraw();
    emit nameChanged();
}

void Symbol::setSize(qreal size)
{
    if (m_size == size)
        return;
    m_size = size;
    setImplicitSize(side(), side());
    redraw();
    emit sizeChanged();
}

void Symbol::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    redraw();
    emit colorChanged();
}

void Symbol::setLetterColor(const QColor &color)
{
    if (m_letterColor == color)
        return;
    m_letterColor = color;
    redraw();
    emit letterColorChanged();
}

void Symbol::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged)
        redraw();
}

QSGNode *Symbol::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<QSGImageNode *>(old);
    if (node == nullptr) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        m_stale = true;
    }
    if (std::exchange(m_stale, false)) {
        const QImage image = picture(window()->effectiveDevicePixelRatio());
        node->setTexture(window()->createTextureFromImage(image));
        node->setSourceRect(image.rect());
    }
    const int extent = side();
    node->setRect(std::floor((width() - extent) / 2), std::floor((height() - extent) / 2), extent,
                  extent);
    return node;
}

QImage Symbol::picture(qreal devicePixelRatio) const
{
    const int pixels = std::max(1, static_cast<int>(std::lround(side() * devicePixelRatio)));
    return Symbols::picture(m_name, pixels, {color(), letterColor()});
}

void Symbol::redraw()
{
    m_stale = true;
    update();
}

} // namespace velto::controls
