// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/openpath.h"

#include <cmark-gfm-core-extensions.h>

namespace velto::markdown::openpath
{

namespace
{

char stubMark;

bool hasItems(const cmark_node *node)
{
    return node->type == CMARK_NODE_LIST || node->type == CMARK_NODE_ITEM;
}

void freeChildren(cmark_node *node)
{
    while (cmark_node *child = node->first_child)
        cmark_node_free(child);
}

void copyTable(cmark_node *copy, cmark_node *table)
{
    const std::uint16_t columns = cmark_gfm_extensions_get_table_columns(table);
    cmark_gfm_extensions_set_table_columns(copy, columns);
    cmark_gfm_extensions_set_table_alignments(copy, columns,
                                              cmark_gfm_extensions_get_table_alignments(table));
}

/// The fields that say how the next lines go on.
cmark_node *copyOf(cmark_mem *mem, cmark_node *node)
{
    auto *copy = cmark_node_new_with_mem_and_ext(static_cast<cmark_node_type>(node->type), mem,
                                                 node->extension);
    copy->start_line = node->start_line;
    copy->start_column = node->start_column;
    copy->end_line = node->end_line;
    copy->end_column = node->end_column;
    copy->internal_offset = node->internal_offset;
    copy->flags = node->flags;
    copy->user_data = node->user_data;
    if (node->type == CMARK_NODE_TABLE)
        copyTable(copy, node);
    else if (hasItems(node))
        copy->as.list = node->as.list;
    else if (node->type == CMARK_NODE_CODE_BLOCK)
        copy->as.code = node->as.code;
    else if (node->type == CMARK_NODE_HTML_BLOCK)
        copy->as.html_block_type = node->as.html_block_type;
    else if (node->type == CMARK_NODE_HEADING)
        copy->as.heading = node->as.heading;
    cmark_strbuf_put(&copy->content, node->content.ptr, node->content.size);
    return copy;
}

void appendTo(cmark_node *parent, cmark_node *child)
{
    child->parent = parent;
    child->prev = parent->last_child;
    (parent->last_child ? parent->last_child->next : parent->first_child) = child;
    parent->last_child = child;
}

} // namespace

bool isStub(const cmark_node *node)
{
    return node->user_data == &stubMark;
}

void makeStub(cmark_node *node)
{
    if (node->type == CMARK_NODE_LIST && endsWithBlankLine(node))
        node->flags |= CMARK_NODE__LAST_LINE_BLANK;
    freeChildren(node);
    cmark_strbuf_clear(&node->content);
    if (node->type == CMARK_NODE_CODE_BLOCK) {
        cmark_chunk_free(node->content.mem, &node->as.code.info);
        cmark_chunk_free(node->content.mem, &node->as.code.literal);
    } else if (node->type == CMARK_NODE_HTML_BLOCK) {
        cmark_chunk_free(node->content.mem, &node->as.literal);
    }
    markAsStub(node);
}

void markAsStub(cmark_node *node)
{
    node->user_data = &stubMark;
}

bool endsWithBlankLine(const cmark_node *node)
{
    while (hasItems(node) && node->last_child)
        node = node->last_child;
    return (node->flags & CMARK_NODE__LAST_LINE_BLANK) != 0;
}

void copyInto(Parser &copy, const Parser &original)
{
    cmark_parser *to = copy.get();
    const cmark_parser *from = original.get();
    to->line_number = from->line_number;
    to->last_line_length = from->last_line_length;
    to->current = to->root;
    const cmark_node *current = from->current;
    if (current->type == CMARK_NODE_TABLE_CELL)
        current = current->parent;
    cmark_node *copiedParent = to->root;
    const cmark_node *parent = from->root;
    while (parent) {
        const cmark_node *next = nullptr;
        cmark_node *copiedNext = nullptr;
        for (cmark_node *child = parent->first_child; child; child = child->next) {
            cmark_node *copied = copyOf(to->mem, child);
            appendTo(copiedParent, copied);
            if (child == current)
                to->current = copied;
            if (!isStub(child)) {
                copied->user_data = child;
                next = child;
                copiedNext = copied;
            }
        }
        parent = next;
        copiedParent = copiedNext;
    }
}

} // namespace velto::markdown::openpath
