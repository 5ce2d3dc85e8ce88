// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/textbox.h"

#include <memory>
#include <optional>

namespace velto::markdown
{

/// A block that is one inline text, with its look.
struct InlineBlock
{
    TextBox::Kind kind;
    BlockView view;
    QList<InlineNode> nodes;
};

/// Absent when the block is of another kind, pictures on their own included.
[[nodiscard]] std::optional<InlineBlock> inlineBlock(const BlockNode &block,
                                                     const Environment &environment);

/// The view of a block, by its kind.
[[nodiscard]] std::unique_ptr<Box> makeBox(BoxHost &host, const EnvironmentPointer &environment,
                                           const BlockNode &block);

/// What a style makes of a block.
[[nodiscard]] BlockView styledView(const Theme::Block &style, const BlockNode &block);
[[nodiscard]] BlockView styledView(const Theme::Block &style, const QList<BlockNode> &blocks);

/// Text without the line feed that it ends in, if it does.
[[nodiscard]] QString withoutFinalLineFeed(const QString &text);

} // namespace velto::markdown
