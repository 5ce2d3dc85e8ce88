// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/treereading.h"

#include <cmark-gfm-core-extensions.h>
#include <cmark-gfm/node.h>

#include <utility>

namespace velto::markdown::treereading
{

namespace
{

std::string_view nameOf(const cmark_node *node)
{
    return cmark_node_get_type_string(const_cast<cmark_node *>(node));
}

[[noreturn]] void stop(const QString &message)
{
    qFatal("%s", qUtf8Printable(message));
}

/// QString::fromUtf8 takes a leading byte order mark for a signature and drops it.
QString textOf(const cmark_chunk &chunk)
{
    if (chunk.len <= 0)
        return {};
    const QByteArrayView bytes(chunk.data, chunk.len);
    if (bytes.startsWith(QByteArrayView("\xef\xbb\xbf")))
        return QChar(QChar::ByteOrderMark) + QString::fromUtf8(bytes);
    return QString::fromUtf8(bytes);
}

RawTableColumnAlignment alignmentOf(char code)
{
    switch (code) {
    case 'l':
        return RawTableColumnAlignment::Left;
    case 'c':
        return RawTableColumnAlignment::Center;
    case 'r':
        return RawTableColumnAlignment::Right;
    default:
        return RawTableColumnAlignment::None;
    }
}

template<typename Node>
InlineNode spanOf(const cmark_node *node)
{
    return {Node{inlinesOf(node)}};
}

void appendInline(const cmark_node *node, QList<InlineNode> &out)
{
    switch (typeOf(node)) {
    case NodeType::Text:
        out.append({inlines::Text{textOf(node->as.literal)}});
        break;
    case NodeType::SoftBreak:
        out.append({inlines::SoftBreak{}});
        break;
    case NodeType::LineBreak:
        out.append({inlines::LineBreak{}});
        break;
    case NodeType::Code:
        out.append({inlines::Code{textOf(node->as.literal)}});
        break;
    case NodeType::Html:
        out.append({inlines::Html{textOf(node->as.literal)}});
        break;
    case NodeType::Emphasis:
        out.append(spanOf<inlines::Emphasis>(node));
        break;
    case NodeType::Strong:
        out.append(spanOf<inlines::Strong>(node));
        break;
    case NodeType::Strikethrough:
        out.append(spanOf<inlines::Strikethrough>(node));
        break;
    case NodeType::Link:
        out.append({inlines::Link{textOf(node->as.link.url), inlinesOf(node)}});
        break;
    case NodeType::Image:
        out.append({inlines::Image{textOf(node->as.link.url), inlinesOf(node)}});
        break;
    default:
        break;
    }
}

blocks::Table tableOf(const cmark_node *node)
{
    auto *table = const_cast<cmark_node *>(node);
    blocks::Table value;
    const int columns = cmark_gfm_extensions_get_table_columns(table);
    const auto *codes = cmark_gfm_extensions_get_table_alignments(table);
    value.columnAlignments.reserve(columns);
    for (int column = 0; column < columns; ++column)
        value.columnAlignments.append(alignmentOf(static_cast<char>(codes[column])));
    for (const cmark_node *row = node->first_child; row; row = row->next)
        value.rows.append(rowOf(row));
    return value;
}

bool isTaskList(const cmark_node *list)
{
    for (const cmark_node *item = list->first_child; item; item = item->next) {
        if (typeOf(item) == NodeType::TaskListItem)
            return true;
    }
    return false;
}

template<typename Item>
QList<Item> itemsOf(const cmark_node *list)
{
    QList<Item> items;
    for (const cmark_node *item = list->first_child; item; item = item->next) {
        if constexpr (std::is_same_v<Item, RawTaskListItem>)
            items.append(taskItemOf(item));
        else
            items.append(itemOf(item));
    }
    return items;
}

BlockNode listOf(const cmark_node *node)
{
    const bool isTight = node->as.list.tight;
    if (isTaskList(node))
        return {blocks::TaskList{isTight, itemsOf<RawTaskListItem>(node)}};
    switch (node->as.list.list_type) {
    case CMARK_BULLET_LIST:
        return {blocks::BulletedList{isTight, itemsOf<RawListItem>(node)}};
    case CMARK_ORDERED_LIST:
        return {blocks::NumberedList{isTight, node->as.list.start, itemsOf<RawListItem>(node)}};
    default:
        stop(brokentree::listWithoutType());
    }
}

} // namespace

NodeType typeOf(const cmark_node *node)
{
    // By far the most frequent ones, without a comparison of strings.
    if (!node->extension) {
        if (node->type == CMARK_NODE_TEXT)
            return NodeType::Text;
        if (node->type == CMARK_NODE_PARAGRAPH)
            return NodeType::Paragraph;
    }
    const std::string_view name = nameOf(node);
    const std::optional<NodeType> type = nodeType(name);
    if (!type)
        stop(brokentree::unknownType(name));
    return *type;
}

QList<InlineNode> inlinesOf(const cmark_node *parent)
{
    qsizetype count = 0;
    for (const cmark_node *child = parent->first_child; child; child = child->next)
        ++count;
    QList<InlineNode> out;
    out.reserve(count);
    for (const cmark_node *child = parent->first_child; child; child = child->next)
        appendInline(child, out);
    return out;
}

RawTableRow rowOf(const cmark_node *node)
{
    const NodeType type = typeOf(node);
    if (type != NodeType::TableRow && type != NodeType::TableHead)
        stop(brokentree::noTableRow(nameOf(node)));
    RawTableRow row;
    for (const cmark_node *cell = node->first_child; cell; cell = cell->next) {
        if (typeOf(cell) != NodeType::TableCell)
            stop(brokentree::noTableCell(nameOf(cell)));
        row.cells.append({inlinesOf(cell)});
    }
    return row;
}

RawListItem itemOf(const cmark_node *node)
{
    if (typeOf(node) != NodeType::Item)
        stop(brokentree::noListItem(nameOf(node)));
    return {blocksOf(node)};
}

RawTaskListItem taskItemOf(const cmark_node *node)
{
    if (typeOf(node) != NodeType::TaskListItem)
        return {false, itemOf(node).children};
    const bool isCompleted =
        cmark_gfm_extensions_get_tasklist_item_checked(const_cast<cmark_node *>(node));
    return {isCompleted, blocksOf(node)};
}

void appendBlock(const cmark_node *node, QList<BlockNode> &out)
{
    switch (typeOf(node)) {
    case NodeType::Blockquote:
        out.append({blocks::Blockquote{blocksOf(node)}});
        break;
    case NodeType::List:
        out.append(listOf(node));
        break;
    case NodeType::CodeBlock:
        out.append({blocks::CodeBlock{textOf(node->as.code.info), textOf(node->as.code.literal)}});
        break;
    case NodeType::HtmlBlock:
        out.append({blocks::HtmlBlock{textOf(node->as.literal)}});
        break;
    case NodeType::Paragraph:
        out.append({blocks::Paragraph{inlinesOf(node)}});
        break;
    case NodeType::Heading:
        out.append({blocks::Heading{node->as.heading.level, inlinesOf(node)}});
        break;
    case NodeType::Table:
        out.append({tableOf(node)});
        break;
    case NodeType::ThematicBreak:
        out.append({blocks::ThematicBreak{}});
        break;
    default:
        break;
    }
}

QList<BlockNode> blocksOf(const cmark_node *parent)
{
    QList<BlockNode> out;
    for (const cmark_node *child = parent->first_child; child; child = child->next)
        appendBlock(child, out);
    return out;
}

} // namespace velto::markdown::treereading
