// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/imagerule.h"

#include <QUrl>

#include <type_traits>

namespace velto::markdown
{

namespace
{

bool hasHidden(const QList<InlineNode> &nodes, ColorScheme scheme);

bool isOrHasHidden(const InlineNode &node, ColorScheme scheme)
{
    return std::visit(
        [&](const auto &kind) {
            using Kind = std::decay_t<decltype(kind)>;
            if constexpr (std::is_same_v<Kind, inlines::Image>)
                return !isShownIn(scheme, kind.source) || hasHidden(kind.children, scheme);
            else if constexpr (requires { kind.children; })
                return hasHidden(kind.children, scheme);
            else
                return false;
        },
        node.kind);
}

bool hasHidden(const QList<InlineNode> &nodes, ColorScheme scheme)
{
    return std::any_of(nodes.cbegin(), nodes.cend(),
                       [&](const InlineNode &node) { return isOrHasHidden(node, scheme); });
}

QList<InlineNode> shown(const QList<InlineNode> &nodes, ColorScheme scheme)
{
    if (!hasHidden(nodes, scheme))
        return nodes;
    QList<InlineNode> result;
    for (InlineNode node : nodes) {
        const auto *image = std::get_if<inlines::Image>(&node.kind);
        if (image != nullptr && !isShownIn(scheme, image->source))
            continue;
        std::visit(
            [&](auto &kind) {
                if constexpr (requires { kind.children; })
                    kind.children = shown(kind.children, scheme);
            },
            node.kind);
        // A link around nothing is nothing.
        const auto *link = std::get_if<inlines::Link>(&node.kind);
        if (link == nullptr || !link->children.isEmpty())
            result.append(node);
    }
    return result;
}

bool hasHidden(const BlockNode &block, ColorScheme scheme);

bool hasHidden(const QList<BlockNode> &blocks, ColorScheme scheme)
{
    return std::any_of(blocks.cbegin(), blocks.cend(),
                       [&](const BlockNode &block) { return hasHidden(block, scheme); });
}

bool hasHidden(const BlockNode &block, ColorScheme scheme)
{
    return std::visit(
        [&](const auto &kind) {
            using Kind = std::decay_t<decltype(kind)>;
            if constexpr (std::is_same_v<Kind, blocks::Paragraph> ||
                          std::is_same_v<Kind, blocks::Heading>) {
                return hasHidden(kind.content, scheme);
            } else if constexpr (std::is_same_v<Kind, blocks::Table>) {
                for (const RawTableRow &row : kind.rows) {
                    for (const RawTableCell &cell : row.cells) {
                        if (hasHidden(cell.content, scheme))
                            return true;
                    }
                }
                return false;
            } else if constexpr (requires { kind.items; }) {
                return std::any_of(kind.items.cbegin(), kind.items.cend(), [&](const auto &item) {
                    return hasHidden(item.children, scheme);
                });
            } else if constexpr (requires { kind.children; }) {
                return hasHidden(kind.children, scheme);
            } else {
                return false;
            }
        },
        block.kind);
}

template<typename Kind>
void removeHidden(Kind &kind, ColorScheme scheme)
{
    if constexpr (std::is_same_v<Kind, blocks::Paragraph> ||
                  std::is_same_v<Kind, blocks::Heading>) {
        kind.content = shown(kind.content, scheme);
    } else if constexpr (std::is_same_v<Kind, blocks::Table>) {
        for (RawTableRow &row : kind.rows) {
            for (RawTableCell &cell : row.cells)
                cell.content = shown(cell.content, scheme);
        }
    } else if constexpr (requires { kind.items; }) {
        for (auto &item : kind.items)
            item.children = filtered(item.children, scheme);
    } else if constexpr (requires { kind.children; }) {
        kind.children = filtered(kind.children, scheme);
    }
}

} // namespace

bool isShownIn(ColorScheme scheme, const QString &imageSource)
{
    if (!imageSource.contains(QLatin1Char('#')))
        return true;
    const QString fragment = QUrl(imageSource).fragment().toLower();
    return fragment != (scheme == ColorScheme::Light ? QLatin1String("gh-dark-mode-only")
                                                     : QLatin1String("gh-light-mode-only"));
}

BlockNode filtered(const BlockNode &block, ColorScheme scheme)
{
    if (!hasHidden(block, scheme))
        return block;
    BlockNode result = block;
    std::visit([&](auto &kind) { removeHidden(kind, scheme); }, result.kind);
    return result;
}

QList<BlockNode> filtered(QList<BlockNode> blocks, ColorScheme scheme)
{
    if (!hasHidden(blocks, scheme))
        return blocks;
    for (BlockNode &block : blocks)
        block = filtered(block, scheme);
    return blocks;
}

} // namespace velto::markdown
