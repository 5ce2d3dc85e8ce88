// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/attributedstring.h"

#include <QHash>
#include <QImage>
#include <QRectF>
#include <QTextDocument>

class QTextCursor;
class QTextLayout;

namespace velto::markdown
{

/// How a paragraph is set.
struct TextSetting
{
    qreal lineHeight = 1; ///< Distance of lines in proportion to the font's own.
    Qt::Alignment alignment = Qt::AlignLeading;
    bool wraps = true;

    bool operator==(const TextSetting &) const = default;
};

/// The laid-out form of an attributed string: one paragraph in a text document, written through a
/// cursor and edited in place when the string changes. Needs a QGuiApplication; main thread.
class LaidText final
{
public:
    LaidText(const AttributedString &text, const TextSetting &setting,
             const QHash<QString, QSizeF> &imageSizes = {});

    /// Takes over another text; only what differs is touched.
    void update(const AttributedString &text, const QHash<QString, QSizeF> &imageSizes = {});
    void setWidth(qreal width);

    [[nodiscard]] const AttributedString &text() const { return m_text; }
    [[nodiscard]] QSizeF size() const;
    /// As wide as the text would like to be.
    [[nodiscard]] qreal idealWidth() const;
    [[nodiscard]] qreal firstBaseline() const;
    [[nodiscard]] qsizetype length() const { return m_text.length(); }
    [[nodiscard]] QTextLayout &layout() const;
    /// What the layout is lowered by: of the room between lines, half belongs above a line.
    [[nodiscard]] qreal drop() const;

    /// The character boundary next to a point.
    [[nodiscard]] int positionAt(QPointF point) const;
    /// The run under a point, -1 beside the text.
    [[nodiscard]] int runAt(QPointF point) const;
    /// Where a stretch of the text is, one rectangle a line.
    [[nodiscard]] QList<QRectF> rectangles(int from, int to) const;
    /// The first character of a run.
    [[nodiscard]] int runStart(qsizetype run) const;

    /// Height of one line of such text. Remembered, since it is asked for every block.
    [[nodiscard]] static qreal singleLineHeight(const TextAttributes &attributes, qreal lineHeight);
    [[nodiscard]] static qreal singleLineBaseline(const TextAttributes &attributes,
                                                  qreal lineHeight);
    /// Width of the text on lines as long as they are, without laying it out.
    [[nodiscard]] static qreal measuredWidth(const AttributedString &text);
    /// A guess at the height from the number of characters: for text that nobody sees yet.
    [[nodiscard]] static qreal guessedHeight(const AttributedString &text, qreal width,
                                             const TextSetting &setting);

private:
    void setWrapMode(const AttributedString &text);
    void insert(QTextCursor &cursor, const TextRun &run, qsizetype index, qsizetype skip,
                const QHash<QString, QSizeF> &imageSizes);

    AttributedString m_text;
    QTextDocument m_document;
    bool m_wraps;
    qreal m_lineHeight;
};

} // namespace velto::markdown
