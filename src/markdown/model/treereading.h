// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/blocknode.h"
#include "markdown/model/leafreader.h"
#include "markdown/model/nodetype.h"

/// From the parser's nodes to values. A node of a kind that has no value is left out.
namespace velto::markdown::treereading
{

/// What is read, of which parser, and by whom: leaves hold their raw text until then.
struct Source
{
    cmark_parser *parser;
    LeafReader &leaves;
};

[[nodiscard]] NodeType typeOf(const cmark_node *node);
[[nodiscard]] QString textOf(std::string_view utf8);
[[nodiscard]] QString textOf(const cmark_chunk &chunk);
/// How texts side by side are taken, which the parser leaves so until it is told to join them.
enum class Texts { Joined, AsTheyAre };
/// The inlines below a leaf whose text was parsed.
[[nodiscard]] QList<InlineNode> inlinesOf(const cmark_node *parent, Texts texts);

/// Appends the block that `node` stands for to `out`.
void appendBlock(Source source, cmark_node *node, QList<BlockNode> &out);
[[nodiscard]] QList<BlockNode> blocksOf(Source source, cmark_node *parent);
[[nodiscard]] RawListItem itemOf(Source source, cmark_node *node);
[[nodiscard]] RawTaskListItem taskItemOf(Source source, cmark_node *node);
[[nodiscard]] RawTableRow rowOf(Source source, cmark_node *node);
[[nodiscard]] QList<RawTableColumnAlignment> alignmentsOf(cmark_node *table);

} // namespace velto::markdown::treereading
