// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/parser.h"

namespace velto::markdown::openpath
{

/// A node whose value is kept elsewhere: it stands in the tree for what the parser asks of its
/// siblings, and holds nothing.
[[nodiscard]] bool isStub(const cmark_node *node);
void makeStub(cmark_node *node);
/// For one whose children the parser may still look at.
void markAsStub(cmark_node *node);

[[nodiscard]] inline bool isOpen(const cmark_node *node)
{
    return (node->flags & CMARK_NODE__OPEN) != 0;
}

/// Whether a blank line ends `node`, seen through lists down to what ends them.
[[nodiscard]] bool endsWithBlankLine(const cmark_node *node);

/// Makes `copy`, an empty parser, continue where `original` is: with its open blocks, the stubs
/// among them, and nothing else. The copy of a node has the original as its user data.
void copyInto(Parser &copy, const Parser &original);

} // namespace velto::markdown::openpath
