// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/treewriting.h"

#include "markdown/model/parser.h"

#include <cmark-gfm-core-extensions.h>

#include <vector>

namespace velto::markdown
{

namespace
{

cmark_node *extensionNode(const char *extension, cmark_node_type type)
{
    cmark_syntax_extension *found = cmark_find_syntax_extension(extension);
    return found ? cmark_node_new_with_ext(type, found) : nullptr;
}

/// Made without its extension, which is set afterwards as the parser does it: a cell that is made
/// with it gets memory that the library never frees.
cmark_node *cellNode()
{
    cmark_syntax_extension *table = cmark_find_syntax_extension("table");
    if (!table)
        return nullptr;
    cmark_node *cell = cmark_node_new(CMARK_NODE_TABLE_CELL);
    cmark_node_set_syntax_extension(cell, table);
    return cell;
}

/// Appends a node that could be built and that `parent` takes; what can't be shown is left out.
void append(cmark_node *parent, cmark_node *child)
{
    if (child && !cmark_node_append_child(parent, child))
        cmark_node_free(child);
}

void setText(cmark_node *node, int (*set)(cmark_node *, const char *), const QString &text)
{
    set(node, text.toUtf8().constData());
}

cmark_node *literalNode(cmark_node_type type, const QString &text)
{
    cmark_node *node = cmark_node_new(type);
    setText(node, cmark_node_set_literal, text);
    return node;
}

void appendInlines(cmark_node *parent, const QList<InlineNode> &nodes);

cmark_node *spanNode(cmark_node *node, const QList<InlineNode> &children)
{
    if (node)
        appendInlines(node, children);
    return node;
}

cmark_node *targetNode(cmark_node_type type, const QString &url, const QList<InlineNode> &children)
{
    cmark_node *node = cmark_node_new(type);
    setText(node, cmark_node_set_url, url);
    return spanNode(node, children);
}

struct InlineWriter
{
    cmark_node *operator()(const inlines::Text &node) const
    {
        return literalNode(CMARK_NODE_TEXT, node.text);
    }
    cmark_node *operator()(const inlines::Code &node) const
    {
        return literalNode(CMARK_NODE_CODE, node.text);
    }
    cmark_node *operator()(const inlines::Html &node) const
    {
        return literalNode(CMARK_NODE_HTML_INLINE, node.text);
    }
    cmark_node *operator()(const inlines::Emphasis &node) const
    {
        return spanNode(cmark_node_new(CMARK_NODE_EMPH), node.children);
    }
    cmark_node *operator()(const inlines::Strong &node) const
    {
        return spanNode(cmark_node_new(CMARK_NODE_STRONG), node.children);
    }
    cmark_node *operator()(const inlines::Strikethrough &node) const
    {
        return spanNode(extensionNode("strikethrough", CMARK_NODE_STRIKETHROUGH), node.children);
    }
    cmark_node *operator()(const inlines::Link &node) const
    {
        return targetNode(CMARK_NODE_LINK, node.destination, node.children);
    }
    cmark_node *operator()(const inlines::Image &node) const
    {
        return targetNode(CMARK_NODE_IMAGE, node.source, node.children);
    }
    cmark_node *operator()(const inlines::SoftBreak &) const
    {
        return cmark_node_new(CMARK_NODE_SOFTBREAK);
    }
    cmark_node *operator()(const inlines::LineBreak &) const
    {
        return cmark_node_new(CMARK_NODE_LINEBREAK);
    }
};

void appendInlines(cmark_node *parent, const QList<InlineNode> &nodes)
{
    for (const InlineNode &node : nodes)
        append(parent, std::visit(InlineWriter{}, node.kind));
}

void appendBlocks(cmark_node *parent, const QList<BlockNode> &nodes);

cmark_node *listNode(cmark_list_type type, bool isTight)
{
    cmark_node *list = cmark_node_new(CMARK_NODE_LIST);
    cmark_node_set_list_type(list, type);
    cmark_node_set_list_tight(list, isTight ? 1 : 0);
    return list;
}

void appendItem(cmark_node *list, cmark_node *item, const QList<BlockNode> &children)
{
    if (item)
        appendBlocks(item, children);
    append(list, item);
}

void appendRow(cmark_node *table, const RawTableRow &row, bool isHeader)
{
    cmark_node *node = extensionNode("table", CMARK_NODE_TABLE_ROW);
    if (!node)
        return;
    cmark_gfm_extensions_set_table_row_is_header(node, isHeader ? 1 : 0);
    for (const RawTableCell &cell : row.cells)
        append(node, spanNode(cellNode(), cell.content));
    append(table, node);
}

std::uint8_t codeOf(RawTableColumnAlignment alignment)
{
    switch (alignment) {
    case RawTableColumnAlignment::Left:
        return 'l';
    case RawTableColumnAlignment::Center:
        return 'c';
    case RawTableColumnAlignment::Right:
        return 'r';
    case RawTableColumnAlignment::None:
        break;
    }
    return 0;
}

struct BlockWriter
{
    cmark_node *operator()(const blocks::Blockquote &node) const
    {
        cmark_node *quote = cmark_node_new(CMARK_NODE_BLOCK_QUOTE);
        appendBlocks(quote, node.children);
        return quote;
    }
    cmark_node *operator()(const blocks::BulletedList &node) const
    {
        cmark_node *list = listNode(CMARK_BULLET_LIST, node.isTight);
        for (const RawListItem &item : node.items)
            appendItem(list, cmark_node_new(CMARK_NODE_ITEM), item.children);
        return list;
    }
    cmark_node *operator()(const blocks::NumberedList &node) const
    {
        cmark_node *list = listNode(CMARK_ORDERED_LIST, node.isTight);
        cmark_node_set_list_delim(list, CMARK_PERIOD_DELIM);
        cmark_node_set_list_start(list, node.start);
        for (const RawListItem &item : node.items)
            appendItem(list, cmark_node_new(CMARK_NODE_ITEM), item.children);
        return list;
    }
    cmark_node *operator()(const blocks::TaskList &node) const
    {
        cmark_node *list = listNode(CMARK_BULLET_LIST, node.isTight);
        for (const RawTaskListItem &item : node.items) {
            cmark_node *child = extensionNode("tasklist", CMARK_NODE_ITEM);
            if (child)
                cmark_gfm_extensions_set_tasklist_item_checked(child, item.isCompleted);
            appendItem(list, child, item.children);
        }
        return list;
    }
    cmark_node *operator()(const blocks::CodeBlock &node) const
    {
        cmark_node *code = literalNode(CMARK_NODE_CODE_BLOCK, node.content);
        if (node.fenceInfo)
            setText(code, cmark_node_set_fence_info, *node.fenceInfo);
        return code;
    }
    cmark_node *operator()(const blocks::HtmlBlock &node) const
    {
        return literalNode(CMARK_NODE_HTML_BLOCK, node.content);
    }
    cmark_node *operator()(const blocks::Paragraph &node) const
    {
        return spanNode(cmark_node_new(CMARK_NODE_PARAGRAPH), node.content);
    }
    cmark_node *operator()(const blocks::Heading &node) const
    {
        cmark_node *heading = cmark_node_new(CMARK_NODE_HEADING);
        cmark_node_set_heading_level(heading, node.level);
        return spanNode(heading, node.content);
    }
    cmark_node *operator()(const blocks::Table &node) const
    {
        cmark_node *table = extensionNode("table", CMARK_NODE_TABLE);
        if (!table)
            return nullptr;
        std::vector<std::uint8_t> codes;
        for (const RawTableColumnAlignment alignment : node.columnAlignments)
            codes.push_back(codeOf(alignment));
        const auto columns = static_cast<std::uint16_t>(codes.size());
        cmark_gfm_extensions_set_table_columns(table, columns);
        cmark_gfm_extensions_set_table_alignments(table, columns, codes.data());
        for (qsizetype row = 0; row < node.rows.size(); ++row)
            appendRow(table, node.rows[row], row == 0);
        return table;
    }
    cmark_node *operator()(const blocks::ThematicBreak &) const
    {
        return cmark_node_new(CMARK_NODE_THEMATIC_BREAK);
    }
};

void appendBlocks(cmark_node *parent, const QList<BlockNode> &nodes)
{
    for (const BlockNode &node : nodes)
        append(parent, std::visit(BlockWriter{}, node.kind));
}

} // namespace

cmark_node *documentOf(const QList<BlockNode> &blocks)
{
    cmark_gfm_core_extensions_ensure_registered();
    cmark_node *document = cmark_node_new(CMARK_NODE_DOCUMENT);
    appendBlocks(document, blocks);
    return document;
}

} // namespace velto::markdown
