// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QQuickItem>

namespace velto::controls
{

/// The black blur around a rounded box that lies `reach` inside the item on every side. Drawn from
/// a picture computed here, so that it is the same under every renderer and no image decoder has to
/// be loaded for it.
class Shadow : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// How far the blur goes, in device-independent pixels.
    Q_PROPERTY(qreal reach READ reach WRITE setReach NOTIFY reachChanged FINAL)
    /// Corner radius of the box.
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged FINAL)

public:
    explicit Shadow(QQuickItem *parent = nullptr);

    [[nodiscard]] qreal reach() const { return m_reach; }
    void setReach(qreal reach);
    [[nodiscard]] qreal radius() const { return m_radius; }
    void setRadius(qreal radius);

signals:
    void reachChanged();
    void radiusChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;

private:
    [[nodiscard]] QImage picture() const;
    /// Width of the corners of the picture, which are not stretched.
    [[nodiscard]] int corner() const;
    void redraw();

    qreal m_reach = 0;
    qreal m_radius = 0;
    bool m_stale = true;
};

} // namespace velto::controls
