// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/mediaviews/roundedpicture.h"

#include <QPainter>

namespace velto::presentation
{

RoundedPicture::RoundedPicture(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void RoundedPicture::setImage(const QImage &image)
{
    if (m_image == image)
        return;
    m_image = image;
    emit imageChanged();
    update();
}

void RoundedPicture::setRadius(qreal radius)
{
    if (m_radius == radius)
        return;
    m_radius = radius;
    emit radiusChanged();
    update();
}

void RoundedPicture::paint(QPainter *painter)
{
    const QRectF all = boundingRect();
    if (m_image.isNull() || all.isEmpty())
        return;
    // Halved before it is drawn: a painter alone skips pixels of what is much too large.
    const QSize pixels = (all.size() * painter->device()->devicePixelRatioF()).toSize();
    const QImage fitting =
        m_image.width() > 2 * pixels.width()
            ? m_image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            : m_image;
    QBrush brush(fitting);
    brush.setTransform(
        QTransform::fromScale(all.width() / fitting.width(), all.height() / fitting.height()));
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter->setPen(Qt::NoPen);
    painter->setBrush(brush);
    painter->drawRoundedRect(all, m_radius, m_radius);
}

} // namespace velto::presentation
