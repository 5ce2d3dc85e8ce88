// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "plainparse.h"

#include <cmark-gfm-core-extensions.h>
#include <cmark-gfm-extension_api.h>
#include <cmark-gfm.h>
#include <cmark-gfm/parser.h>

#include <string_view>

namespace velto::test
{

using namespace markdown;

namespace
{

std::string_view typeOf(cmark_node *node)
{
    return cmark_node_get_type_string(node);
}

QString literalOf(const char *text)
{
    if (!text)
        return {};
    const QByteArrayView bytes(text);
    const QString decoded = QString::fromUtf8(bytes);
    return bytes.startsWith(QByteArrayView("\xef\xbb\xbf")) ? QChar(0xfeff) + decoded : decoded;
}

QList<InlineNode> inlinesOf(cmark_node *parent)
{
    QList<InlineNode> out;
    for (cmark_node *node = cmark_node_first_child(parent); node; node = cmark_node_next(node)) {
        const std::string_view type = typeOf(node);
        if (type == "text")
            out.append({inlines::Text{literalOf(cmark_node_get_literal(node))}});
        else if (type == "code")
            out.append({inlines::Code{literalOf(cmark_node_get_literal(node))}});
        else if (type == "html_inline")
            out.append({inlines::Html{literalOf(cmark_node_get_literal(node))}});
        else if (type == "softbreak")
            out.append({inlines::SoftBreak{}});
        else if (type == "linebreak")
            out.append({inlines::LineBreak{}});
        else if (type == "emph")
            out.append({inlines::Emphasis{inlinesOf(node)}});
        else if (type == "strong")
            out.append({inlines::Strong{inlinesOf(node)}});
        else if (type == "strikethrough")
            out.append({inlines::Strikethrough{inlinesOf(node)}});
        else if (type == "link")
            out.append({inlines::Link{literalOf(cmark_node_get_url(node)), inlinesOf(node)}});
        else if (type == "image")
            out.append({inlines::Image{literalOf(cmark_node_get_url(node)), inlinesOf(node)}});
    }
    return out;
}

QList<BlockNode> blocksOf(cmark_node *parent);

BlockNode listOf(cmark_node *list)
{
    const bool isTight = cmark_node_get_list_tight(list) != 0;
    QList<RawListItem> items;
    QList<RawTaskListItem> tasks;
    bool hasTask = false;
    for (cmark_node *item = cmark_node_first_child(list); item; item = cmark_node_next(item)) {
        const bool isTask = typeOf(item) == "tasklist";
        hasTask = hasTask || isTask;
        items.append({blocksOf(item)});
        tasks.append({isTask && cmark_gfm_extensions_get_tasklist_item_checked(item),
                      items.last().children});
    }
    if (hasTask)
        return {blocks::TaskList{isTight, tasks}};
    if (cmark_node_get_list_type(list) == CMARK_ORDERED_LIST)
        return {blocks::NumberedList{isTight, cmark_node_get_list_start(list), items}};
    return {blocks::BulletedList{isTight, items}};
}

BlockNode tableOf(cmark_node *table)
{
    blocks::Table value;
    const auto *codes = cmark_gfm_extensions_get_table_alignments(table);
    for (int i = 0; i < cmark_gfm_extensions_get_table_columns(table); ++i) {
        value.columnAlignments.append(codes[i] == 'l'   ? RawTableColumnAlignment::Left
                                      : codes[i] == 'c' ? RawTableColumnAlignment::Center
                                      : codes[i] == 'r' ? RawTableColumnAlignment::Right
                                                        : RawTableColumnAlignment::None);
    }
    for (cmark_node *row = cmark_node_first_child(table); row; row = cmark_node_next(row)) {
        value.rows.append(RawTableRow{});
        for (cmark_node *cell = cmark_node_first_child(row); cell; cell = cmark_node_next(cell))
            value.rows.last().cells.append({inlinesOf(cell)});
    }
    return {value};
}

QList<BlockNode> blocksOf(cmark_node *parent)
{
    QList<BlockNode> out;
    for (cmark_node *node = cmark_node_first_child(parent); node; node = cmark_node_next(node)) {
        const std::string_view type = typeOf(node);
        if (type == "block_quote")
            out.append({blocks::Blockquote{blocksOf(node)}});
        else if (type == "list")
            out.append(listOf(node));
        else if (type == "code_block")
            out.append({blocks::CodeBlock{literalOf(cmark_node_get_fence_info(node)),
                                          literalOf(cmark_node_get_literal(node))}});
        else if (type == "html_block")
            out.append({blocks::HtmlBlock{literalOf(cmark_node_get_literal(node))}});
        else if (type == "paragraph")
            out.append({blocks::Paragraph{inlinesOf(node)}});
        else if (type == "heading")
            out.append({blocks::Heading{cmark_node_get_heading_level(node), inlinesOf(node)}});
        else if (type == "table")
            out.append(tableOf(node));
        else if (type == "thematic_break")
            out.append({blocks::ThematicBreak{}});
    }
    return out;
}

struct Dumper
{
    QString out;
    int depth = 0;

    void line(const QString &text) { out += QString(depth * 2, QLatin1Char(' ')) + text + u'\n'; }

    void quoted(const char *name, const QString &text)
    {
        QString shown = text;
        shown.replace(u'\n', QStringLiteral("\\n"));
        line(QLatin1String(name) + QStringLiteral(" \"%1\"").arg(shown));
    }

    template<typename List>
    void nested(const QString &name, const List &list)
    {
        line(name);
        ++depth;
        for (const auto &node : list)
            dumpNode(node);
        --depth;
    }

    void dumpNode(const RawListItem &item) { nested(QStringLiteral("item"), item.children); }
    void dumpNode(const RawTaskListItem &item)
    {
        nested(QStringLiteral("task %1").arg(item.isCompleted), item.children);
    }
    void dumpNode(const RawTableRow &row) { nested(QStringLiteral("row"), row.cells); }
    void dumpNode(const RawTableCell &cell) { nested(QStringLiteral("cell"), cell.content); }
    void dumpNode(const BlockNode &node)
    {
        std::visit([this](const auto &kind) { dumpKind(kind); }, node.kind);
    }
    void dumpNode(const InlineNode &node)
    {
        std::visit([this](const auto &kind) { dumpKind(kind); }, node.kind);
    }

    void dumpKind(const blocks::Blockquote &node)
    {
        nested(QStringLiteral("quote"), node.children);
    }
    void dumpKind(const blocks::BulletedList &node)
    {
        nested(QStringLiteral("bullets tight=%1").arg(node.isTight), node.items);
    }
    void dumpKind(const blocks::NumberedList &node)
    {
        nested(QStringLiteral("numbers tight=%1 start=%2").arg(node.isTight).arg(node.start),
               node.items);
    }
    void dumpKind(const blocks::TaskList &node)
    {
        nested(QStringLiteral("tasks tight=%1").arg(node.isTight), node.items);
    }
    void dumpKind(const blocks::CodeBlock &node)
    {
        quoted("code block",
               node.fenceInfo.value_or(QStringLiteral("(none)")) + u'|' + node.content);
    }
    void dumpKind(const blocks::HtmlBlock &node) { quoted("html block", node.content); }
    void dumpKind(const blocks::Paragraph &node)
    {
        nested(QStringLiteral("paragraph"), node.content);
    }
    void dumpKind(const blocks::Heading &node)
    {
        nested(QStringLiteral("heading %1").arg(node.level), node.content);
    }
    void dumpKind(const blocks::Table &node)
    {
        nested(QStringLiteral("table %1").arg(node.columnAlignments.size()), node.rows);
    }
    void dumpKind(const blocks::ThematicBreak &) { line(QStringLiteral("thematic break")); }

    void dumpKind(const inlines::Text &node) { quoted("text", node.text); }
    void dumpKind(const inlines::Code &node) { quoted("code", node.text); }
    void dumpKind(const inlines::Html &node) { quoted("html", node.text); }
    void dumpKind(const inlines::Emphasis &node)
    {
        nested(QStringLiteral("emphasis"), node.children);
    }
    void dumpKind(const inlines::Strong &node) { nested(QStringLiteral("strong"), node.children); }
    void dumpKind(const inlines::Strikethrough &node)
    {
        nested(QStringLiteral("strikethrough"), node.children);
    }
    void dumpKind(const inlines::Link &node)
    {
        nested(QStringLiteral("link ") + node.destination, node.children);
    }
    void dumpKind(const inlines::Image &node)
    {
        nested(QStringLiteral("image ") + node.source, node.children);
    }
    void dumpKind(const inlines::SoftBreak &) { line(QStringLiteral("soft break")); }
    void dumpKind(const inlines::LineBreak &) { line(QStringLiteral("line break")); }
};

} // namespace

MarkdownContent plainParse(const QString &text)
{
    cmark_gfm_core_extensions_ensure_registered();
    cmark_parser *parser = cmark_parser_new(CMARK_OPT_DEFAULT);
    for (const char *name : {"autolink", "strikethrough", "tagfilter", "tasklist", "table"})
        cmark_parser_attach_syntax_extension(parser, cmark_find_syntax_extension(name));
    const QByteArray bytes = text.toUtf8();
    cmark_parser_feed(parser, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    cmark_node *document = cmark_parser_finish(parser);
    MarkdownContent content(blocksOf(document));
    cmark_node_free(document);
    // Finishing has cleared these for every parser of the process.
    cmark_manage_extensions_special_characters(parser, 1);
    cmark_parser_free(parser);
    return content;
}

QString dump(const QList<BlockNode> &blocks)
{
    Dumper dumper;
    for (const BlockNode &node : blocks)
        dumper.dumpNode(node);
    return dumper.out;
}

} // namespace velto::test
