// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/titletext.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QGuiApplication>

#include <QtQuick/private/qquicktextnode_p.h>

#include <algorithm>
#include <cmath>

namespace velto::shell
{

namespace
{

constexpr qsizetype longest = 1000; // more than any sidebar shows
constexpr qreal unlimited = 1e6;
const QChar ellipsis(0x2026);

/// On one line: what breaks lines or jumps is a blank.
QString oneLine(const QString &text)
{
    QString line = text.left(longest);
    std::ranges::replace_if(
        line, [](QChar character) { return character.isSpace(); }, QLatin1Char(' '));
    return line;
}

} // namespace

TitleText::TitleText(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    m_layout.setCacheEnabled(true);
    measure();
}

void TitleText::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    emit textChanged();
    polish();
}

void TitleText::setQuery(const QString &query)
{
    if (m_query == query)
        return;
    m_query = query;
    emit queryChanged();
    polish();
}

void TitleText::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    emit colorChanged();
    update();
}

void TitleText::setMarkColor(const QColor &color)
{
    if (m_markColor == color)
        return;
    m_markColor = color;
    emit markColorChanged();
    update();
}

void TitleText::setPixelSize(qreal size)
{
    if (m_pixelSize == size)
        return;
    m_pixelSize = size;
    emit pixelSizeChanged();
    measure();
    polish();
}

QStringList TitleText::markedTexts() const
{
    QStringList texts;
    for (const TitleRange &mark : m_marks)
        texts.append(m_layout.text().mid(mark.start, mark.end - mark.start));
    return texts;
}

QFont TitleText::font() const
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(std::max(1, qRound(m_pixelSize)));
    return font;
}

void TitleText::measure()
{
    const QFont font = this->font();
    m_layout.setFont(font);
    setImplicitHeight(std::ceil(QFontMetricsF(font).height()));
}

void TitleText::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now.width() != before.width())
        polish();
}

void TitleText::updatePolish()
{
    layOut();
    update();
}

QTextLine TitleText::setLine(const QString &text, qreal width, QTextOption::WrapMode wrap)
{
    QList<QTextLayout::FormatRange> formats;
    for (const TitleRange &mark : m_marks) {
        QTextLayout::FormatRange range{
            static_cast<int>(mark.start), static_cast<int>(mark.end - mark.start), {}};
        range.format.setFontWeight(QFont::DemiBold);
        formats.append(range);
    }
    QTextOption option(text.isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
    option.setWrapMode(wrap);
    m_layout.setText(text);
    m_layout.setTextOption(option);
    m_layout.setFormats(formats);
    m_layout.beginLayout();
    QTextLine line = m_layout.createLine();
    if (line.isValid())
        line.setLineWidth(width);
    m_layout.endLayout();
    return line;
}

void TitleText::layOut()
{
    QString text = oneLine(m_text);
    m_marks = highlightedTitle(text, m_query);
    QTextLine line = setLine(text, unlimited, QTextOption::NoWrap);
    if (line.isValid() && line.naturalTextWidth() > width()) {
        const qreal room = width() - QFontMetricsF(font()).horizontalAdvance(ellipsis);
        line = setLine(text, std::max(room, 0.0), QTextOption::WrapAnywhere);
        text.truncate(line.textLength());
        while (text.endsWith(QLatin1Char(' ')))
            text.chop(1);
        m_marks.removeIf([&](const TitleRange &mark) { return mark.start >= text.size(); });
        if (!m_marks.isEmpty())
            m_marks.last().end = std::min(m_marks.last().end, text.size());
        text.append(ellipsis);
    }
    line = setLine(text, width(), QTextOption::NoWrap);
    m_rise = line.isValid() ? QFontMetricsF(font()).ascent() - line.ascent() : 0;
}

QSGNode *TitleText::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    delete old;
    if (m_layout.lineCount() == 0)
        return nullptr;
    auto *node = new QQuickTextNode(this);
    const QTextLine line = m_layout.lineAt(0);
    const auto add = [&](qsizetype start, qsizetype end, const QColor &color) {
        if (start >= end)
            return;
        for (const QGlyphRun &glyphs :
             line.glyphRuns(static_cast<int>(start), static_cast<int>(end - start)))
            node->addGlyphs({0, m_rise}, glyphs, color);
    };
    qsizetype at = 0;
    for (const TitleRange &mark : m_marks) {
        add(at, mark.start, m_color);
        add(mark.start, mark.end, m_markColor);
        at = mark.end;
    }
    add(at, m_layout.text().size(), m_color);
    return node;
}

} // namespace velto::shell
