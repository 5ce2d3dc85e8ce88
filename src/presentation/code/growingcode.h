// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/code/tokenscanner.h"

#include <QString>

#include <optional>

namespace velto::presentation
{

/// Code that arrives in pieces, with the tokens of what has arrived: after each piece the same as
/// `SyntaxHighlighter::tokenRanges` of the whole, at about the cost of the piece.
class GrowingCode final
{
public:
    /// `language` as for `SyntaxHighlighter::tokenRanges`.
    explicit GrowingCode(QStringView language);

    /// Returns the position from which tokens may differ from before.
    qsizetype append(QStringView piece);

    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] const TokenRanges &tokens() const;

private:
    QString m_text;
    std::optional<TokenScanner> m_scanner;
};

} // namespace velto::presentation
