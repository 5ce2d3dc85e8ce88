// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <optional>
#include <string_view>

namespace velto::markdown
{

/// The kinds of the parser's nodes.
enum class NodeType {
    Document,
    Blockquote,
    List,
    Item,
    CodeBlock,
    HtmlBlock,
    CustomBlock,
    Paragraph,
    Heading,
    ThematicBreak,
    Text,
    SoftBreak,
    LineBreak,
    Code,
    Html,
    CustomInline,
    Emphasis,
    Strong,
    Link,
    Image,
    InlineAttributes,
    None,
    Unknown,
    Strikethrough,
    Table,
    TableHead,
    TableRow,
    TableCell,
    TaskListItem,
};

/// What the parser calls the type.
[[nodiscard]] std::string_view typeString(NodeType type);
/// Absent when the parser calls no type so.
[[nodiscard]] std::optional<NodeType> nodeType(std::string_view typeString);

/// Why a tree can't have come from the parser. Each is the last thing that the process says.
namespace brokentree
{
[[nodiscard]] QString unknownType(std::string_view name);
[[nodiscard]] QString noListItem(std::string_view name);
[[nodiscard]] QString noTableRow(std::string_view name);
[[nodiscard]] QString noTableCell(std::string_view name);
[[nodiscard]] QString listWithoutType();
} // namespace brokentree

} // namespace velto::markdown
