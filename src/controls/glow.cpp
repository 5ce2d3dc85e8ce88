// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/glow.h"

#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QRadialGradient>
#include <QSGImageNode>

namespace velto::controls {

namespace {
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

QImage Glow::picture() const
{
    QImage image(pictureSide, pictureSide, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QColor edge = m_colour;
    edge.setAlpha(0);
    QRadialGradient gradient(QPointF(pictureSide, 0), pictureSide);
    gradient.setColorAt(width() > 0 ? qBound(0.0, m_innerRadius / width(), 1.0) : 0, m_colour);
    gradient.setColorAt(1, edge);
    QPainter painter(&image);
    painter.fillRect(image.rect(), gradient);
    return image;
}

void Glow::redraw()
{
    m_stale = true;
    update();
}

} // namespace velto::controls
