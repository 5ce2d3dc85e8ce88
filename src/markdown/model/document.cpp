// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/document.h"

#include "markdown/model/definitions.h"
#include "markdown/model/lineguard.h"
#include "markdown/model/treereading.h"

#include <algorithm>

namespace velto::markdown
{

std::string_view takeLine(std::string_view &rest)
{
    // One pass: a search for either end alone would go through all of the rest for each line of a
    // text that has only the other.
    const auto end = std::ranges::find_if(rest, [](char c) { return c == '\n' || c == '\r'; });
    const auto length = static_cast<std::size_t>(end - rest.begin());
    const std::string_view line = rest.substr(0, length);
    std::size_t next = length;
    if (next < rest.size())
        next += rest.substr(next).starts_with("\r\n") ? 2 : 1;
    rest.remove_prefix(next);
    return line;
}

QList<BlockNode> blocksOfText(std::string_view utf8)
{
    Parser parser;
    LineGuard guard;
    std::string_view rest = utf8;
    std::string_view unread;
    while (!rest.empty()) {
        const std::string_view here = rest;
        if (!guard.feed(parser, takeLine(rest))) {
            unread = here;
            break;
        }
    }
    parser.closeAll();
    LeafReader leaves;
    leaves.setLongestTarget(longestTarget(parser.get()->refmap->refs, nullptr));
    QList<BlockNode> blocks = treereading::blocksOf({parser.get(), leaves}, parser.root());
    if (!unread.empty())
        blocks.append(unreadBlock(unreadText(unread)));
    return blocks;
}

BlockNode unreadBlock(const QString &lines)
{
    return {blocks::CodeBlock{QString(), lines}};
}

QString unreadText(std::string_view utf8)
{
    std::string text;
    text.reserve(utf8.size() + 1);
    while (!utf8.empty()) {
        text += takeLine(utf8);
        text += '\n';
    }
    QString lines = treereading::textOf(text);
    lines.replace(QChar(QChar::Null), QChar(QChar::ReplacementCharacter));
    return lines;
}

} // namespace velto::markdown
