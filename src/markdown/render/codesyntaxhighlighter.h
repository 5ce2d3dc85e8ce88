// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/attributedstring.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace velto::markdown
{

/// What shows of one block of code, which may grow.
class CodeHighlight
{
public:
    virtual ~CodeHighlight() = default;
    /// All of the code; it begins with what it was before. Gives the position in the text from
    /// which on the text or its look is new or may differ.
    [[nodiscard]] virtual qsizetype grow(const QString &code) = 0;
    /// The text that shows: the code, unless the highlighter has put something else in its place.
    [[nodiscard]] virtual const QString &text() const = 0;
    /// The text from `from` up to and without `to`, in UTF-16 units, with its look.
    [[nodiscard]] virtual AttributedString part(qsizetype from, qsizetype to) const = 0;

    /// Whom to tell when the look of the text from a position on has changed by itself, such as
    /// when it was worked out on another thread. Main thread.
    void setChanged(std::function<void(qsizetype from)> changed) { m_changed = std::move(changed); }

protected:
    void tellChanged(qsizetype from) const
    {
        if (m_changed)
            m_changed(from);
    }

private:
    std::function<void(qsizetype)> m_changed;
};

/// Gives the text of a code block its colours. Main thread.
class CodeSyntaxHighlighter
{
public:
    virtual ~CodeSyntaxHighlighter() = default;
    /// All of `code`, in attributes that start from `attributes`.
    [[nodiscard]] virtual AttributedString
    highlightCode(const QString &code, const std::optional<QString> &language,
                  const TextAttributes &attributes) const = 0;
    /// The same for a block that may grow, and that lives no longer than this. Highlights all of it
    /// each time; those who can do better say so here.
    [[nodiscard]] virtual std::unique_ptr<CodeHighlight>
    highlight(const std::optional<QString> &language, const TextAttributes &attributes) const;
};

/// Leaves code as it is.
class PlainTextCodeSyntaxHighlighter final : public CodeSyntaxHighlighter
{
public:
    [[nodiscard]] AttributedString highlightCode(const QString &code,
                                                 const std::optional<QString> &language,
                                                 const TextAttributes &attributes) const override;
    [[nodiscard]] std::unique_ptr<CodeHighlight>
    highlight(const std::optional<QString> &language,
              const TextAttributes &attributes) const override;
};

} // namespace velto::markdown
