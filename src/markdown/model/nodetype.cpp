// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/nodetype.h"

#include <algorithm>
#include <array>

namespace velto::markdown
{

namespace
{

// In the order of the enumeration.
constexpr std::array<std::string_view, 29> typeStrings{
    "document",     "block_quote",  "list",        "item",           "code_block", "html_block",
    "custom_block", "paragraph",    "heading",     "thematic_break", "text",       "softbreak",
    "linebreak",    "code",         "html_inline", "custom_inline",  "emph",       "strong",
    "link",         "image",        "attribute",   "NONE",           "<unknown>",  "strikethrough",
    "table",        "table_header", "table_row",   "table_cell",     "tasklist"};
static_assert(typeStrings.size() == static_cast<std::size_t>(NodeType::TaskListItem) + 1);

QString text(std::string_view name)
{
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

} // namespace

std::string_view typeString(NodeType type)
{
    return typeStrings[static_cast<std::size_t>(type)];
}

std::optional<NodeType> nodeType(std::string_view typeString)
{
    const auto found = std::ranges::find(typeStrings, typeString);
    if (found == typeStrings.end())
        return std::nullopt;
    return static_cast<NodeType>(found - typeStrings.begin());
}

QString brokentree::unknownType(std::string_view name)
{
    return QStringLiteral("Unknown node type '%1' found.").arg(text(name));
}

QString brokentree::noListItem(std::string_view name)
{
    return QStringLiteral("Expected a list item but got a '%1' instead.").arg(text(name));
}

QString brokentree::noTableRow(std::string_view name)
{
    return QStringLiteral("Expected a table row but got a '%1' instead.").arg(text(name));
}

QString brokentree::noTableCell(std::string_view name)
{
    return QStringLiteral("Expected a table cell but got a '%1' instead.").arg(text(name));
}

QString brokentree::listWithoutType()
{
    return QStringLiteral("cmark reported a list node without a list type.");
}

} // namespace velto::markdown
