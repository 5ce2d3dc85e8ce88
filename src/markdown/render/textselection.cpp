// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/textselection.h"

#include "markdown/render/listbox.h"
#include "markdown/render/textbox.h"

#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <utility>

namespace velto::markdown
{

namespace
{

/// What stands before a text that begins a list item.
QString markerBefore(TextBox &text)
{
    QString prefix;
    for (Box *box = &text; box->parent() != nullptr; box = box->parent()) {
        if (box->parent()->firstText() != &text)
            break;
        if (const auto *item = dynamic_cast<ListItemBox *>(box->parent()))
            prefix.prepend(item->copiedMarker() + QLatin1Char(' '));
    }
    return prefix;
}

const Box *topLevel(const Box &box)
{
    const Box *top = &box;
    while (top->parent() != nullptr && top->parent()->parent() != nullptr)
        top = top->parent();
    return top;
}

QString between(const TextBox &before, const TextBox &after)
{
    const bool sameTable = before.gridRow() && after.gridRow() && before.parent() == after.parent();
    if (sameTable)
        return before.gridRow() == after.gridRow() ? QStringLiteral("\t") : QStringLiteral("\n");
    return topLevel(before) == topLevel(after) ? QStringLiteral("\n") : QStringLiteral("\n\n");
}

} // namespace

std::vector<TextBox *> TextSelection::texts() const
{
    std::vector<TextBox *> texts;
    m_root.collectTexts(texts);
    return texts;
}

bool TextSelection::isEmpty() const
{
    return m_anchor.text == nullptr || m_cursor.text == nullptr || m_anchor == m_cursor;
}

QString TextSelection::text() const
{
    QString copied;
    const TextBox *previous = nullptr;
    if (isEmpty())
        return copied;
    for (TextBox *text : texts()) {
        if (text->selectionStart() >= text->selectionEnd())
            continue;
        if (previous != nullptr)
            copied += between(*previous, *text);
        const bool isWhole = text->selectionEnd() == text->length();
        if (text->selectionStart() == 0 && (previous != nullptr || isWhole))
            copied += markerBefore(*text);
        copied += text->plainText(text->selectionStart(), text->selectionEnd());
        previous = text;
    }
    return copied;
}

void TextSelection::clear()
{
    m_anchor = m_cursor;
    apply();
}

void TextSelection::setCursor(TextPosition position, bool keepsAnchor)
{
    if (position.text == nullptr)
        return;
    m_cursor = position;
    if (!keepsAnchor || m_anchor.text == nullptr)
        m_anchor = position;
    apply();
}

void TextSelection::selectAll()
{
    const std::vector<TextBox *> all = texts();
    if (all.empty())
        return;
    m_anchor = {all.front(), 0};
    m_cursor = {all.back(), all.back()->length()};
    apply();
}

void TextSelection::selectWord(TextPosition position)
{
    if (position.text == nullptr)
        return;
    const QString text = position.text->text().plainText();
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, text);
    words.setPosition(position.offset);
    int start = position.offset;
    if (!words.isAtBoundary() || position.offset == text.size())
        start = static_cast<int>(std::max<qsizetype>(0, words.toPreviousBoundary()));
    const auto end = static_cast<int>(words.toNextBoundary());
    m_anchor = {position.text, start};
    m_cursor = {position.text, end < 0 ? position.text->length() : end};
    apply();
}

void TextSelection::selectParagraph(TextPosition position)
{
    if (position.text == nullptr)
        return;
    m_anchor = {position.text, 0};
    m_cursor = {position.text, position.text->length()};
    apply();
}

void TextSelection::apply()
{
    const std::vector<TextBox *> all = texts();
    const auto placeOf = [&](const TextPosition &position) {
        return std::pair(std::find(all.cbegin(), all.cend(), position.text) - all.cbegin(),
                         position.offset);
    };
    const auto [from, to] = std::minmax({placeOf(m_anchor), placeOf(m_cursor)});
    const bool nothing = isEmpty();
    for (std::ptrdiff_t index = 0; index < std::ssize(all); ++index) {
        TextBox &text = *all[static_cast<std::size_t>(index)];
        if (nothing || index < from.first || index > to.first) {
            text.select(0, 0);
            continue;
        }
        text.select(index == from.first ? from.second : 0,
                    index == to.first ? to.second : text.length());
    }
}

TextPosition TextSelection::neighbour(bool forward) const
{
    const std::vector<TextBox *> all = texts();
    const auto here = std::find(all.cbegin(), all.cend(), m_cursor.text);
    if (here == all.cend() || (forward && here + 1 == all.cend()) ||
        (!forward && here == all.cbegin()))
        return m_cursor;
    TextBox *text = forward ? *(here + 1) : *(here - 1);
    return {text, forward ? 0 : text->length()};
}

TextPosition TextSelection::lineMoved(bool forward) const
{
    const QTextLayout &layout = m_cursor.text->laid().layout();
    const QTextLine line = layout.lineForTextPosition(m_cursor.offset);
    if (!line.isValid())
        return m_cursor;
    const int wanted = line.lineNumber() + (forward ? 1 : -1);
    const qreal x = line.cursorToX(m_cursor.offset);
    if (wanted >= 0 && wanted < layout.lineCount())
        return {m_cursor.text, layout.lineAt(wanted).xToCursor(x)};
    const TextPosition next = neighbour(forward);
    if (next.text == m_cursor.text)
        return {m_cursor.text, forward ? m_cursor.text->length() : 0};
    const QTextLayout &other = next.text->laid().layout();
    if (other.lineCount() == 0)
        return next;
    const qreal shift = m_cursor.text->toOutermost({}).x() - next.text->toOutermost({}).x();
    const QTextLine edge = other.lineAt(forward ? 0 : other.lineCount() - 1);
    return {next.text, edge.xToCursor(x + shift)};
}

TextPosition TextSelection::moved(Step step, bool forward) const
{
    const QTextLayout &layout = m_cursor.text->laid().layout();
    const auto mode = step == Step::Word ? QTextLayout::SkipWords : QTextLayout::SkipCharacters;
    switch (step) {
    case Step::Character:
    case Step::Word: {
        const int edge = forward ? m_cursor.text->length() : 0;
        if (m_cursor.offset == edge)
            return neighbour(forward);
        const int next = forward ? layout.nextCursorPosition(m_cursor.offset, mode)
                                 : layout.previousCursorPosition(m_cursor.offset, mode);
        return {m_cursor.text, std::clamp(next, 0, m_cursor.text->length())};
    }
    case Step::Line:
        return lineMoved(forward);
    case Step::LineEdge: {
        const QTextLine line = layout.lineForTextPosition(m_cursor.offset);
        const int end = line.textStart() + line.textLength();
        const bool isLast = line.lineNumber() + 1 == layout.lineCount();
        return {m_cursor.text,
                forward ? (isLast ? m_cursor.text->length() : end - 1) : line.textStart()};
    }
    case Step::Everything: {
        const std::vector<TextBox *> all = texts();
        return forward ? TextPosition{all.back(), all.back()->length()}
                       : TextPosition{all.front(), 0};
    }
    }
    return m_cursor;
}

bool TextSelection::move(Step step, bool forward, bool keepsAnchor)
{
    if (m_cursor.text == nullptr) {
        const std::vector<TextBox *> all = texts();
        if (all.empty())
            return false;
        m_cursor = m_anchor = {all.front(), 0};
    }
    const TextPosition before = m_cursor;
    setCursor(moved(step, forward), keepsAnchor);
    return m_cursor != before;
}

void TextSelection::forget(const TextBox &text)
{
    if (m_anchor.text != &text && m_cursor.text != &text)
        return;
    // What is left of the selection would begin or end nowhere.
    m_anchor = {};
    m_cursor = {};
    m_isStale = true;
}

void TextSelection::settle()
{
    if (std::exchange(m_isStale, false))
        apply();
}

} // namespace velto::markdown
