// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/blocknode.h"
#include "markdown/model/nodetype.h"

struct cmark_node;

/// From the parser's nodes to values. A node of a kind that has no value is left out.
namespace velto::markdown::treereading
{

[[nodiscard]] NodeType typeOf(const cmark_node *node);
[[nodiscard]] QList<InlineNode> inlinesOf(const cmark_node *parent);
/// The block that `node` stands for, appended to `out`.
void appendBlock(const cmark_node *node, QList<BlockNode> &out);
[[nodiscard]] RawListItem itemOf(const cmark_node *node);
[[nodiscard]] RawTaskListItem taskItemOf(const cmark_node *node);
[[nodiscard]] RawTableRow rowOf(const cmark_node *node);
[[nodiscard]] QList<BlockNode> blocksOf(const cmark_node *parent);

} // namespace velto::markdown::treereading
