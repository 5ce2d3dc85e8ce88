// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/markdowncontent.h"

#include "markdown/model/document.h"
#include "markdown/model/treewriting.h"

#include <QHash>

#include <cmark-gfm.h>

#include <cstdlib>
#include <memory>

namespace velto::markdown
{

namespace
{

QString rendered(const QList<BlockNode> &blocks, char *(*render)(cmark_node *))
{
    cmark_node *document = documentOf(blocks);
    const std::unique_ptr<char, decltype(&std::free)> text(render(document), std::free);
    cmark_node_free(document);
    return QString::fromUtf8(text.get());
}

} // namespace

MarkdownContent::MarkdownContent(QStringView text)
{
    const QByteArray bytes = text.toUtf8();
    blocks = blocksOfText({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

MarkdownContent::MarkdownContent(QList<BlockNode> nodes)
    : blocks(std::move(nodes))
{}

QString MarkdownContent::renderMarkdown() const
{
    return rendered(blocks, [](cmark_node *document) {
        return cmark_render_commonmark(document, CMARK_OPT_DEFAULT, 0);
    });
}

QString MarkdownContent::renderPlainText() const
{
    return rendered(blocks, [](cmark_node *document) {
        return cmark_render_plaintext(document, CMARK_OPT_DEFAULT, 0);
    });
}

QString MarkdownContent::renderHTML() const
{
    return rendered(blocks, [](cmark_node *document) {
        return cmark_render_html(document, CMARK_OPT_DEFAULT, nullptr);
    });
}

std::size_t qHash(const MarkdownContent &content, std::size_t seed)
{
    return qHash(content.blocks, seed);
}

} // namespace velto::markdown
