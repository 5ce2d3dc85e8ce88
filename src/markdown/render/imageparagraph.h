// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/inlinenode.h"

#include <QRectF>
#include <QSizeF>

#include <optional>
#include <variant>

namespace velto::markdown
{

/// A picture as the text has it.
struct RawImageData
{
    QString source;
    QString alt;
    std::optional<QString> destination; ///< Of the link around it.

    /// The picture that is all of these nodes, with or without a link around it.
    [[nodiscard]] static std::optional<RawImageData> only(const QList<InlineNode> &nodes);

    bool operator==(const RawImageData &) const = default;
};

/// Pictures in a row, with nothing between them but breaks.
struct ImageFlow
{
    struct LineBreak
    {
        bool operator==(const LineBreak &) const = default;
    };
    struct Item
    {
        qsizetype index = 0;
        std::variant<RawImageData, LineBreak> content;
        bool operator==(const Item &) const = default;
    };

    QList<Item> items;

    /// Absent when the nodes hold anything else, or no picture.
    [[nodiscard]] static std::optional<ImageFlow> of(const QList<InlineNode> &nodes);

    bool operator==(const ImageFlow &) const = default;
};

/// Places boxes from the leading side on, in rows as wide as there is room.
struct FlowLayout
{
    struct Placed
    {
        QList<QRectF> rectangles; ///< One for each size; empty for a break.
        QSizeF size;
    };

    qreal horizontalSpacing = 0;
    qreal verticalSpacing = 0;

    /// An absent size is a break, after which a new row begins. Boxes are centred in their row.
    [[nodiscard]] Placed place(const QList<std::optional<QSizeF>> &sizes, qreal width) const;
};

} // namespace velto::markdown
