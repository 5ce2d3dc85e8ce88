// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <vector>

namespace velto::markdown
{

class Box;
class TextBox;

/// A place in the text of a view.
struct TextPosition
{
    TextBox *text = nullptr;
    int offset = 0;
    bool operator==(const TextPosition &) const = default;
};

/// What is selected across the texts of a view, from an anchor to a cursor in reading order.
class TextSelection final
{
public:
    explicit TextSelection(Box &root)
        : m_root(root)
    {}

    enum class Step { Character, Word, Line, LineEdge, Everything };

    [[nodiscard]] const TextPosition &cursor() const { return m_cursor; }
    [[nodiscard]] bool isEmpty() const;
    /// What is selected as plain text, list markers included.
    [[nodiscard]] QString text() const;

    void clear();
    void setCursor(TextPosition position, bool keepsAnchor);
    void selectAll();
    void selectWord(TextPosition position);
    void selectParagraph(TextPosition position);
    /// Moves the cursor a step; false at the very start or end.
    bool move(Step step, bool forward, bool keepsAnchor);
    /// That text is gone or is another one.
    void forget(const TextBox &text);
    /// Takes the look of a selection from texts that are left of one. Not while boxes change.
    void settle();

private:
    [[nodiscard]] std::vector<TextBox *> texts() const;
    [[nodiscard]] TextPosition moved(Step step, bool forward) const;
    [[nodiscard]] TextPosition neighbour(bool forward) const;
    [[nodiscard]] TextPosition lineMoved(bool forward) const;
    void apply();

    Box &m_root;
    TextPosition m_anchor;
    TextPosition m_cursor;
    bool m_isStale = false;
};

} // namespace velto::markdown
