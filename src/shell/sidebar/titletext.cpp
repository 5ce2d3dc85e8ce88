// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/titletext.h"

#include "markdown/render/emoji.h"

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

constexpr qsizetype longest = 300; // more than any sidebar shows
const QChar ellipsis(0x2026);

/// On one line: what breaks lines or jumps is a blank.
QString oneLine(const QString &text)
{
    QString line = text.left(longest);
    std::ranges::replace_if(
        line, [](QChar character) { return character.isSpace(); }, QLatin1Char(' '));
    return line;
}

bool runsBothWays(const QString &text)
{
    const auto codes = text.toUcs4();
    return std::ranges::any_of(codes, [](char32_t code) {
        const QChar::Direction direction = QChar::direction(code);
        return direction == QChar::DirR || direction == QChar::DirAL ||
               direction == QChar::DirRLE || direction == QChar::DirRLO ||
               direction == QChar::DirRLI;
    });
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
        texts.append(m_shown.mid(mark.start, mark.end - mark.start));
    return texts;
}

void TitleText::measure()
{
    m_font = QGuiApplication::font();
    m_font.setPixelSize(std::max(1, qRound(m_pixelSize)));
    const QFontMetricsF metrics(m_font);
    m_ascent = metrics.ascent();
    m_ellipsisWidth = metrics.horizontalAdvance(ellipsis);
    m_layout.setFont(m_font);
    setImplicitHeight(std::ceil(metrics.height()));
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

QList<QTextLayout::FormatRange> TitleText::formats(const QString &text) const
{
    QList<QTextLayout::FormatRange> formats;
    const auto add = [&](qsizetype start, qsizetype end, const QTextCharFormat &format) {
        formats.append({static_cast<int>(start), static_cast<int>(end - start), format});
    };
    QTextCharFormat bold;
    bold.setFontWeight(QFont::DemiBold);
    for (const TitleRange &mark : m_marks)
        add(mark.start, mark.end, bold);
    qsizetype emoji = markdown::nextEmoji(text, 0);
    while (emoji < text.size()) {
        QTextCharFormat picture;
        picture.setFont(markdown::emojiFont(m_font));
        const qsizetype end = markdown::emojiEnd(text, emoji);
        add(emoji, end, picture);
        emoji = markdown::nextEmoji(text, end);
    }
    return formats;
}

QTextLine TitleText::setLine(const QString &text, qreal width, QTextOption::WrapMode wrap)
{
    QTextOption option(text.isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
    option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    option.setWrapMode(wrap);
    m_layout.setText(text);
    m_layout.setTextOption(option);
    m_layout.setFormats(formats(text));
    m_layout.beginLayout();
    QTextLine line = m_layout.createLine();
    if (line.isValid())
        line.setLineWidth(width);
    m_layout.endLayout();
    return line;
}

void TitleText::layOut()
{
    m_shown = oneLine(m_text);
    m_marks = highlightedTitle(m_shown, m_query);
    m_laidEnd = m_shown.size();
    const QTextLine line = setLine(m_shown, width());
    if (line.isValid() && line.naturalTextWidth() > width())
        truncate(line);
}

// Laying out costs most of what showing a title does, emoji above all, so it is done once where
// the beginning of a line stays where it is when the rest goes.
void TitleText::truncate(QTextLine line)
{
    const qreal room = std::max(width() - m_ellipsisWidth, 0.0);
    if (runsBothWays(m_shown))
        return truncateBothWays(room);
    int end = line.xToCursor(room, QTextLine::CursorBetweenCharacters);
    while (end > 0 && line.cursorToX(end) > room)
        end = m_layout.previousCursorPosition(end);
    end = cut(m_shown, end);
    m_ellipsisX = line.cursorToX(end);
    m_laidEnd = end;
}

// What comes first needn't stand at one side, and letters change their shape at the cut.
void TitleText::truncateBothWays(qreal room)
{
    const QString whole = m_shown;
    int end = setLine(whole, room, QTextOption::WrapAnywhere).textLength();
    for (;; --end) {
        end = cut(whole, end);
        const QTextLine line = setLine(m_shown, width());
        if (end == 0 || line.naturalTextWidth() <= width())
            break;
    }
    m_laidEnd = m_shown.size();
}

int TitleText::cut(const QString &whole, int end)
{
    while (end > 0 && (whole.at(end - 1) == QLatin1Char(' ') || whole.at(end).isLowSurrogate()))
        --end;
    m_marks.removeIf([&](const TitleRange &mark) { return mark.start >= end; });
    if (!m_marks.isEmpty())
        m_marks.last().end = std::min(m_marks.last().end, static_cast<qsizetype>(end));
    m_shown = whole.left(end) + ellipsis;
    return end;
}

QSGNode *TitleText::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    delete old;
    if (m_layout.lineCount() == 0)
        return nullptr;
    auto *node = new QQuickTextNode(this);
    const auto add = [&](const QTextLine &line, qsizetype start, qsizetype end, qreal x,
                         const QColor &color) {
        if (start >= end)
            return;
        // All fonts share a baseline.
        const QPointF position(x, m_ascent - line.ascent());
        for (const QGlyphRun &glyphs :
             line.glyphRuns(static_cast<int>(start), static_cast<int>(end - start)))
            node->addGlyphs(position, glyphs, color);
    };
    const QTextLine line = m_layout.lineAt(0);
    qsizetype at = 0;
    for (const TitleRange &mark : m_marks) {
        add(line, at, mark.start, 0, m_color);
        add(line, mark.start, mark.end, 0, m_markColor);
        at = mark.end;
    }
    add(line, at, m_laidEnd, 0, m_color);
    if (m_laidEnd < m_shown.size()) {
        QTextLayout dots(QString(ellipsis), m_font);
        dots.beginLayout();
        const QTextLine own = dots.createLine();
        dots.endLayout();
        add(own, 0, 1, m_ellipsisX, m_color);
    }
    return node;
}

} // namespace velto::shell
