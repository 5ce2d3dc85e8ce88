// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/glow.h"

#include <QImage>
#include <QQuickWindow>
#include <QRandomGenerator>
#include <QSGImageNode>

#include <cmath>

namespace velto::controls
{

namespace
{
constexpr int pictureSide = 128;
}

Glow::Glow(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void Glow::setColour(const QColor &colour)
{
    if (m_colour == colour)
        return;
    m_colour = colour;
    redraw();
    emit colourChanged();
}

void Glow::setInnerRadius(qreal radius)
{
    if (m_innerRadius == radius)
        return;
    m_innerRadius = radius;
    redraw();
    emit innerRadiusChanged();
}

QSGNode *Glow::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<QSGImageNode *>(old);
    if (node == nullptr) {
        node = window()->createImageNode();
        node->setFiltering(QSGTexture::Linear);
        node->setOwnsTexture(true);
        m_stale = true;
    }
    if (m_stale)
        node->setTexture(window()->createTextureFromImage(picture()));
    m_stale = false;
    node->setRect(boundingRect());
    return node;
}

// So faint a gradient has few steps; scattering them keeps rings from showing.
QImage Glow::picture() const
{
    QImage image(pictureSide, pictureSide, QImage::Format_ARGB32_Premultiplied);
    QRandomGenerator random(1); // the same picture every time
    const qreal inner = width() > 0 ? qBound(0.0, m_innerRadius / width(), 0.99) : 0;
    for (int y = 0; y < pictureSide; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < pictureSide; ++x) {
            const qreal distance = std::hypot(pictureSide - x, y) / pictureSide;
            const qreal share = qBound(0.0, (1 - distance) / (1 - inner), 1.0);
            const auto alpha = int(m_colour.alphaF() * share * 255 + random.generateDouble());
            line[x] = qPremultiply(qRgba(m_colour.red(), m_colour.green(), m_colour.blue(), alpha));
        }
    }
    return image;
}

void Glow::redraw()
{
    m_stale = true;
    update();
}

} // namespace velto::controls
