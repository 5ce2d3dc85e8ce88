// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/imageparagraph.h"

#include "markdown/render/inlinerenderer.h"

#include <algorithm>

namespace velto::markdown
{

namespace
{

std::optional<RawImageData> imageOf(const InlineNode &node)
{
    if (const auto *image = std::get_if<inlines::Image>(&node.kind))
        return RawImageData{image->source, plainText(image->children), std::nullopt};
    const auto *link = std::get_if<inlines::Link>(&node.kind);
    if (link == nullptr || link->children.size() != 1)
        return std::nullopt;
    const auto *image = std::get_if<inlines::Image>(&link->children.constFirst().kind);
    if (image == nullptr)
        return std::nullopt;
    return RawImageData{image->source, plainText(image->children), link->destination};
}

} // namespace

std::optional<RawImageData> RawImageData::only(const QList<InlineNode> &nodes)
{
    return nodes.size() == 1 ? imageOf(nodes.constFirst()) : std::nullopt;
}

std::optional<ImageFlow> ImageFlow::of(const QList<InlineNode> &nodes)
{
    ImageFlow flow;
    bool hasImage = false;
    for (const InlineNode &node : nodes) {
        // The blanks before a break leave an empty text.
        if (node == InlineNode{inlines::Text{}} ||
            std::holds_alternative<inlines::SoftBreak>(node.kind))
            continue;
        const auto image = imageOf(node);
        if (image)
            flow.items.append({flow.items.size(), *image});
        else if (std::holds_alternative<inlines::LineBreak>(node.kind))
            flow.items.append({flow.items.size(), LineBreak{}});
        else
            return std::nullopt;
        hasImage = hasImage || image;
    }
    return hasImage ? std::optional(flow) : std::nullopt;
}

FlowLayout::Placed FlowLayout::place(const QList<std::optional<QSizeF>> &sizes, qreal width) const
{
    Placed placed;
    qreal x = 0;
    qreal y = 0;
    qreal rowHeight = 0;
    qsizetype rowStart = 0;
    const auto endRow = [&] {
        for (qsizetype at = rowStart; at < placed.rectangles.size(); ++at) {
            QRectF &box = placed.rectangles[at];
            box.moveTop(y + (rowHeight - box.height()) / 2);
        }
        rowStart = placed.rectangles.size();
        y += rowHeight + verticalSpacing;
        x = 0;
        rowHeight = 0;
    };
    for (const std::optional<QSizeF> &size : sizes) {
        if (!size) {
            endRow();
            placed.rectangles.append(QRectF());
            rowStart = placed.rectangles.size();
            continue;
        }
        if (x > 0 && x + size->width() > width)
            endRow();
        placed.rectangles.append(QRectF(QPointF(x, y), *size));
        x += size->width() + horizontalSpacing;
        rowHeight = std::max(rowHeight, size->height());
        placed.size.setWidth(std::max(placed.size.width(), x - horizontalSpacing));
    }
    endRow();
    placed.size.setHeight(std::max(0.0, y - verticalSpacing));
    return placed;
}

} // namespace velto::markdown
