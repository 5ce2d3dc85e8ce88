// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/parser.h"

#include <cmark-gfm-core-extensions.h>
#include <cmark-gfm/syntax_extension.h>

#include <mutex>

namespace velto::markdown
{

namespace
{

constexpr const char *extensionNames[] = {"autolink", "strikethrough", "tagfilter", "tasklist",
                                          "table"};

/// A block with this extension goes on in no line.
cmark_syntax_extension *endingExtension()
{
    static cmark_syntax_extension *extension = [] {
        cmark_syntax_extension *made = cmark_syntax_extension_new("ending");
        cmark_syntax_extension_set_match_block_func(made, [](cmark_syntax_extension *,
                                                             cmark_parser *, unsigned char *, int,
                                                             cmark_node *) { return 0; });
        return made;
    }();
    return extension;
}

void registerOnce(cmark_parser *parser)
{
    static std::once_flag once;
    // The characters that begin an extension's inlines are in a table of the library's own.
    // Finishing a parser clears them there; nobody in this process does.
    std::call_once(once, [parser] { cmark_manage_extensions_special_characters(parser, 1); });
}

} // namespace

Parser::Parser()
{
    cmark_gfm_core_extensions_ensure_registered();
    m_parser = cmark_parser_new(CMARK_OPT_DEFAULT);
    for (const char *name : extensionNames) {
        if (cmark_syntax_extension *extension = cmark_find_syntax_extension(name))
            cmark_parser_attach_syntax_extension(m_parser, extension);
    }
    registerOnce(m_parser);
}

Parser::~Parser()
{
    cmark_parser_free(m_parser);
}

void Parser::feed(std::string_view line)
{
    cmark_parser_feed(m_parser, line.data(), line.size());
}

void Parser::closeAll()
{
    cmark_node *const root = m_parser->root;
    cmark_node *const last = root->last_child;
    if (!last || !(last->flags & CMARK_NODE__OPEN))
        return;
    cmark_syntax_extension *const own = last->extension;
    last->extension = endingExtension();
    feed("***\n");
    cmark_node *const rule = root->last_child;
    // A paragraph of nothing but definitions is gone by now.
    if (rule->prev == last)
        last->extension = own;
    m_parser->current = root;
    cmark_node_free(rule);
}

void Parser::clear()
{
    while (cmark_node *child = m_parser->root->first_child)
        cmark_node_free(child);
    m_parser->current = m_parser->root;
    m_parser->line_number = 0;
}

cmark_syntax_extension *Parser::autolink()
{
    static cmark_syntax_extension *const extension = cmark_find_syntax_extension("autolink");
    return extension;
}

DefinitionsOpen::DefinitionsOpen(cmark_map *map, unsigned &count, Then then)
    : m_map(map)
    , m_count(count)
    , m_then(then)
    , m_before(map->refs)
    , m_sorted(map->sorted)
    , m_sortedSize(map->size)
{
    map->sorted = nullptr;
    if (m_sorted)
        map->size = m_count;
}

DefinitionsOpen::~DefinitionsOpen()
{
    if (m_then == Then::Drop)
        drop();
    else
        m_count = m_map->size;
    if (m_map->refs == m_before && m_sorted) {
        m_map->sorted = m_sorted;
        m_map->size = m_sortedSize;
    } else if (m_sorted) {
        m_map->mem->free(m_sorted);
    }
}

void DefinitionsOpen::drop()
{
    if (m_map->sorted) {
        m_map->mem->free(m_map->sorted);
        m_map->sorted = nullptr;
    }
    while (m_map->refs != m_before) {
        cmark_map_entry *entry = m_map->refs;
        m_map->refs = entry->next;
        m_map->free(m_map, entry);
    }
    m_map->size = m_count;
}

} // namespace velto::markdown
