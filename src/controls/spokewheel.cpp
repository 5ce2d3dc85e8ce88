// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/spokewheel.h"

#include "controls/tokens.h"

#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>

namespace velto::controls
{

namespace
{
constexpr int spokes = 8;
constexpr int stepMilliseconds = 100;
constexpr qreal usualSize = 16;
} // namespace

SpokeWheel::SpokeWheel(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setSize(usualSize);
    connect(&Tokens::instance(), &Tokens::coloursChanged, this, &QQuickItem::update);
}

void SpokeWheel::setSize(qreal size)
{
    if (m_size == size)
        return;
    m_size = size;
    setImplicitSize(size, size);
    update();
    emit sizeChanged();
}

void SpokeWheel::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemVisibleHasChanged || change == ItemSceneChange)
        turnWhileSeen();
    else if (change == ItemDevicePixelRatioHasChanged)
        update();
}

void SpokeWheel::turnWhileSeen()
{
    if (window() != nullptr && isVisible())
        m_timer.start(stepMilliseconds, this);
    else
        m_timer.stop();
}

void SpokeWheel::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return QQuickItem::timerEvent(event);
    m_step = (m_step + 1) % spokes;
    update();
}

QSGNode *SpokeWheel::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<QSGImageNode *>(old);
    if (node == nullptr) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
    }
    const QImage image = picture(window()->effectiveDevicePixelRatio());
    node->setTexture(window()->createTextureFromImage(image));
    node->setSourceRect(image.rect());
    node->setRect(0, 0, m_size, m_size);
    return node;
}

QImage SpokeWheel::picture(qreal devicePixelRatio) const
{
    const int pixels = std::max(1, static_cast<int>(std::lround(m_size * devicePixelRatio)));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.scale(pixels / m_size, pixels / m_size);
    painter.translate(m_size / 2, m_size / 2);
    const qreal width = std::max(1.5, m_size * 0.09);
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const int turns = (spoke - m_step + spokes) % spokes;
        painter.setBrush(
            Tokens::faded(Tokens::instance().secondary(), 0.15 + 0.85 * turns / spokes));
        painter.drawRoundedRect(QRectF(-width / 2, -m_size / 2, width, m_size * 0.28), width / 2,
                                width / 2);
        painter.rotate(360.0 / spokes);
    }
    return image;
}

} // namespace velto::controls
