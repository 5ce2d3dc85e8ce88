// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QImage>
#include <QList>
#include <QRectF>

class QQuickItem;
class QSGNode;

namespace velto::markdown
{

class LaidText;

/// What is drawn with a text beside its letters.
struct TextPainting
{
    QPointF position;
    int selectionStart = 0;
    int selectionEnd = 0; ///< Not after the start when nothing is selected.
    /// Pictures by the index of their run.
    QList<std::pair<qsizetype, QImage>> images;
};

/// Adds nodes that draw the text, as crisp as the screen allows. Render thread, while the main
/// thread waits.
void addText(QSGNode &parent, QQuickItem &owner, const LaidText &text,
             const TextPainting &painting);
/// Adds a filled rectangle; `line` outlines it instead where it is wider than zero.
void addRectangle(QSGNode &parent, QQuickItem &owner, const QRectF &rectangle, const QColor &colour,
                  qreal radius = 0, qreal line = 0);
/// Adds a picture. Render thread, while the main thread waits.
void addPicture(QSGNode &parent, QQuickItem &owner, const QRectF &rectangle, const QImage &picture);

} // namespace velto::markdown
