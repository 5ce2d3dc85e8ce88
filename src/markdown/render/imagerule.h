// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/markdowncontent.h"

namespace velto::markdown
{

enum class ColorScheme { Light, Dark };

/// Whether a picture is meant for that scheme: the fragment of its URL can reserve it for one.
[[nodiscard]] bool isShownIn(ColorScheme scheme, const QString &imageSource);

/// The block without the pictures that are meant for the other scheme. Shares what stays as it is.
[[nodiscard]] BlockNode filtered(const BlockNode &block, ColorScheme scheme);
[[nodiscard]] QList<BlockNode> filtered(QList<BlockNode> blocks, ColorScheme scheme);

} // namespace velto::markdown
