// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/leafreader.h"
#include "markdown/model/lineguard.h"
#include "markdown/model/markdowncontent.h"
#include "markdown/model/treereading.h"

#include <string_view>
#include <vector>

namespace velto::markdown
{

/// The blocks of the lines so far, kept so that a further line costs what that line changes.
///
/// The parser reads every line once. What it has closed becomes a value (settles) and leaves its
/// tree; the blocks still open, and a last line without its end, are read again for each look in a
/// copy of the parser that holds nothing else.
class GrowingTree final
{
public:
    GrowingTree();
    GrowingTree(const GrowingTree &) = delete;
    GrowingTree &operator=(const GrowingTree &) = delete;

    /// Lines with LF as their ends. False when a definition among them changes blocks that have
    /// settled: the tree is of no more use then.
    [[nodiscard]] bool addLines(std::string_view lines);
    /// Brings `content()` up to date, with `line` as the last one, which has no end yet. False
    /// when a definition that is not complete changes settled blocks; the blocks are not up to date
    /// then, but will be after the next call.
    [[nodiscard]] bool update(std::string_view line);

    [[nodiscard]] const MarkdownContent &content() const { return m_content; }
    /// How many blocks at the front will never change.
    [[nodiscard]] qsizetype settledCount() const;

private:
    /// An open block whose value grows in place.
    struct Level
    {
        cmark_node *node;
        qsizetype settled = 0; ///< Children, or UTF-16 units of code, that won't change.
        bool isLoose = false;  ///< A list that a settled item made loose.
        bool hasTasks = false; ///< A list with a checkbox in a settled or open item.
    };

    [[nodiscard]] bool tracks(std::size_t level, const cmark_node *node) const;
    void track(std::size_t level, cmark_node *node);
    void untrack(std::size_t level);
    void settleBlocks(std::size_t level, QList<BlockNode> &values);
    void settleTracked(std::size_t level, cmark_node *child, QList<BlockNode> &values);
    void settleInto(std::size_t level, BlockNode &value);
    void settleItems(std::size_t level, BlockNode &list);
    void settleItem(std::size_t level, cmark_node *item, BlockNode &list);
    void settleRows(std::size_t level, blocks::Table &table);
    void settleText(std::size_t level, BlockNode &value);
    void finish(std::size_t level, BlockNode &value);
    void dropPassed(std::size_t level);

    [[nodiscard]] bool isCopyOfLevel(std::size_t level, const cmark_node *node) const;
    void readBlocks(std::size_t level, cmark_node *parent, QList<BlockNode> &values);
    void readInto(std::size_t level, cmark_node *node, BlockNode &value);
    void readItems(std::size_t level, cmark_node *list, BlockNode &value);
    void readRows(std::size_t level, cmark_node *table, blocks::Table &value);

    Parser m_parser;
    LineGuard m_guard;
    LeafReader m_leaves;
    LabelSet m_labels;
    unsigned m_definitions = 0;
    std::vector<Level> m_levels; // from the document down
    MarkdownContent m_content;
    QString m_unread; // complete lines that the guard kept from the parser

    Parser m_copy;
    LeafReader m_copyLeaves;
};

} // namespace velto::markdown
