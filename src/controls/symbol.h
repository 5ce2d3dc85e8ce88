// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace velto::controls
{

/// A mark of the icon vocabulary, drawn for the window's pixels.
class Symbol : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged FINAL REQUIRED)
    /// Pixel size of the text that it stands beside.
    Q_PROPERTY(qreal size READ size WRITE setSize NOTIFY sizeChanged FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
    /// Colour of the letter that some marks hold.
    Q_PROPERTY(
        QColor letterColor READ letterColor WRITE setLetterColor NOTIFY letterColorChanged FINAL)

public:
    explicit Symbol(QQuickItem *parent = nullptr);

    [[nodiscard]] const QString &name() const { return m_name; }
    void setName(const QString &name);
    [[nodiscard]] qreal size() const { return m_size; }
    void setSize(qreal size);
    [[nodiscard]] QColor color() const;
    void setColor(const QColor &color);
    [[nodiscard]] QColor letterColor() const;
    void setLetterColor(const QColor &color);

signals:
    void nameChanged();
    void sizeChanged();
    void colorChanged();
    void letterColorChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    /// Side of the square that the mark fills, in device-independent pixels.
    [[nodiscard]] int side() const;
    [[nodiscard]] QImage picture(qreal devicePixelRatio) const;
    void redraw();

    QString m_name;
    qreal m_size;
    QColor m_color;       // invalid: the colour of text
    QColor m_letterColor; // invalid: the background's
    bool m_stale = true;
};

} // namespace velto::controls
