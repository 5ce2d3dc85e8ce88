// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/blocknode.h"

#include <QHash>

namespace velto::markdown
{

namespace
{

std::size_t hashOf(const blocks::Blockquote &node, std::size_t seed)
{
    return qHash(node.children, seed);
}

std::size_t hashOf(const blocks::BulletedList &node, std::size_t seed)
{
    return qHashMulti(seed, node.isTight, node.items);
}

std::size_t hashOf(const blocks::NumberedList &node, std::size_t seed)
{
    return qHashMulti(seed, node.isTight, node.start, node.items);
}

std::size_t hashOf(const blocks::TaskList &node, std::size_t seed)
{
    return qHashMulti(seed, node.isTight, node.items);
}

std::size_t hashOf(const blocks::CodeBlock &node, std::size_t seed)
{
    return qHashMulti(seed, node.fenceInfo.has_value(), node.fenceInfo.value_or(QString()),
                      node.content);
}

std::size_t hashOf(const blocks::HtmlBlock &node, std::size_t seed)
{
    return qHash(node.content, seed);
}

std::size_t hashOf(const blocks::Paragraph &node, std::size_t seed)
{
    return qHash(node.content, seed);
}

std::size_t hashOf(const blocks::Heading &node, std::size_t seed)
{
    return qHashMulti(seed, node.level, node.content);
}

std::size_t hashOf(const blocks::Table &node, std::size_t seed)
{
    for (const RawTableColumnAlignment alignment : node.columnAlignments)
        seed = qHashMulti(seed, static_cast<int>(alignment));
    return qHash(node.rows, seed);
}

std::size_t hashOf(const blocks::ThematicBreak &, std::size_t seed)
{
    return seed;
}

} // namespace

namespace blocks
{

bool operator==(const Blockquote &a, const Blockquote &b)
{
    return a.children == b.children;
}

bool operator==(const BulletedList &a, const BulletedList &b)
{
    return a.isTight == b.isTight && a.items == b.items;
}

bool operator==(const NumberedList &a, const NumberedList &b)
{
    return a.isTight == b.isTight && a.start == b.start && a.items == b.items;
}

bool operator==(const TaskList &a, const TaskList &b)
{
    return a.isTight == b.isTight && a.items == b.items;
}

} // namespace blocks

bool operator==(const BlockNode &a, const BlockNode &b)
{
    return a.kind == b.kind;
}
bool operator==(const RawListItem &a, const RawListItem &b)
{
    return a.children == b.children;
}

bool operator==(const RawTaskListItem &a, const RawTaskListItem &b)
{
    return a.isCompleted == b.isCompleted && a.children == b.children;
}

std::size_t qHash(const BlockNode &node, std::size_t seed)
{
    const std::size_t mixed = qHashMulti(seed, node.kind.index());
    return std::visit([mixed](const auto &kind) { return hashOf(kind, mixed); }, node.kind);
}

std::size_t qHash(const RawListItem &item, std::size_t seed)
{
    return qHash(item.children, seed);
}

std::size_t qHash(const RawTaskListItem &item, std::size_t seed)
{
    return qHashMulti(seed, item.isCompleted, item.children);
}

std::size_t qHash(const RawTableCell &cell, std::size_t seed)
{
    return qHash(cell.content, seed);
}
std::size_t qHash(const RawTableRow &row, std::size_t seed)
{
    return qHash(row.cells, seed);
}

} // namespace velto::markdown
