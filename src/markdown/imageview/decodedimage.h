// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFutureWatcher>
#include <QImage>
#include <QQuickItem>

namespace velto::markdown
{

/// Draws decoded pixels over the whole item.
///
/// A picture much larger than the item is halved as often as it takes, on another thread: it then
/// looks smooth under every renderer and costs the memory of what shows.
class DecodedImage : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QImage image READ image WRITE setImage NOTIFY imageChanged FINAL)

public:
    explicit DecodedImage(QQuickItem *parent = nullptr);

    [[nodiscard]] const QImage &image() const { return m_image; }
    void setImage(const QImage &image);

    /// How often `pixels` can be halved and still cover `target`.
    [[nodiscard]] static int halvings(QSize pixels, QSizeF target);
    /// The pixels that are drawn, perhaps fewer than the image has.
    [[nodiscard]] QSize drawnPixels() const { return m_drawn.size(); }

signals:
    void imageChanged();
    void drawnPixelsChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    void prepare();
    void draw(const QImage &image);

    QImage m_image;
    QImage m_drawn;
    int m_halvings = -1; ///< Of what is drawn or being made; -1 when there is neither.
    QFutureWatcher<QImage> m_scaling;
    bool m_isScaling = false;
    bool m_isStale = false;
};

} // namespace velto::markdown
