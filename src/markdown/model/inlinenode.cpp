// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/inlinenode.h"

#include <QHash>

#include <type_traits>

namespace velto::markdown
{

namespace
{

std::size_t hashOf(const inlines::Text &node, std::size_t seed)
{
    return qHash(node.text, seed);
}
std::size_t hashOf(const inlines::Code &node, std::size_t seed)
{
    return qHash(node.text, seed);
}
std::size_t hashOf(const inlines::Html &node, std::size_t seed)
{
    return qHash(node.text, seed);
}
std::size_t hashOf(const inlines::SoftBreak &, std::size_t seed)
{
    return seed;
}
std::size_t hashOf(const inlines::LineBreak &, std::size_t seed)
{
    return seed;
}

std::size_t hashOf(const inlines::Link &node, std::size_t seed)
{
    return qHashMulti(seed, node.destination, node.children);
}

std::size_t hashOf(const inlines::Image &node, std::size_t seed)
{
    return qHashMulti(seed, node.source, node.children);
}

template<typename Span>
std::size_t hashOf(const Span &span, std::size_t seed)
{
    return qHash(span.children, seed);
}

} // namespace

namespace inlines
{

bool operator==(const Emphasis &a, const Emphasis &b)
{
    return a.children == b.children;
}
bool operator==(const Strong &a, const Strong &b)
{
    return a.children == b.children;
}
bool operator==(const Strikethrough &a, const Strikethrough &b)
{
    return a.children == b.children;
}

bool operator==(const Link &a, const Link &b)
{
    return a.destination == b.destination && a.children == b.children;
}

bool operator==(const Image &a, const Image &b)
{
    return a.source == b.source && a.children == b.children;
}

} // namespace inlines

bool operator==(const InlineNode &a, const InlineNode &b)
{
    return a.kind == b.kind;
}

std::size_t qHash(const InlineNode &node, std::size_t seed)
{
    const std::size_t mixed = qHashMulti(seed, node.kind.index());
    return std::visit([mixed](const auto &kind) { return hashOf(kind, mixed); }, node.kind);
}

} // namespace velto::markdown
