// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/code/syntaxhighlighter.h"

#include "presentation/code/tokenscanner.h"

namespace velto::presentation
{

Rgb rgb(TokenColor color)
{
    switch (color) {
    case TokenColor::Comment:
        return {0.55, 0.60, 0.66};
    case TokenColor::String:
        return {0.83, 0.40, 0.36};
    case TokenColor::Number:
        return {0.40, 0.55, 0.85};
    case TokenColor::Keyword:
        return {0.66, 0.41, 0.78};
    case TokenColor::Key:
        return {0.36, 0.61, 0.78};
    }
    Q_UNREACHABLE();
}

TokenRanges SyntaxHighlighter::tokenRanges(QStringView text, QStringView language)
{
    const Language *family = languageNamed(language);
    if (family == nullptr)
        return {};
    TokenScanner scanner(*family);
    scanner.grow(text);
    return scanner.takeTokens();
}

HighlightedCode SyntaxHighlighter::highlightedCode(const QString &text,
                                                   const std::optional<QString> &language)
{
    HighlightedCode code{text, {}, {}};
    if (language)
        code.tokens = tokenRanges(text, *language);
    return code;
}

} // namespace velto::presentation
