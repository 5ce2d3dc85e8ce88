// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/code/tokenscanner.h"

#include "presentation/code/keyreader.h"
#include "presentation/code/wordscanner.h"

namespace velto::presentation
{
namespace
{

qsizetype startOf(const TokenRange &token)
{
    return token.range.start;
}

/// The next string at or after `string` that no comment touches. `comment` moves along with it.
TextRanges::const_iterator nextShown(TextRanges::const_iterator string,
                                     TextRanges::const_iterator &comment, const TextRanges &strings,
                                     const TextRanges &comments)
{
    for (; string != strings.end(); ++string) {
        while (comment != comments.end() && comment->end <= string->start)
            ++comment;
        if (comment == comments.end() || comment->start >= string->end)
            break;
    }
    return string;
}

} // namespace

TokenScanner::TokenScanner(const Language &language)
    : m_language(language)
    , m_comments(language)
{}

qsizetype TokenScanner::grow(QStringView text)
{
    qsizetype from = std::min(m_settled, m_comments.grow(text));
    from = std::min(from, m_strings.grow(text));
    // A comment that has come or gone decides about the string that it touches.
    from = startAround(m_strings.ranges(), from);
    scanFrom(text, from);
    return from;
}

void TokenScanner::scanFrom(QStringView text, qsizetype position)
{
    // A key is found from the start of its line.
    while (m_language.hasKeys && position > 0 && isKeyIndent(text.utf16()[position - 1]))
        --position;
    if (m_tokens.empty())
        m_tokens.reserve(text.size() / 8);
    m_tokens.erase(std::ranges::lower_bound(m_tokens, position, {}, startOf), m_tokens.end());
    const TextRanges &comments = m_comments.ranges();
    const TextRanges &strings = m_strings.ranges();
    qsizetype at = m_tokens.empty() ? position : std::max(position, m_tokens.back().range.end);
    auto comment = firstStartingAt(comments, at);
    auto near = firstEndingAfter(comments, at);
    auto string = nextShown(firstStartingAt(strings, at), near, strings, comments);
    while (comment != comments.end() || string != strings.end()) {
        const bool isComment = string == strings.end() ||
                               (comment != comments.end() && comment->start < string->start);
        const TextRange range = isComment ? *comment : *string;
        scanWords(text, {at, range.start}, m_language, m_tokens);
        m_tokens.push_back({range, isComment ? TokenColor::Comment : TokenColor::String});
        at = range.end;
        if (isComment)
            ++comment;
        else
            string = nextShown(string + 1, near, strings, comments);
    }
    const qsizetype undecided = scanWords(text, {at, text.size()}, m_language, m_tokens);
    m_settled = std::min(undecided, unsettledWordStart(text, at));
}

} // namespace velto::presentation
