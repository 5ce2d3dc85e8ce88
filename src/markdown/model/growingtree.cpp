// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/growingtree.h"

#include "markdown/model/definitions.h"
#include "markdown/model/document.h"
#include "markdown/model/growinglist.h"
#include "markdown/model/openpath.h"

#include <cmark-gfm-core-extensions.h>

#include <algorithm>
#include <utility>

namespace velto::markdown
{

using openpath::isOpen;
using openpath::isStub;

namespace
{

template<typename Values>
void truncate(Values &values, qsizetype count)
{
    if (values.size() > count)
        values.erase(values.begin() + count, values.end());
}

/// Takes what `copy` borrows from another parser back at the end.
class BorrowedDefinitions final
{
public:
    BorrowedDefinitions(const Parser &copy, cmark_map *map)
        : m_copy(copy.get())
        , m_own(std::exchange(m_copy->refmap, map))
    {}
    ~BorrowedDefinitions() { m_copy->refmap = m_own; }
    BorrowedDefinitions(const BorrowedDefinitions &) = delete;
    BorrowedDefinitions &operator=(const BorrowedDefinitions &) = delete;

private:
    cmark_parser *m_copy;
    cmark_map *m_own;
};

bool growsInPlace(const cmark_node *node)
{
    return node->type == CMARK_NODE_BLOCK_QUOTE || node->type == CMARK_NODE_LIST ||
           node->type == CMARK_NODE_CODE_BLOCK || node->type == CMARK_NODE_HTML_BLOCK ||
           node->type == CMARK_NODE_TABLE;
}

BlockNode emptyValueOf(cmark_node *node)
{
    if (node->type == CMARK_NODE_BLOCK_QUOTE)
        return {blocks::Blockquote{}};
    if (node->type == CMARK_NODE_LIST)
        return {blocks::BulletedList{}};
    if (node->type == CMARK_NODE_CODE_BLOCK)
        return {blocks::CodeBlock{}};
    if (node->type == CMARK_NODE_HTML_BLOCK)
        return {blocks::HtmlBlock{}};
    return {blocks::Table{treereading::alignmentsOf(node), {}}};
}

bool isTask(const cmark_node *item)
{
    return treereading::typeOf(item) == NodeType::TaskListItem;
}

bool isChecked(cmark_node *item)
{
    return isTask(item) && cmark_gfm_extensions_get_tasklist_item_checked(item);
}

void setKind(BlockNode &value, const cmark_node *list, bool hasTasks)
{
    const bool isNumbered = list->as.list.list_type == CMARK_ORDERED_LIST;
    growinglist::setKind(value, hasTasks, isNumbered, list->as.list.start);
}

/// Whether an item that another one follows makes its list loose.
bool loosens(const cmark_node *item)
{
    if (item->flags & CMARK_NODE__LAST_LINE_BLANK)
        return true;
    for (const cmark_node *child = item->first_child; child; child = child->next) {
        if (openpath::endsWithBlankLine(child))
            return true;
    }
    return false;
}

/// The part of an open block's text that its end can't change, as a range of bytes.
std::pair<bufsize_t, bufsize_t> settledText(const cmark_node *node)
{
    const std::string_view text(reinterpret_cast<const char *>(node->content.ptr),
                                static_cast<std::size_t>(node->content.size));
    if (node->type == CMARK_NODE_HTML_BLOCK)
        return {0, node->content.size};
    if (node->as.code.fenced) { // the first line is the info string
        const std::size_t infoEnd = text.find('\n');
        const auto start = infoEnd == std::string_view::npos ? text.size() : infoEnd + 1;
        return {static_cast<bufsize_t>(start), node->content.size};
    }
    // Blank lines at the end of indented code are not part of it.
    const std::size_t lastText = text.find_last_not_of(" \t\n");
    if (lastText == std::string_view::npos)
        return {0, 0};
    const std::size_t lineEnd = text.rfind('\n', lastText);
    return {0, lineEnd == std::string_view::npos ? 0 : static_cast<bufsize_t>(lineEnd + 1)};
}

void removeText(cmark_node *node, bufsize_t from, bufsize_t to)
{
    if (to == node->content.size)
        cmark_strbuf_truncate(&node->content, from);
    else
        cmark_strbuf_drop(&node->content, to);
}

/// The text of a closed code or HTML block behind the first `settled` units.
void readText(const cmark_node *node, qsizetype settled, BlockNode &value)
{
    if (auto *code = std::get_if<blocks::CodeBlock>(&value.kind)) {
        code->content.truncate(settled);
        code->content += treereading::textOf(node->as.code.literal);
        code->fenceInfo = treereading::textOf(node->as.code.info);
    } else {
        QString &content = std::get<blocks::HtmlBlock>(value.kind).content;
        content.truncate(settled);
        content += treereading::textOf(node->as.literal);
    }
}

} // namespace

GrowingTree::GrowingTree()
{
    m_levels.push_back({m_parser.root()});
    m_leaves.setLabels(&m_labels);
}

qsizetype GrowingTree::settledCount() const
{
    return m_levels.front().settled;
}

bool GrowingTree::addLines(std::string_view lines)
{
    const cmark_map *map = m_parser.get()->refmap;
    {
        const DefinitionsOpen open(m_parser.get()->refmap, m_definitions,
                                   DefinitionsOpen::Then::Keep);
        while (!lines.empty()) {
            const std::string_view here = lines;
            if (!m_guard.feed(m_parser, takeLine(lines))) {
                m_parser.closeAll();
                m_unread += unreadText(here);
                break;
            }
        }
        if (changeWhatWasRead(map->refs, open.before(), m_labels, m_leaves))
            return false;
        m_leaves.setLongestTarget(
            std::max(m_leaves.longestTarget(), longestTarget(map->refs, open.before())));
    }
    settleBlocks(0, m_content.blocks);
    return true;
}

bool GrowingTree::update(std::string_view line)
{
    cmark_map *map = m_parser.get()->refmap;
    m_copy.clear();
    openpath::copyInto(m_copy, m_parser);
    const BorrowedDefinitions borrowed(m_copy, map);
    const DefinitionsOpen open(map, m_definitions, DefinitionsOpen::Then::Drop);
    LineGuard guard = m_guard;
    const bool isRead = line.empty() || guard.feed(m_copy, line);
    m_copy.closeAll();
    if (changeWhatWasRead(map->refs, open.before(), m_labels, m_leaves))
        return false;
    m_copyLeaves = m_leaves;
    m_copyLeaves.setLabels(nullptr);
    m_copyLeaves.setLongestTarget(
        std::max(m_leaves.longestTarget(), longestTarget(map->refs, open.before())));
    readBlocks(0, m_copy.root(), m_content.blocks);
    if (isRead && m_unread.isEmpty())
        return true;
    m_content.blocks.append(unreadBlock(isRead ? m_unread : m_unread + unreadText(line)));
    return true;
}

bool GrowingTree::tracks(std::size_t level, const cmark_node *node) const
{
    return level < m_levels.size() && m_levels[level].node == node;
}

void GrowingTree::track(std::size_t level, cmark_node *node)
{
    m_levels.erase(m_levels.begin() + static_cast<std::ptrdiff_t>(level), m_levels.end());
    m_levels.push_back({node});
}

void GrowingTree::untrack(std::size_t level)
{
    m_levels.erase(m_levels.begin() + static_cast<std::ptrdiff_t>(level), m_levels.end());
    ++m_levels.back().settled;
}

void GrowingTree::settleBlocks(std::size_t level, QList<BlockNode> &values)
{
    for (cmark_node *child = m_levels[level].node->first_child; child; child = child->next) {
        if (isStub(child))
            continue;
        if (tracks(level + 1, child) || (isOpen(child) && growsInPlace(child))) {
            settleTracked(level, child, values);
        } else if (!isOpen(child)) {
            truncate(values, m_levels[level].settled);
            treereading::appendBlock({m_parser.get(), m_leaves}, child, values);
            m_levels[level].settled = values.size();
            openpath::makeStub(child);
        }
    }
    dropPassed(level);
}

/// A block that grows in place, or has ended just now.
void GrowingTree::settleTracked(std::size_t level, cmark_node *child, QList<BlockNode> &values)
{
    const qsizetype index = m_levels[level].settled;
    if (!tracks(level + 1, child)) {
        track(level + 1, child);
        truncate(values, index);
        values.append(emptyValueOf(child));
    }
    settleInto(level + 1, values[index]);
    if (isOpen(child))
        return;
    finish(level + 1, values[index]);
    untrack(level + 1);
    openpath::makeStub(child);
}

/// Stubs that nothing asks of any more. A child that is still open may vanish, and then the one
/// before is the last again.
void GrowingTree::dropPassed(std::size_t level)
{
    cmark_node *parent = m_levels[level].node;
    while (cmark_node *child = parent->first_child) {
        if (!isStub(child) || !child->next || !child->next->next)
            break;
        if (parent->type == CMARK_NODE_ITEM && openpath::endsWithBlankLine(child))
            m_levels[level - 1].isLoose = true;
        cmark_node_free(child);
    }
}

void GrowingTree::settleInto(std::size_t level, BlockNode &value)
{
    const cmark_node *node = m_levels[level].node;
    if (auto *quote = std::get_if<blocks::Blockquote>(&value.kind))
        settleBlocks(level, quote->children);
    else if (auto *table = std::get_if<blocks::Table>(&value.kind))
        settleRows(level, *table);
    else if (node->type == CMARK_NODE_LIST)
        settleItems(level, value);
    else if (isOpen(node))
        settleText(level, value);
}

void GrowingTree::settleItems(std::size_t level, BlockNode &list)
{
    cmark_node *item = m_levels[level].node->first_child;
    while (item) {
        cmark_node *const next = item->next;
        if (!isStub(item))
            settleItem(level, item, list);
        if (!isOpen(item) && next) {
            m_levels[level].isLoose = m_levels[level].isLoose || loosens(item);
            cmark_node_free(item);
        }
        item = next;
    }
}

void GrowingTree::settleItem(std::size_t level, cmark_node *item, BlockNode &list)
{
    m_levels[level].hasTasks = m_levels[level].hasTasks || isTask(item);
    setKind(list, m_levels[level].node, m_levels[level].hasTasks);
    const qsizetype index = m_levels[level].settled;
    if (!tracks(level + 1, item)) {
        track(level + 1, item);
        growinglist::truncate(list, index);
        growinglist::append(list, {isChecked(item), {}});
    }
    QList<BlockNode> &children = growinglist::childrenAt(list, index);
    settleBlocks(level + 1, children);
    if (isOpen(item))
        return;
    truncate(children, m_levels[level + 1].settled);
    growinglist::setCompleted(list, index, isChecked(item));
    untrack(level + 1);
    openpath::markAsStub(item);
}

void GrowingTree::settleRows(std::size_t level, blocks::Table &table)
{
    cmark_node *row = m_levels[level].node->first_child;
    while (row) {
        cmark_node *const next = row->next;
        if (!isStub(row)) {
            truncate(table.rows, m_levels[level].settled);
            table.rows.append(treereading::rowOf({m_parser.get(), m_leaves}, row));
            m_levels[level].settled = table.rows.size();
            openpath::markAsStub(row);
        }
        if (next)
            cmark_node_free(row);
        row = next;
    }
}

void GrowingTree::settleText(std::size_t level, BlockNode &value)
{
    Level &self = m_levels[level];
    const auto [from, to] = settledText(self.node);
    if (from == to)
        return;
    auto *code = std::get_if<blocks::CodeBlock>(&value.kind);
    QString &text = code ? code->content : std::get<blocks::HtmlBlock>(value.kind).content;
    const auto *bytes = reinterpret_cast<const char *>(self.node->content.ptr);
    text.truncate(self.settled);
    text += treereading::textOf({bytes + from, static_cast<std::size_t>(to - from)});
    self.settled = text.size();
    removeText(self.node, from, to);
}

/// The value of a block that has ended.
void GrowingTree::finish(std::size_t level, BlockNode &value)
{
    const Level &self = m_levels[level];
    if (auto *quote = std::get_if<blocks::Blockquote>(&value.kind)) {
        truncate(quote->children, self.settled);
    } else if (auto *table = std::get_if<blocks::Table>(&value.kind)) {
        truncate(table->rows, self.settled);
    } else if (self.node->type == CMARK_NODE_LIST) {
        growinglist::truncate(value, self.settled);
        setKind(value, self.node, self.hasTasks);
        growinglist::setTight(value, self.node->as.list.tight && !self.isLoose);
    } else {
        readText(self.node, self.settled, value);
    }
}

bool GrowingTree::isCopyOfLevel(std::size_t level, const cmark_node *node) const
{
    return level < m_levels.size() && node->user_data == m_levels[level].node;
}

void GrowingTree::readBlocks(std::size_t level, cmark_node *parent, QList<BlockNode> &values)
{
    qsizetype index = m_levels[level].settled;
    for (cmark_node *child = parent->first_child; child; child = child->next) {
        if (isStub(child))
            continue;
        if (isCopyOfLevel(level + 1, child)) {
            readInto(level + 1, child, values[index]);
        } else {
            truncate(values, index);
            treereading::appendBlock({m_copy.get(), m_copyLeaves}, child, values);
            if (values.size() == index)
                continue;
        }
        ++index;
    }
    truncate(values, index);
}

void GrowingTree::readInto(std::size_t level, cmark_node *node, BlockNode &value)
{
    if (auto *quote = std::get_if<blocks::Blockquote>(&value.kind))
        readBlocks(level, node, quote->children);
    else if (auto *table = std::get_if<blocks::Table>(&value.kind))
        readRows(level, node, *table);
    else if (node->type == CMARK_NODE_LIST)
        readItems(level, node, value);
    else
        readText(node, m_levels[level].settled, value);
}

void GrowingTree::readItems(std::size_t level, cmark_node *list, BlockNode &value)
{
    bool hasTasks = m_levels[level].hasTasks;
    for (const cmark_node *item = list->first_child; item; item = item->next)
        hasTasks = hasTasks || (!isStub(item) && isTask(item));
    setKind(value, list, hasTasks);
    qsizetype index = m_levels[level].settled;
    for (cmark_node *item = list->first_child; item; item = item->next) {
        if (isStub(item))
            continue;
        if (isCopyOfLevel(level + 1, item)) {
            readBlocks(level + 1, item, growinglist::childrenAt(value, index));
            growinglist::setCompleted(value, index, isChecked(item));
        } else {
            growinglist::truncate(value, index);
            growinglist::append(value, treereading::taskItemOf({m_copy.get(), m_copyLeaves}, item));
        }
        ++index;
    }
    growinglist::truncate(value, index);
    growinglist::setTight(value, list->as.list.tight && !m_levels[level].isLoose);
}

void GrowingTree::readRows(std::size_t level, cmark_node *table, blocks::Table &value)
{
    truncate(value.rows, m_levels[level].settled);
    for (cmark_node *row = table->first_child; row; row = row->next) {
        if (!isStub(row))
            value.rows.append(treereading::rowOf({m_copy.get(), m_copyLeaves}, row));
    }
}

} // namespace velto::markdown
