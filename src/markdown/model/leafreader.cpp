// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/leafreader.h"

#include "markdown/model/leafshape.h"
#include "markdown/model/treereading.h"

#include <cmark-gfm/inlines.h>
#include <cmark-gfm/syntax_extension.h>

namespace velto::markdown
{

namespace
{

constexpr qint64 allowance(qint64 bytes)
{
    return 500'000 + bytes * 3 / 10;
}

std::string_view contentOf(const cmark_node *leaf)
{
    std::string_view text(reinterpret_cast<const char *>(leaf->content.ptr),
                          static_cast<std::size_t>(leaf->content.size));
    while (!text.empty() && (text.back() == '\n' || text.back() == ' '))
        text.remove_suffix(1);
    return text;
}

bool isDeeperThan(int deepest, const cmark_node *leaf)
{
    int depth = 0;
    const cmark_node *node = leaf->first_child;
    while (node && depth <= deepest) {
        if (node->first_child) {
            node = node->first_child;
            ++depth;
            continue;
        }
        while (node != leaf && !node->next) {
            node = node->parent;
            --depth;
        }
        node = node == leaf ? nullptr : node->next;
    }
    return depth > deepest;
}

QList<InlineNode> plainText(std::string_view text)
{
    if (text.empty())
        return {};
    QString plain = treereading::textOf(text);
    plain.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return {{inlines::Text{plain}}};
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

/// ASCII letters and digits in lower case; odd when there are others, whose case is not so simple.
std::string keyOf(std::string_view label, bool &isOdd)
{
    std::string key;
    for (const char c : label) {
        if (isLetter(c))
            key += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
        else if (static_cast<unsigned char>(c) >= 0x80)
            isOdd = true;
    }
    return key;
}

} // namespace

void LabelSet::addLabelsIn(std::string_view text)
{
    std::size_t opener = std::string_view::npos;
    for (std::size_t at = text.find_first_of("[]"); at != std::string_view::npos;
         at = text.find_first_of("[]", at + 1)) {
        if (at > 0 && text[at - 1] == '\\') {
            m_hasOdd = true;
        } else if (text[at] == '[') {
            opener = at;
        } else if (opener != std::string_view::npos) {
            bool isOdd = false;
            std::string key = keyOf(text.substr(opener + 1, at - opener - 1), isOdd);
            m_hasOdd = m_hasOdd || isOdd;
            m_keys.insert(std::move(key));
            opener = std::string_view::npos;
        }
    }
}

bool LabelSet::mayContain(std::string_view label) const
{
    if (isEmpty())
        return false;
    bool isOdd = false;
    const std::string key = keyOf(label, isOdd);
    return isOdd || m_hasOdd || m_keys.contains(key);
}

void LabelSet::clear()
{
    m_keys.clear();
    m_hasOdd = false;
}

bool LeafReader::admits(std::string_view text)
{
    const LeafShape shape(text);
    m_bytes += static_cast<qint64>(text.size()) + 1;
    const qint64 cost = 10 + shape.characters + static_cast<qint64>(text.size()) / 64 +
                        shape.brackets * shape.delimiters / 16 + shape.labels / 16 +
                        shape.openEnded / 64 + shape.brackets * m_longestTarget / 128 +
                        shape.runs * shape.runs / 256 + shape.addresses / 32;
    // A leaf that is not admitted costs little, and the next may be cheap.
    if (m_work + cost > allowance(m_bytes))
        return false;
    m_work += cost;
    return true;
}

QList<InlineNode> LeafReader::read(cmark_parser *parser, cmark_node *leaf)
{
    const std::string_view text = contentOf(leaf);
    if (m_labels)
        m_labels->addLabelsIn(text);
    if (!admits(text))
        return plainText(text);
    cmark_parse_inlines(parser, leaf, parser->refmap, CMARK_OPT_DEFAULT);
    auto texts = treereading::Texts::Joined;
    cmark_syntax_extension *autolink = Parser::autolink();
    if (autolink && text.find('@') != std::string_view::npos) {
        // Joins texts itself, and then parts them at addresses.
        autolink->postprocess_func(autolink, parser, leaf);
        texts = treereading::Texts::AsTheyAre;
    }
    QList<InlineNode> nodes =
        isDeeperThan(deepest, leaf) ? plainText(text) : treereading::inlinesOf(leaf, texts);
    while (cmark_node *child = leaf->first_child)
        cmark_node_free(child);
    return nodes;
}

} // namespace velto::markdown
