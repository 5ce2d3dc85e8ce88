// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QQuickItem>

namespace velto::controls
{

/// A quarter of a radial gradient around the item's top right corner: `colour` up to the inner
/// radius, fading to nothing at the item's edge. A small picture drawn large, so that it is the
/// same under every renderer.
class Glow : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor colour READ colour WRITE setColour NOTIFY colourChanged FINAL)
    Q_PROPERTY(
        qreal innerRadius READ innerRadius WRITE setInnerRadius NOTIFY innerRadiusChanged FINAL)

public:
    explicit Glow(QQuickItem *parent = nullptr);

    [[nodiscard]] QColor colour() const { return m_colour; }
    void setColour(const QColor &colour);
    [[nodiscard]] qreal innerRadius() const { return m_innerRadius; }
    void setInnerRadius(qreal radius);

signals:
    void colourChanged();
    void innerRadiusChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;

private:
    [[nodiscard]] QImage picture() const;
    void redraw();

    QColor m_colour;
    qreal m_innerRadius = 0;
    bool m_stale = true;
};

} // namespace velto::controls
