// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

#include <cstddef>
#include <functional>
#include <variant>

namespace velto::markdown
{

struct InlineNode;

/// The cases of InlineNode.
namespace inlines
{

struct Text
{
    QString text;
    bool operator==(const Text &) const = default;
};

struct Code
{
    QString text;
    bool operator==(const Code &) const = default;
};

/// One tag, comment, declaration or the like, as it was written.
struct Html
{
    QString text;
    bool operator==(const Html &) const = default;
};

struct Emphasis
{
    QList<InlineNode> children;
};

struct Strong
{
    QList<InlineNode> children;
};

struct Strikethrough
{
    QList<InlineNode> children;
};

struct Link
{
    QString destination; ///< Escapes and entities resolved; not percent-encoded.
    QList<InlineNode> children;
};

struct Image
{
    QString source;             ///< As Link's destination.
    QList<InlineNode> children; ///< The alternative text.
};

/// A line end in the source that is no more than a space.
struct SoftBreak
{
    bool operator==(const SoftBreak &) const = default;
};

struct LineBreak
{
    bool operator==(const LineBreak &) const = default;
};

[[nodiscard]] bool operator==(const Emphasis &a, const Emphasis &b);
[[nodiscard]] bool operator==(const Strong &a, const Strong &b);
[[nodiscard]] bool operator==(const Strikethrough &a, const Strikethrough &b);
[[nodiscard]] bool operator==(const Link &a, const Link &b);
[[nodiscard]] bool operator==(const Image &a, const Image &b);

} // namespace inlines

struct InlineNode
{
    using Kind = std::variant<inlines::Text, inlines::Code, inlines::Html, inlines::Emphasis,
                              inlines::Strong, inlines::Strikethrough, inlines::Link,
                              inlines::Image, inlines::SoftBreak, inlines::LineBreak>;

    Kind kind;
};

[[nodiscard]] bool operator==(const InlineNode &a, const InlineNode &b);
[[nodiscard]] std::size_t qHash(const InlineNode &node, std::size_t seed = 0);

} // namespace velto::markdown

template<>
struct std::hash<velto::markdown::InlineNode>
{
    std::size_t operator()(const velto::markdown::InlineNode &node) const { return qHash(node); }
};
