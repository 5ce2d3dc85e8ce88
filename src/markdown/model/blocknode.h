// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/inlinenode.h"

#include <optional>

namespace velto::markdown
{

struct BlockNode;

struct RawListItem
{
    QList<BlockNode> children;
};

struct RawTaskListItem
{
    bool isCompleted = false;
    QList<BlockNode> children;
};

struct RawTableCell
{
    QList<InlineNode> content;
    bool operator==(const RawTableCell &) const = default;
};

struct RawTableRow
{
    QList<RawTableCell> cells;
    bool operator==(const RawTableRow &) const = default;
};

enum class RawTableColumnAlignment { None, Left, Center, Right };

/// The cases of BlockNode.
namespace blocks
{

struct Blockquote
{
    QList<BlockNode> children;
};

struct BulletedList
{
    bool isTight = true;
    QList<RawListItem> items;
};

struct NumberedList
{
    bool isTight = true;
    int start = 1;
    QList<RawListItem> items;
};

/// A list of which at least one item has a checkbox.
struct TaskList
{
    bool isTight = true;
    QList<RawTaskListItem> items;
};

struct CodeBlock
{
    std::optional<QString> fenceInfo; ///< What follows the opening fence; empty for indented code.
    QString content;                  ///< Ends with a line feed unless it is empty.
    bool operator==(const CodeBlock &) const = default;
};

struct HtmlBlock
{
    QString content;
    bool operator==(const HtmlBlock &) const = default;
};

struct Paragraph
{
    QList<InlineNode> content;
    bool operator==(const Paragraph &) const = default;
};

struct Heading
{
    int level = 1; ///< 1 to 6.
    QList<InlineNode> content;
    bool operator==(const Heading &) const = default;
};

struct Table
{
    QList<RawTableColumnAlignment> columnAlignments;
    QList<RawTableRow> rows; ///< The header is the first.
    bool operator==(const Table &) const = default;
};

struct ThematicBreak
{
    bool operator==(const ThematicBreak &) const = default;
};

[[nodiscard]] bool operator==(const Blockquote &a, const Blockquote &b);
[[nodiscard]] bool operator==(const BulletedList &a, const BulletedList &b);
[[nodiscard]] bool operator==(const NumberedList &a, const NumberedList &b);
[[nodiscard]] bool operator==(const TaskList &a, const TaskList &b);

} // namespace blocks

struct BlockNode
{
    using Kind =
        std::variant<blocks::Blockquote, blocks::BulletedList, blocks::NumberedList,
                     blocks::TaskList, blocks::CodeBlock, blocks::HtmlBlock, blocks::Paragraph,
                     blocks::Heading, blocks::Table, blocks::ThematicBreak>;

    Kind kind;
};

[[nodiscard]] bool operator==(const BlockNode &a, const BlockNode &b);
[[nodiscard]] bool operator==(const RawListItem &a, const RawListItem &b);
[[nodiscard]] bool operator==(const RawTaskListItem &a, const RawTaskListItem &b);
[[nodiscard]] std::size_t qHash(const BlockNode &node, std::size_t seed = 0);
[[nodiscard]] std::size_t qHash(const RawListItem &item, std::size_t seed = 0);
[[nodiscard]] std::size_t qHash(const RawTaskListItem &item, std::size_t seed = 0);
[[nodiscard]] std::size_t qHash(const RawTableCell &cell, std::size_t seed = 0);
[[nodiscard]] std::size_t qHash(const RawTableRow &row, std::size_t seed = 0);

} // namespace velto::markdown

template<>
struct std::hash<velto::markdown::BlockNode>
{
    std::size_t operator()(const velto::markdown::BlockNode &node) const { return qHash(node); }
};
