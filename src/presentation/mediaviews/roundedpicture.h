// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velto::presentation
{

/// A picture over the whole item, with round corners under every renderer.
class RoundedPicture : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QImage image READ image WRITE setImage NOTIFY imageChanged FINAL)
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged FINAL)

public:
    explicit RoundedPicture(QQuickItem *parent = nullptr);

    [[nodiscard]] const QImage &image() const { return m_image; }
    void setImage(const QImage &image);
    [[nodiscard]] qreal radius() const { return m_radius; }
    void setRadius(qreal radius);

    void paint(QPainter *painter) override;

signals:
    void imageChanged();
    void radiusChanged();

private:
    QImage m_image;
    qreal m_radius = 0;
};

} // namespace velto::presentation
