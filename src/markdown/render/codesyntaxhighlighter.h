// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/attributedstring.h"

#include <optional>

namespace velto::markdown
{

/// Gives the text of a code block its colours.
class CodeSyntaxHighlighter
{
public:
    virtual ~CodeSyntaxHighlighter() = default;
    /// All of `code`, in attributes that start from `attributes`.
    [[nodiscard]] virtual AttributedString
    highlightCode(const QString &code, const std::optional<QString> &language,
                  const TextAttributes &attributes) const = 0;
};

/// Leaves code as it is.
class PlainTextCodeSyntaxHighlighter final : public CodeSyntaxHighlighter
{
public:
    [[nodiscard]] AttributedString highlightCode(const QString &code,
                                                 const std::optional<QString> &,
                                                 const TextAttributes &attributes) const override
    {
        AttributedString text;
        text.append(code, attributes);
        return text;
    }
};

} // namespace velto::markdown
