// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/codesyntaxhighlighter.h"
#include "markdown/theme/theme.h"

#include <memory>

namespace velto::presentation
{

/// How the Markdown of a reply looks.
[[nodiscard]] const markdown::Theme &chatTheme();

/// How a block of code looks that stands on its own: the payload of a tool call.
[[nodiscard]] const markdown::Theme &toolPayloadTheme();
/// The same for what went wrong.
[[nodiscard]] const markdown::Theme &toolErrorTheme();

/// Colours the code of replies.
[[nodiscard]] std::shared_ptr<const markdown::CodeSyntaxHighlighter> chatHighlighter();

} // namespace velto::presentation
