// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/tokens.h"
#include "markdown/render/blockitem.h"
#include "markdown/render/markdown.h"
#include "markdown/render/textbox.h"
#include "markdown/render/textnode.h"

#include <QClipboard>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QSGNode>
#include <QStyleHints>
#include <QTextLayout>

#include <array>

namespace velto::markdown
{

namespace
{

constexpr qreal caretWidth = 1.5;

/// Shows where the keyboard is in the text.
class Caret final : public QQuickItem
{
public:
    explicit Caret(QQuickItem *parent)
        : QQuickItem(parent)
    {
        setFlag(ItemHasContents);
    }

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *) override
    {
        delete old;
        auto *node = new QSGNode;
        addRectangle(*node, *this, boundingRect(), controls::Tokens::instance().accent());
        return node;
    }
};

struct SelectionKey
{
    QKeySequence::StandardKey key;
    TextSelection::Step step;
    bool forward;
    bool selects;
};

using Step = TextSelection::Step;
constexpr std::array selectionKeys{
    SelectionKey{QKeySequence::SelectNextChar, Step::Character, true, true},
    SelectionKey{QKeySequence::SelectPreviousChar, Step::Character, false, true},
    SelectionKey{QKeySequence::SelectNextWord, Step::Word, true, true},
    SelectionKey{QKeySequence::SelectPreviousWord, Step::Word, false, true},
    SelectionKey{QKeySequence::SelectNextLine, Step::Line, true, true},
    SelectionKey{QKeySequence::SelectPreviousLine, Step::Line, false, true},
    SelectionKey{QKeySequence::SelectEndOfLine, Step::LineEdge, true, true},
    SelectionKey{QKeySequence::SelectStartOfLine, Step::LineEdge, false, true},
    SelectionKey{QKeySequence::SelectEndOfDocument, Step::Everything, true, true},
    SelectionKey{QKeySequence::SelectStartOfDocument, Step::Everything, false, true},
    SelectionKey{QKeySequence::MoveToNextChar, Step::Character, true, false},
    SelectionKey{QKeySequence::MoveToPreviousChar, Step::Character, false, false},
    SelectionKey{QKeySequence::MoveToNextWord, Step::Word, true, false},
    SelectionKey{QKeySequence::MoveToPreviousWord, Step::Word, false, false},
    SelectionKey{QKeySequence::MoveToNextLine, Step::Line, true, false},
    SelectionKey{QKeySequence::MoveToPreviousLine, Step::Line, false, false},
};

} // namespace

void Markdown::selectAll()
{
    m_selection.selectAll();
    emit selectionChanged();
}

void Markdown::deselect()
{
    m_selection.clear();
    emit selectionChanged();
}

void Markdown::copy() const
{
    const QString text = selectedText();
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

TextPosition Markdown::positionAt(QPointF point)
{
    TextBox *text = m_root.textNear(point);
    if (text == nullptr)
        return {};
    const QPointF inText = text->toText(point - text->toOutermost({}));
    return {text, text->laid().positionAt(inText)};
}

QUrl Markdown::linkAt(QPointF point)
{
    TextBox *text = m_root.textNear(point);
    return text != nullptr ? text->linkAt(point - text->toOutermost({})) : QUrl();
}

void Markdown::mousePressEvent(QMouseEvent *event)
{
    forceActiveFocus(Qt::MouseFocusReason);
    setKeepMouseGrab(true); // a list would take a drag for its own
    const QPointF point = event->position();
    m_pressedLink = linkAt(point);
    m_pressedPoint = point;
    m_isDragging = false;
    const bool isThird =
        m_lastDoubleClick != 0 &&
        event->timestamp() - m_lastDoubleClick <
            static_cast<ulong>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    m_lastDoubleClick = 0;
    if (isThird)
        m_selection.selectParagraph(positionAt(point));
    else
        m_selection.setCursor(positionAt(point), event->modifiers() & Qt::ShiftModifier);
    emit selectionChanged();
    polish();
}

void Markdown::mouseMoveEvent(QMouseEvent *event)
{
    const qreal distance = (event->position() - m_pressedPoint).manhattanLength();
    if (!m_isDragging && distance < QGuiApplication::styleHints()->startDragDistance())
        return;
    m_isDragging = true;
    m_selection.setCursor(positionAt(event->position()), true);
    emit selectionChanged();
}

void Markdown::mouseReleaseEvent(QMouseEvent *event)
{
    setKeepMouseGrab(false);
    if (!m_isDragging && !m_pressedLink.isEmpty() && linkAt(event->position()) == m_pressedLink)
        open(m_pressedLink);
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (clipboard->supportsSelection() && !m_selection.isEmpty())
        clipboard->setText(selectedText(), QClipboard::Selection);
}

void Markdown::mouseDoubleClickEvent(QMouseEvent *event)
{
    m_lastDoubleClick = event->timestamp();
    m_isDragging = true; // no second opening of a link
    m_selection.selectWord(positionAt(event->position()));
    emit selectionChanged();
}

void Markdown::hoverEnterEvent(QHoverEvent *event)
{
    hover(event->position());
}

void Markdown::hoverMoveEvent(QHoverEvent *event)
{
    hover(event->position());
}

void Markdown::hoverLeaveEvent(QHoverEvent *)
{
    setHoveredLink({}, {});
}

void Markdown::hover(QPointF point)
{
    setHoveredLink(contains(point) ? linkAt(point) : QUrl(), point);
}

void Markdown::setHoveredLink(const QUrl &link, QPointF point)
{
    if (m_hoveredLink == link)
        return;
    m_hoveredLink = link;
    m_hoveredPoint = point;
    setCursor(QCursor(link.isEmpty() ? Qt::IBeamCursor : Qt::PointingHandCursor));
    emit hoveredLinkChanged();
}

bool Markdown::handleSelectionKey(QKeyEvent &event)
{
    for (const SelectionKey &entry : selectionKeys) {
        if (!event.matches(entry.key))
            continue;
        // Beyond the end the arrows are free for whoever scrolls.
        return m_selection.move(entry.step, entry.forward, entry.selects) || entry.selects;
    }
    return false;
}

void Markdown::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy) && !m_selection.isEmpty())
        return copy();
    if (event->matches(QKeySequence::SelectAll))
        return selectAll();
    if (event->key() == Qt::Key_Escape && !m_selection.isEmpty())
        return deselect();
    if (!handleSelectionKey(*event))
        return event->ignore();
    emit selectionChanged();
    placeCaret();
    if (m_caret)
        reveal(*m_caret, m_caret->boundingRect());
}

void Markdown::focusInEvent(QFocusEvent *event)
{
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
        m_caret = std::make_unique<Caret>(this);
    if (m_selection.cursor().text == nullptr && m_root.firstText() != nullptr)
        m_selection.setCursor({m_root.firstText(), 0}, false);
    polish();
}

void Markdown::focusOutEvent(QFocusEvent *)
{
    m_caret.reset();
}

void Markdown::placeCaret()
{
    TextBox *text = m_selection.cursor().text;
    if (!m_caret || text == nullptr)
        return;
    const QTextLine line = text->laid().layout().lineForTextPosition(m_selection.cursor().offset);
    if (!line.isValid())
        return;
    const QPointF place(line.cursorToX(m_selection.cursor().offset),
                        text->laid().drop() + line.y());
    m_caret->setPosition(text->toOutermost(place - text->toText({})));
    m_caret->setSize({caretWidth, line.ascent() + line.descent()});
    m_caret->setZ(1);
}

} // namespace velto::markdown
