// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cmark-gfm/parser.h>

#include <string_view>

// Exported by the library, declared in headers that it doesn't install.
extern "C" {
extern cmark_node_type CMARK_NODE_STRIKETHROUGH;
extern cmark_node_type CMARK_NODE_TABLE;
extern cmark_node_type CMARK_NODE_TABLE_ROW;
extern cmark_node_type CMARK_NODE_TABLE_CELL;
}

namespace velto::markdown
{

/// A cmark-gfm parser with the extensions that every text is read with.
///
/// It is fed whole lines and never finished: `closeAll` ends the blocks, and leaves are parsed one
/// by one (LeafReader), so that both can be bounded and the block structure of a growing text be
/// kept.
class Parser final
{
public:
    Parser();
    ~Parser();
    Parser(const Parser &) = delete;
    Parser &operator=(const Parser &) = delete;

    [[nodiscard]] cmark_parser *get() const { return m_parser; }
    [[nodiscard]] cmark_node *root() const { return m_parser->root; }
    /// `line` ends with a line feed and holds no other line end.
    void feed(std::string_view line);
    /// Ends every open block as the end of the text would.
    void closeAll();
    /// Back to an empty document.
    void clear();

    [[nodiscard]] static cmark_syntax_extension *autolink();

private:
    cmark_parser *m_parser;
};

/// Link reference definitions of a parser, which sorts them at the first look-up and then takes no
/// more. While one of these lives, more can come; afterwards what was sorted still is, unless some
/// came.
class DefinitionsOpen final
{
public:
    enum class Then { Keep, Drop };

    /// `Drop` takes what came away again.
    DefinitionsOpen(cmark_map *map, unsigned &count, Then then);
    ~DefinitionsOpen();
    DefinitionsOpen(const DefinitionsOpen &) = delete;
    DefinitionsOpen &operator=(const DefinitionsOpen &) = delete;

    /// The newest definition before this began: those before it in the list came since.
    [[nodiscard]] const cmark_map_entry *before() const { return m_before; }

private:
    void drop();

    cmark_map *m_map;
    unsigned &m_count; // of the list; the map's own size is that without duplicates once sorted
    Then m_then;
    cmark_map_entry *m_before;
    cmark_map_entry **m_sorted;
    unsigned m_sortedSize;
};

} // namespace velto::markdown
