// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/shadow.h"

#include <QImage>
#include <QQuickWindow>
#include <QSGNinePatchNode>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace velto::controls
{

Shadow::Shadow(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void Shadow::setReach(qreal reach)
{
    if (m_reach == reach)
        return;
    m_reach = reach;
    redraw();
    emit reachChanged();
}

void Shadow::setRadius(qreal radius)
{
    if (m_radius == radius)
        return;
    m_radius = radius;
    redraw();
    emit radiusChanged();
}

QSGNode *Shadow::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<QSGNinePatchNode *>(old);
    if (node == nullptr) {
        node = window()->createNinePatchNode();
        m_stale = true;
    }
    if (std::exchange(m_stale, false)) {
        node->setTexture(window()->createTextureFromImage(picture()));
        node->setPadding(corner(), corner(), corner(), corner());
    }
    node->setBounds(boundingRect());
    node->setDevicePixelRatio(1);
    node->update();
    return node;
}

int Shadow::corner() const
{
    return static_cast<int>(std::ceil(m_reach + m_radius));
}

// The blur of a rounded box is close to a function of the distance from its edge.
QImage Shadow::picture() const
{
    const int side = 2 * corner() + 1;
    const qreal inner = corner() + 0.5 - m_reach - m_radius; // where the corner's arc begins
    const qreal spread = std::max(m_reach / 3, 0.5) * std::numbers::sqrt2;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < side; ++x) {
            const qreal dx = std::abs(x - corner()) - inner;
            const qreal dy = std::abs(y - corner()) - inner;
            const qreal outside = std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
            const qreal distance = outside + std::min(std::max(dx, dy), 0.0) - m_radius;
            const auto alpha = static_cast<int>(std::lround(127.5 * std::erfc(distance / spread)));
            line[x] = qRgba(0, 0, 0, alpha);
        }
    }
    return image;
}

void Shadow::redraw()
{
    m_stale = true;
    update();
}

} // namespace velto::controls
