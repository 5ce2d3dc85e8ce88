// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/textnode.h"

#include "controls/tokens.h"
#include "markdown/render/laidtext.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRawFont>
#include <QSGImageNode>
#include <QTextLayout>

#include <QtQuick/private/qquickitem_p.h>
#include <QtQuick/private/qquicktextnode_p.h>
#include <QtQuick/private/qsgadaptationlayer_p.h>
#include <QtQuick/private/qsgcontext_p.h>

#include <algorithm>
#include <cmath>

namespace velto::markdown
{

namespace
{

// Around a run with a background, so that letters don't touch its edge.
constexpr qreal backgroundOutset = 2;
constexpr qreal backgroundRadius = 4;

/// One run's part of one line.
struct Piece
{
    QTextLine line;
    const TextRun &run;
    int start;
    int end;

    [[nodiscard]] QRectF extent() const
    {
        const qreal a = line.cursorToX(start);
        const qreal b = line.cursorToX(end);
        return {std::min(a, b), line.y(), std::abs(b - a), line.height()};
    }
    [[nodiscard]] qreal baseline() const { return line.y() + line.ascent(); }
    [[nodiscard]] QColor colour() const
    {
        return run.attributes.foregroundColor.value_or(Ink::primary()).colour();
    }
};

template<typename Visitor>
void forEachPiece(const LaidText &text, Visitor visit)
{
    const QTextLayout &layout = text.layout();
    const QList<TextRun> &runs = text.text().runs();
    qsizetype run = 0;
    int runStart = 0;
    for (int at = 0; at < layout.lineCount(); ++at) {
        const QTextLine line = layout.lineAt(at);
        const int lineEnd = line.textStart() + line.textLength();
        while (run < runs.size()) {
            const int runEnd = runStart + static_cast<int>(runs[run].text.size());
            const int start = std::max(runStart, line.textStart());
            const int end = std::min(runEnd, lineEnd);
            if (start < end)
                visit(Piece{line, runs[run], start, end}, run);
            if (runEnd > lineEnd)
                break;
            runStart = runEnd;
            ++run;
        }
    }
}

void addDashes(QSGNode &parent, QQuickItem &owner, const QRectF &line, LinePattern pattern,
               const QColor &colour)
{
    if (pattern == LinePattern::Solid)
        return addRectangle(parent, owner, line, colour);
    const qreal dash = line.height() * (pattern == LinePattern::Dash ? 4 : 1);
    for (qreal x = line.left(); x < line.right(); x += 2 * dash) {
        const qreal width = std::min(dash, line.right() - x);
        addRectangle(parent, owner, {x, line.top(), width, line.height()}, colour);
    }
}

void addBackground(QSGNode &parent, QQuickItem &owner, const Piece &piece, QPointF offset)
{
    const QFontMetricsF metrics(piece.run.attributes.fontProperties.font());
    QRectF box = piece.extent().translated(offset);
    box.setTop(std::floor(offset.y() + piece.baseline() - metrics.ascent()));
    box.setHeight(std::ceil(metrics.ascent() + metrics.descent()));
    addRectangle(parent, owner, box.adjusted(-backgroundOutset, 0, backgroundOutset, 0),
                 piece.run.attributes.backgroundColor->colour(), backgroundRadius);
}

void addLines(QSGNode &parent, QQuickItem &owner, const Piece &piece, QPointF offset)
{
    const TextAttributes &attributes = piece.run.attributes;
    if (!attributes.underlineStyle && !attributes.strikethroughStyle)
        return;
    const QFontMetricsF metrics(attributes.fontProperties.font());
    const qreal width = std::max(1.0, std::round(metrics.lineWidth()));
    const QRectF extent = piece.extent().translated(offset);
    const auto add = [&](LinePattern pattern, qreal y) {
        const QRectF line(extent.left(), std::round(offset.y() + y), extent.width(), width);
        addDashes(parent, owner, line, pattern, piece.colour());
    };
    if (attributes.underlineStyle)
        add(*attributes.underlineStyle, piece.baseline() + metrics.underlinePos());
    if (attributes.strikethroughStyle)
        add(*attributes.strikethroughStyle, piece.baseline() - metrics.strikeOutPos());
}

void addImage(QQuickTextNode &node, const Piece &piece, const TextPainting &painting, qsizetype run,
              QPointF offset)
{
    const auto found = std::find_if(painting.images.cbegin(), painting.images.cend(),
                                    [&](const auto &entry) { return entry.first == run; });
    if (found == painting.images.cend())
        return;
    const QRectF extent = piece.extent();
    const qreal height =
        extent.width() * found->second.height() / std::max(1, found->second.width());
    const QRectF box(extent.left(), piece.baseline() - height, extent.width(), height);
    node.addImage(box.translated(offset), found->second);
}

} // namespace

void addRectangle(QSGNode &parent, QQuickItem &owner, const QRectF &rectangle, const QColor &colour,
                  qreal radius, qreal line)
{
    if (rectangle.isEmpty() || colour.alpha() == 0)
        return;
    QSGRenderContext *context = QQuickItemPrivate::get(&owner)->sceneGraphRenderContext();
    QSGInternalRectangleNode *node =
        context->sceneGraphContext()->createInternalRectangleNode(rectangle, colour);
    node->setRadius(radius);
    node->setAntialiasing(radius > 0);
    if (line > 0) {
        node->setColor(Qt::transparent);
        node->setPenColor(colour);
        node->setPenWidth(line);
    }
    node->update();
    parent.appendChildNode(node);
}

void addPicture(QSGNode &parent, QQuickItem &owner, const QRectF &rectangle, const QImage &picture)
{
    QQuickWindow &window = *owner.window();
    QSGImageNode *node = window.createImageNode();
    node->setOwnsTexture(true);
    node->setTexture(window.createTextureFromImage(picture, QQuickWindow::TextureCanUseAtlas));
    node->setSourceRect(picture.rect());
    node->setRect(rectangle);
    parent.appendChildNode(node);
}

void addText(QSGNode &parent, QQuickItem &owner, const LaidText &text, const TextPainting &painting)
{
    const QPointF offset = painting.position + QPointF(0, text.drop());
    forEachPiece(text, [&](const Piece &piece, qsizetype) {
        if (piece.run.attributes.backgroundColor)
            addBackground(parent, owner, piece, offset);
    });
    for (const QRectF &box : text.rectangles(painting.selectionStart, painting.selectionEnd))
        addRectangle(parent, owner, box.translated(painting.position),
                     controls::Tokens::instance().selection());
    auto *node = new QQuickTextNode(&owner);
    parent.appendChildNode(node);
    forEachPiece(text, [&](const Piece &piece, qsizetype run) {
        if (!piece.run.image.isEmpty())
            return addImage(*node, piece, painting, run, offset);
        for (const QGlyphRun &glyphs : piece.line.glyphRuns(piece.start, piece.end - piece.start))
            node->addGlyphs(offset, glyphs, piece.colour());
        addLines(parent, owner, piece, offset);
    });
}

} // namespace velto::markdown
