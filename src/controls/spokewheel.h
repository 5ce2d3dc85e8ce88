// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QBasicTimer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace velto::controls
{

/// Eight spokes, one after the other the darkest, ten times a second while they show. One item
/// that paints, since a start has to make it before there is anything else to see.
class SpokeWheel : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// Diameter in device-independent pixels.
    Q_PROPERTY(qreal size READ size WRITE setSize NOTIFY sizeChanged FINAL)

public:
    explicit SpokeWheel(QQuickItem *parent = nullptr);

    [[nodiscard]] qreal size() const { return m_size; }
    void setSize(qreal size);

signals:
    void sizeChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void turnWhileSeen();
    [[nodiscard]] QImage picture(qreal devicePixelRatio) const;

    qreal m_size = 0;
    int m_step = 0;
    QBasicTimer m_timer;
};

} // namespace velto::controls
