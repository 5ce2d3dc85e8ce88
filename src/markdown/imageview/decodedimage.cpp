// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/imageview/decodedimage.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QtConcurrentRun>

#include <utility>

namespace velto::markdown
{

DecodedImage::DecodedImage(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(&m_scaling, &QFutureWatcherBase::finished, this, [this] {
        if (m_isScaling)
            draw(m_scaling.result());
    });
}

void DecodedImage::setImage(const QImage &image)
{
    if (m_image.cacheKey() == image.cacheKey())
        return;
    m_image = image;
    m_halvings = -1;
    prepare();
    emit imageChanged();
}

int DecodedImage::halvings(QSize pixels, QSizeF target)
{
    if (target.isEmpty())
        return 0;
    int count = 0;
    while ((pixels.width() >> (count + 1)) >= target.width() &&
           (pixels.height() >> (count + 1)) >= target.height())
        ++count;
    return count;
}

QSGNode *DecodedImage::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<QSGImageNode *>(old);
    if (m_drawn.isNull() || boundingRect().isEmpty()) {
        delete node;
        return nullptr;
    }
    if (node == nullptr) {
        node = window()->createImageNode();
        node->setFiltering(QSGTexture::Linear);
        node->setOwnsTexture(true);
        m_isStale = true;
    }
    if (std::exchange(m_isStale, false)) {
        const auto kind = m_drawn.hasAlphaChannel() ? QQuickWindow::TextureHasAlphaChannel
                                                    : QQuickWindow::TextureIsOpaque;
        node->setTexture(window()->createTextureFromImage(m_drawn, kind));
    }
    node->setRect(boundingRect());
    return node;
}

void DecodedImage::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    prepare();
    update();
}

void DecodedImage::itemChange(ItemChange change, const ItemChangeData &value)
{
    QQuickItem::itemChange(change, value);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        prepare();
}

void DecodedImage::prepare()
{
    if (m_image.isNull()) {
        draw({});
        return;
    }
    if (size().isEmpty() || window() == nullptr)
        return;
    const int wanted = halvings(m_image.size(), size() * window()->effectiveDevicePixelRatio());
    if (wanted == m_halvings)
        return;
    m_halvings = wanted;
    if (wanted == 0) {
        draw(m_image);
        return;
    }
    const auto scale = [image = m_image, wanted] {
        const QSize size(image.width() >> wanted, image.height() >> wanted);
        return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    m_isScaling = true;
    m_scaling.setFuture(QtConcurrent::run(scale));
}

void DecodedImage::draw(const QImage &image)
{
    m_isScaling = false; // what is still being made comes too late
    if (m_drawn.cacheKey() == image.cacheKey())
        return;
    m_drawn = image;
    m_isStale = true;
    update();
    emit drawnPixelsChanged();
}

} // namespace velto::markdown
