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
InlineNode spanOf(const cmark_node *node, Texts texts)
{
    return {Node{inlinesOf(node, texts)}};
}

/// Gives the last node that became part of the text.
const cmark_node *appendText(const cmark_node *node, Texts texts, QList<InlineNode> &out)
{
    QString text = textOf(node->as.literal);
    while (texts == Texts::Joined && node->next && node->next->type == CMARK_NODE_TEXT) {
        node = node->next;
        text += textOf(node->as.literal);
    }
    out.append({inlines::Text{std::move(text)}});
    return node;
}

void appendInline(const cmark_node *node, Texts texts, QList<InlineNode> &out)
{
    switch (typeOf(node)) {
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
        out.append(spanOf<inlines::Emphasis>(node, texts));
        break;
    case NodeType::Strong:
        out.append(spanOf<inlines::Strong>(node, texts));
        break;
    case NodeType::Strikethrough:
        out.append(spanOf<inlines::Strikethrough>(node, texts));
        break;
    case NodeType::Link:
        out.append({inlines::Link{textOf(node->as.link.url), inlinesOf(node, texts)}});
        break;
    case NodeType::Image:
        out.append({inlines::Image{textOf(node->as.link.url), inlinesOf(node, texts)}});
        break;
    default:
        break;
    }
}

blocks::Table tableOf(Source source, cmark_node *node)
{
    blocks::Table value{alignmentsOf(node), {}};
    for (cmark_node *row = node->first_child; row; row = row->next)
        value.rows.append(rowOf(source, row));
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
QList<Item> itemsOf(Source source, cmark_node *list)
{
    QList<Item> items;
    for (cmark_node *item = list->first_child; item; item = item->next) {
        if constexpr (std::is_same_v<Item, RawTaskListItem>)
            items.append(taskItemOf(source, item));
        else
            items.append(itemOf(source, item));
    }
    return items;
}

BlockNode listOf(Source source, cmark_node *node)
{
    const bool isTight = node->as.list.tight;
    if (isTaskList(node))
        return {blocks::TaskList{isTight, itemsOf<RawTaskListItem>(source, node)}};
    switch (node->as.list.list_type) {
    case CMARK_BULLET_LIST:
        return {blocks::BulletedList{isTight, itemsOf<RawListItem>(source, node)}};
    case CMARK_ORDERED_LIST:
        return {
            blocks::NumberedList{isTight, node->as.list.start, itemsOf<RawListItem>(source, node)}};
    default:
        stop(brokentree::listWithoutType());
    }
}

} // namespace

/// QString::fromUtf8 takes a leading byte order mark for a signature and drops it.
QString textOf(std::string_view utf8)
{
    const QByteArrayView bytes(utf8.data(), static_cast<qsizetype>(utf8.size()));
    if (utf8.starts_with("\xef\xbb\xbf"))
        return QChar(QChar::ByteOrderMark) + QString::fromUtf8(bytes);
    return QString::fromUtf8(bytes);
}

QString textOf(const cmark_chunk &chunk)
{
    if (chunk.len <= 0)
        return {};
    return textOf(std::string_view(reinterpret_cast<const char *>(chunk.data),
                                   static_cast<std::size_t>(chunk.len)));
}

NodeType typeOf(const cmark_node *node)
{
    // The most frequent ones, without a comparison of strings.
    if (!node->extension) {
        switch (node->type) {
        case CMARK_NODE_PARAGRAPH:
            return NodeType::Paragraph;
        case CMARK_NODE_ITEM:
            return NodeType::Item;
        case CMARK_NODE_SOFTBREAK:
            return NodeType::SoftBreak;
        case CMARK_NODE_STRONG:
            return NodeType::Strong;
        case CMARK_NODE_CODE:
            return NodeType::Code;
        case CMARK_NODE_EMPH:
            return NodeType::Emphasis;
        case CMARK_NODE_LINK:
            return NodeType::Link;
        case CMARK_NODE_LIST:
            return NodeType::List;
        case CMARK_NODE_CODE_BLOCK:
            return NodeType::CodeBlock;
        case CMARK_NODE_HEADING:
            return NodeType::Heading;
        default:
            break;
        }
    }
    if (node->type == CMARK_NODE_TABLE_CELL)
        return NodeType::TableCell;
    const std::string_view name = nameOf(node);
    const std::optional<NodeType> type = nodeType(name);
    if (!type)
        stop(brokentree::unknownType(name));
    return *type;
}

QList<InlineNode> inlinesOf(const cmark_node *parent, Texts texts)
{
    qsizetype count = 0;
    for (const cmark_node *child = parent->first_child; child; child = child->next)
        ++count;
    QList<InlineNode> out;
    out.reserve(count);
    const cmark_node *child = parent->first_child;
    while (child) {
        if (child->type == CMARK_NODE_TEXT)
            child = appendText(child, texts, out);
        else
            appendInline(child, texts, out);
        child = child->next;
    }
    return out;
}

RawTableRow rowOf(Source source, cmark_node *node)
{
    const NodeType type = typeOf(node);
    if (type != NodeType::TableRow && type != NodeType::TableHead)
        stop(brokentree::noTableRow(nameOf(node)));
    RawTableRow row;
    for (cmark_node *cell = node->first_child; cell; cell = cell->next) {
        if (typeOf(cell) != NodeType::TableCell)
            stop(brokentree::noTableCell(nameOf(cell)));
        row.cells.append({source.leaves.read(source.parser, cell)});
    }
    return row;
}

RawListItem itemOf(Source source, cmark_node *node)
{
    if (typeOf(node) != NodeType::Item)
        stop(brokentree::noListItem(nameOf(node)));
    return {blocksOf(source, node)};
}

RawTaskListItem taskItemOf(Source source, cmark_node *node)
{
    if (typeOf(node) != NodeType::TaskListItem)
        return {false, itemOf(source, node).children};
    return {cmark_gfm_extensions_get_tasklist_item_checked(node), blocksOf(source, node)};
}

void appendBlock(Source source, cmark_node *node, QList<BlockNode> &out)
{
    switch (typeOf(node)) {
    case NodeType::Blockquote:
        out.append({blocks::Blockquote{blocksOf(source, node)}});
        break;
    case NodeType::List:
        out.append(listOf(source, node));
        break;
    case NodeType::CodeBlock:
        out.append({blocks::CodeBlock{textOf(node->as.code.info), textOf(node->as.code.literal)}});
        break;
    case NodeType::HtmlBlock:
        out.append({blocks::HtmlBlock{textOf(node->as.literal)}});
        break;
    case NodeType::Paragraph:
        out.append({blocks::Paragraph{source.leaves.read(source.parser, node)}});
        break;
    case NodeType::Heading:
        out.append(
            {blocks::Heading{node->as.heading.level, source.leaves.read(source.parser, node)}});
        break;
    case NodeType::Table:
        out.append({tableOf(source, node)});
        break;
    case NodeType::ThematicBreak:
        out.append({blocks::ThematicBreak{}});
        break;
    default:
        break;
    }
}

QList<BlockNode> blocksOf(Source source, cmark_node *parent)
{
    QList<BlockNode> out;
    for (cmark_node *child = parent->first_child; child; child = child->next)
        appendBlock(source, child, out);
    return out;
}

QList<RawTableColumnAlignment> alignmentsOf(cmark_node *table)
{
    const int columns = cmark_gfm_extensions_get_table_columns(table);
    const auto *codes = cmark_gfm_extensions_get_table_alignments(table);
    QList<RawTableColumnAlignment> alignments;
    alignments.reserve(columns);
    for (int column = 0; column < columns; ++column)
        alignments.append(alignmentOf(static_cast<char>(codes[column])));
    return alignments;
}

} // namespace velto::markdown::treereading
