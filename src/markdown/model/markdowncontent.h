// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/blocknode.h"
#include "markdown/model/htmltag.h"

#include <QStringView>

namespace velto::markdown
{

/// A text in GitHub-flavoured Markdown as a plain value: comparable, hashable, and without a trace
/// of the parser. May be used in any thread.
struct MarkdownContent
{
    QList<BlockNode> blocks;

    MarkdownContent() = default;
    /// Parses; any text is Markdown.
    explicit MarkdownContent(QStringView text);
    explicit MarkdownContent(QList<BlockNode> nodes);

    /// The blocks as Markdown that parses to them again, as far as Markdown can say them.
    [[nodiscard]] QString renderMarkdown() const;
    [[nodiscard]] QString renderPlainText() const;
    /// With raw HTML left out, as CommonMark's safe mode has it.
    [[nodiscard]] QString renderHTML() const;

    bool operator==(const MarkdownContent &) const = default;
};

[[nodiscard]] std::size_t qHash(const MarkdownContent &content, std::size_t seed = 0);

} // namespace velto::markdown

template<>
struct std::hash<velto::markdown::MarkdownContent>
{
    std::size_t operator()(const velto::markdown::MarkdownContent &content) const
    {
        return qHash(content);
    }
};
