// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/code/commentscanner.h"
#include "presentation/code/stringscanner.h"
#include "presentation/code/tokenrange.h"

namespace velto::presentation
{

/// Finds the tokens of a text that may grow at its end.
///
/// Each kind of token is looked for in the whole text, as if there were no others; where two meet,
/// comments win over strings, strings over numbers and keywords, and these over keys, and the loser
/// is dropped as a whole. Every scanner reads each part of the text a bounded number of times,
/// whatever is in it and in however many pieces it arrives, except for one run of word characters
/// or white space at the end, which is read again while it grows.
class TokenScanner final
{
public:
    explicit TokenScanner(const Language &language);

    /// Takes in what has been appended to `text` since the last call. Returns the position from
    /// which tokens may differ from before; the others are the same.
    qsizetype grow(QStringView text);
    [[nodiscard]] const TokenRanges &tokens() const { return m_tokens; }
    [[nodiscard]] TokenRanges takeTokens() { return std::move(m_tokens); }

private:
    void scanFrom(QStringView text, qsizetype position);

    const Language &m_language;
    CommentScanner m_comments;
    StringScanner m_strings;
    TokenRanges m_tokens;
    qsizetype m_settled = 0; // what is before it doesn't depend on what is appended
};

} // namespace velto::presentation
