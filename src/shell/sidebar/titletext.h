// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "shell/sidebar/highlightedtitle.h"

#include <QColor>
#include <QQuickItem>
#include <QTextLayout>
#include <QtQml/qqmlregistration.h>

namespace velto::shell
{

/// A title on one line, truncated at its end, in which a search query is marked. Never taken for
/// markup. A title from right to left begins at the right.
class TitleText : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged FINAL)
    /// What is marked wherever it stands; nothing while it is blank.
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
    Q_PROPERTY(QColor markColor READ markColor WRITE setMarkColor NOTIFY markColorChanged FINAL)
    Q_PROPERTY(qreal pixelSize READ pixelSize WRITE setPixelSize NOTIFY pixelSizeChanged FINAL)

public:
    explicit TitleText(QQuickItem *parent = nullptr);

    [[nodiscard]] const QString &text() const { return m_text; }
    void setText(const QString &text);
    [[nodiscard]] const QString &query() const { return m_query; }
    void setQuery(const QString &query);
    [[nodiscard]] const QColor &color() const { return m_color; }
    void setColor(const QColor &color);
    [[nodiscard]] const QColor &markColor() const { return m_markColor; }
    void setMarkColor(const QColor &color);
    [[nodiscard]] qreal pixelSize() const { return m_pixelSize; }
    void setPixelSize(qreal size);

    /// What shows, with the ellipsis where something had to go.
    Q_INVOKABLE [[nodiscard]] QString shownText() const { return m_shown; }
    /// The stretches of the shown text that are marked.
    Q_INVOKABLE [[nodiscard]] QStringList markedTexts() const;

signals:
    void textChanged();
    void queryChanged();
    void colorChanged();
    void markColorChanged();
    void pixelSizeChanged();

protected:
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;

private:
    void measure();
    void layOut();
    /// Shows the beginning of a text that is too long, and an ellipsis.
    void truncate(QTextLine line);
    void truncateBothWays(qreal room);
    /// Shows `whole` up to `end`, or less where blanks would end it, and how much that is.
    int cut(const QString &whole, int end);
    [[nodiscard]] QList<QTextLayout::FormatRange> formats(const QString &text) const;
    /// The text on one line, with its marks. One that wraps ends where nothing more fits.
    QTextLine setLine(const QString &text, qreal width,
                      QTextOption::WrapMode wrap = QTextOption::NoWrap);

    QString m_text;
    QString m_query;
    QColor m_color;
    QColor m_markColor;
    qreal m_pixelSize = 13;
    QFont m_font;
    qreal m_ascent = 0;
    qreal m_ellipsisWidth = 0;
    QTextLayout m_layout;
    QString m_shown;
    QList<TitleRange> m_marks; // of the shown text
    qsizetype m_laidEnd = 0;   // of the shown text, as far as it is laid out
    qreal m_ellipsisX = 0;     // where the ellipsis stands that isn't
};

} // namespace velto::shell
