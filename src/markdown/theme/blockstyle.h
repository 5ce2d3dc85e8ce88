// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/markdowncontent.h"
#include "markdown/theme/blockview.h"

#include <functional>
#include <optional>

namespace velto::markdown
{

/// How a kind of block looks: a function from what is known of the block to a view.
template<typename Configuration>
struct BlockStyle
{
    std::function<BlockView(const Configuration &)> body;

    [[nodiscard]] BlockView operator()(const Configuration &configuration) const
    {
        return body(configuration);
    }
};

template<>
struct BlockStyle<void>
{
    std::function<BlockView()> body;

    [[nodiscard]] BlockView operator()() const { return body(); }
};

struct BlockConfiguration
{
    BlockView label;         ///< The rendered block.
    MarkdownContent content; ///< What it was rendered from.
};

struct CodeBlockConfiguration
{
    std::optional<QString> language;
    QString content;
    BlockView label;
};

struct ListMarkerConfiguration
{
    int listLevel = 1; ///< 1 for a list that stands in no other.
    int itemNumber = 1;
};

struct TaskListMarkerConfiguration
{
    bool isCompleted = false;
};

struct TableCellConfiguration
{
    int row = 0; ///< 0 is the header.
    int column = 0;
    BlockView label;
    MarkdownContent content;
};

} // namespace velto::markdown
