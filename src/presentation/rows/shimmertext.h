// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QFont>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velto::presentation
{

/// A faint line of text over which a light travels, from its leading to its trailing edge.
class ShimmerText : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged FINAL)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged FINAL)
    /// Where the light is, from 0 to 1.
    Q_PROPERTY(qreal phase READ phase WRITE setPhase NOTIFY phaseChanged FINAL)

public:
    explicit ShimmerText(QQuickItem *parent = nullptr);

    [[nodiscard]] const QString &text() const { return m_text; }
    void setText(const QString &text);
    [[nodiscard]] const QFont &font() const { return m_font; }
    void setFont(const QFont &font);
    [[nodiscard]] qreal phase() const { return m_phase; }
    void setPhase(qreal phase);

    void paint(QPainter *painter) override;

signals:
    void textChanged();
    void fontChanged();
    void phaseChanged();

private:
    void measure();

    QString m_text;
    QFont m_font;
    qreal m_phase = 0;
};

} // namespace velto::presentation
