// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/laidtext.h"

#include "markdown/render/emoji.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <vector>

namespace velto::markdown
{

namespace
{

constexpr std::size_t mostLineMetrics = 64;

struct LineMetrics
{
    qreal height = 0;
    qreal baseline = 0;
};

QFont fontOf(const TextAttributes &attributes)
{
    QFont font = attributes.fontProperties.font();
    const qreal spacing = attributes.kerning + attributes.tracking;
    if (spacing != 0)
        font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
    return font;
}

QString inOneParagraph(QString text)
{
    return text.replace(QLatin1Char('\n'), QChar::LineSeparator);
}

// Pads each digit to the width of the widest, in fonts whose digits differ.
void insertTabularDigits(QTextCursor &cursor, const QString &text, QTextCharFormat format)
{
    const QFont font = format.font();
    const QFontMetricsF metrics(font);
    qreal widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    for (const QChar c : text) {
        QFont spaced = font;
        const qreal missing = c.isDigit() ? widest - metrics.horizontalAdvance(c) : 0;
        if (missing > 0)
            spaced.setLetterSpacing(QFont::AbsoluteSpacing, font.letterSpacing() + missing);
        format.setFont(spaced);
        cursor.insertText(QString(c), format);
    }
}

qsizetype commonPrefix(const QString &a, const QString &b)
{
    const auto pair = std::mismatch(a.cbegin(), a.cend(), b.cbegin(), b.cend());
    qsizetype length = pair.first - a.cbegin();
    // Half a surrogate pair is no character, and an emoji is set as a whole.
    const auto isWithinCharacter = [&b](qsizetype at) {
        return b.at(at - 1).isHighSurrogate() || joinsToEmoji(b, at - 1) ||
               (at < b.size() && joinsToEmoji(b, at));
    };
    while (length > 0 && isWithinCharacter(length))
        --length;
    return length;
}

// Looking for the end of a word costs as much as the word is long, for each line of it.
constexpr qsizetype longestWord = 1000;

/// Whether some stretch offers no place to break it for longer than any word is. East Asian text
/// may be broken nearly anywhere.
bool hasEndlessWord(const AttributedString &text)
{
    qsizetype length = 0;
    for (const TextRun &run : text.runs()) {
        for (const QChar c : run.text) {
            const bool breaks = c.unicode() >= 0x2E80 || c.isSpace();
            length = breaks ? 0 : length + 1;
            if (length > longestWord)
                return true;
        }
    }
    return false;
}

/// Calls `visit` with each stretch of text and the font that it is set in.
template<typename Visitor>
void forEachStretch(const QString &text, const QFont &font, Visitor visit)
{
    qsizetype at = 0;
    while (at < text.size()) {
        const qsizetype emoji = nextEmoji(text, at);
        if (emoji > at)
            visit(text.mid(at, emoji - at), font);
        at = emojiEnd(text, emoji);
        if (at > emoji)
            visit(text.mid(emoji, at - emoji), emojiFont(font));
    }
}

LineMetrics measuredLine(const TextAttributes &attributes, qreal lineHeight)
{
    AttributedString sample;
    sample.append(QStringLiteral("x"), attributes);
    LaidText text(sample, {lineHeight, Qt::AlignLeading, false});
    return {text.size().height(), text.firstBaseline()};
}

LineMetrics lineMetrics(const TextAttributes &attributes, qreal lineHeight)
{
    struct Entry
    {
        QFont font;
        qreal lineHeight;
        LineMetrics metrics;
    };
    static std::vector<Entry> known;
    const QFont font = fontOf(attributes);
    const auto found = std::find_if(known.cbegin(), known.cend(), [&](const Entry &entry) {
        return entry.lineHeight == lineHeight && entry.font == font;
    });
    if (found != known.cend())
        return found->metrics;
    if (known.size() == mostLineMetrics)
        known.clear();
    known.push_back({font, lineHeight, measuredLine(attributes, lineHeight)});
    return known.back().metrics;
}

qreal guessedAdvance(QStringView text, qreal fontSize)
{
    qreal sum = 0;
    for (const QChar c : text)
        sum += c.unicode() < 0x1100 ? 0.53 : c.isSurrogate() ? 0.6 : 1.0;
    return sum * fontSize;
}

} // namespace

LaidText::LaidText(const AttributedString &text, const TextSetting &setting,
                   const QHash<QString, QSizeF> &imageSizes)
    : m_wraps(setting.wraps)
    , m_lineHeight(setting.lineHeight)
{
    m_document.setUndoRedoEnabled(false);
    m_document.setDocumentMargin(0);
    m_document.setUseDesignMetrics(false);
    setWrapMode(text);
    if (!text.isEmpty())
        m_document.setDefaultFont(fontOf(text.runs().constFirst().attributes));
    QTextBlockFormat format;
    format.setLineHeight(setting.lineHeight * 100, QTextBlockFormat::ProportionalHeight);
    format.setAlignment(setting.alignment);
    QTextCursor(&m_document).setBlockFormat(format);
    update(text, imageSizes);
}

void LaidText::setWrapMode(const AttributedString &text)
{
    const auto mode = !m_wraps               ? QTextOption::NoWrap
                      : hasEndlessWord(text) ? QTextOption::WrapAnywhere
                                             : QTextOption::WrapAtWordBoundaryOrAnywhere;
    QTextOption option = m_document.defaultTextOption();
    if (option.wrapMode() == mode)
        return;
    option.setWrapMode(mode);
    m_document.setDefaultTextOption(option);
}

void LaidText::update(const AttributedString &text, const QHash<QString, QSizeF> &imageSizes)
{
    const QList<TextRun> &before = m_text.runs();
    const QList<TextRun> &after = text.runs();
    qsizetype run = 0;
    qsizetype kept = 0;
    while (run < before.size() && run < after.size() && before[run] == after[run])
        kept += before[run++].text.size();
    qsizetype skip = 0;
    if (run < before.size() && run < after.size() &&
        before[run].attributes == after[run].attributes && before[run].image.isEmpty() &&
        after[run].image.isEmpty())
        skip = commonPrefix(before[run].text, after[run].text);
    setWrapMode(text);

    QTextCursor cursor(&m_document);
    cursor.beginEditBlock();
    cursor.setPosition(static_cast<int>(kept + skip));
    if (kept + skip < m_text.length()) {
        cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    }
    for (; run < after.size(); ++run, skip = 0)
        insert(cursor, after[run], run, skip, imageSizes);
    cursor.endEditBlock();
    m_text = text;
}

void LaidText::insert(QTextCursor &cursor, const TextRun &run, qsizetype index, qsizetype skip,
                      const QHash<QString, QSizeF> &imageSizes)
{
    Q_UNUSED(index)
    const QFont font = fontOf(run.attributes);
    if (!run.image.isEmpty()) {
        // Without a name, so that the document looks for nothing.
        QTextImageFormat image;
        const QSizeF size = imageSizes.value(run.image);
        image.setWidth(size.width());
        image.setHeight(size.height());
        image.setFont(font);
        return cursor.insertText(QString(QChar::ObjectReplacementCharacter), image);
    }
    QTextCharFormat format;
    format.setFont(font);
    const QString text = inOneParagraph(run.text.mid(skip));
    if (run.attributes.fontProperties.digitVariant == FontProperties::DigitVariant::Monospaced)
        insertTabularDigits(cursor, text, format);
    else
        forEachStretch(text, font, [&](const QString &stretch, const QFont &stretchFont) {
            format.setFont(stretchFont);
            cursor.insertText(stretch, format);
        });
}

void LaidText::setWidth(qreal width)
{
    if (m_document.textWidth() != width)
        m_document.setTextWidth(width);
}

QSizeF LaidText::size() const
{
    const QSizeF size = m_document.size();
    return {size.width(), std::ceil(size.height())};
}

qreal LaidText::idealWidth() const
{
    return m_document.idealWidth();
}

qreal LaidText::firstBaseline() const
{
    const QTextLine line = layout().lineAt(0);
    return line.isValid() ? drop() + line.y() + line.ascent() : 0;
}

qreal LaidText::drop() const
{
    const QTextLine line = layout().lineAt(0);
    return line.isValid() ? std::round(line.height() * (m_lineHeight - 1) / 2) : 0;
}

QTextLayout &LaidText::layout() const
{
    (void)m_document.size(); // lays out what has changed
    return *m_document.firstBlock().layout();
}

int LaidText::positionAt(QPointF point) const
{
    return m_document.documentLayout()->hitTest(point - QPointF(0, drop()), Qt::FuzzyHit);
}

int LaidText::runAt(QPointF point) const
{
    const int position =
        m_document.documentLayout()->hitTest(point - QPointF(0, drop()), Qt::ExactHit);
    if (position < 0)
        return -1;
    int start = 0;
    for (qsizetype run = 0; run < m_text.runs().size(); ++run) {
        const int end = start + static_cast<int>(m_text.runs()[run].text.size());
        const QList<QRectF> boxes =
            position >= start && position <= end ? rectangles(start, end) : QList<QRectF>();
        if (std::any_of(boxes.cbegin(), boxes.cend(),
                        [&](const QRectF &box) { return box.contains(point); }))
            return static_cast<int>(run);
        start = end;
    }
    return -1;
}

QList<QRectF> LaidText::rectangles(int from, int to) const
{
    QList<QRectF> found;
    const QTextLayout &text = layout();
    for (int at = 0; at < text.lineCount(); ++at) {
        const QTextLine line = text.lineAt(at);
        const int start = std::max(from, line.textStart());
        const int end = std::min(to, line.textStart() + line.textLength());
        if (start >= end)
            continue;
        const qreal a = line.cursorToX(start);
        const qreal b = line.cursorToX(end);
        found.append({std::min(a, b), drop() + line.y(), std::abs(b - a), line.height()});
    }
    return found;
}

int LaidText::runStart(qsizetype run) const
{
    qsizetype start = 0;
    for (qsizetype before = 0; before < run; ++before)
        start += m_text.runs()[before].text.size();
    return static_cast<int>(start);
}

qreal LaidText::singleLineHeight(const TextAttributes &attributes, qreal lineHeight)
{
    return lineMetrics(attributes, lineHeight).height;
}

qreal LaidText::singleLineBaseline(const TextAttributes &attributes, qreal lineHeight)
{
    return lineMetrics(attributes, lineHeight).baseline;
}

qreal LaidText::measuredWidth(const AttributedString &text)
{
    qreal widest = 0;
    qreal line = 0;
    for (const TextRun &run : text.runs()) {
        const QFont font = fontOf(run.attributes);
        const QList<QStringView> pieces = QStringView(run.text).split(QLatin1Char('\n'));
        for (qsizetype at = 0; at < pieces.size(); ++at) {
            if (at > 0)
                line = 0;
            forEachStretch(pieces[at].toString(), font,
                           [&line](const QString &text, const QFont &of) {
                               line += QFontMetricsF(of).horizontalAdvance(text);
                           });
            widest = std::max(widest, line);
        }
    }
    return std::ceil(widest);
}

qreal LaidText::guessedHeight(const AttributedString &text, qreal width, const TextSetting &setting)
{
    if (text.isEmpty())
        return 0;
    qreal lines = 1;
    qreal advance = 0;
    for (const TextRun &run : text.runs()) {
        lines += static_cast<qreal>(run.text.count(QLatin1Char('\n')));
        advance += guessedAdvance(run.text, run.attributes.fontProperties.scaledSize());
    }
    if (setting.wraps && width > 0)
        lines = std::max(lines, std::ceil(advance / width));
    return std::ceil(lines *
                     singleLineHeight(text.runs().constFirst().attributes, setting.lineHeight));
}

} // namespace velto::markdown
