// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/code/stringscanner.h"

#include "presentation/code/characterclass.h"
#include "presentation/code/unitsearch.h"

namespace velto::presentation
{
namespace
{

enum class Ending : quint8 { Closed, Broken, Missing };

struct Search
{
    Ending ending;
    qsizetype at; // the closing quote, the backslash that breaks, or where to go on
};

Search findEnd(QStringView text, char16_t quote, qsizetype at)
{
    const char16_t *units = text.utf16();
    const auto stops = [quote](auto unit) { return (unit == quote) | (unit == u'\\'); };
    for (;;) {
        at = findUnit(text, at, text.size(), stops);
        if (at == text.size())
            return {Ending::Missing, at};
        if (units[at] == quote)
            return {Ending::Closed, at};
        if (at + 1 == text.size())
            return {Ending::Missing, at};
        if (isLineTerminator(units[at + 1]))
            return {Ending::Broken, at};
        at += 2;
    }
}

constexpr auto isQuote = [](auto unit) {
    return (unit == u'"') | (unit == u'\'') | (unit == u'`');
};

} // namespace

qsizetype StringScanner::grow(QStringView text)
{
    if (m_ranges.empty())
        m_ranges.reserve(text.size() / 16);
    const qsizetype changedFrom = closeWaiting(text);
    const auto known = static_cast<qsizetype>(m_ranges.size());
    for (;;) {
        m_at = findUnit(text, m_at, text.size(), isQuote);
        if (m_at == text.size())
            break;
        const char16_t unit = text.utf16()[m_at];
        Quote &quote = m_quotes[unit == u'"' ? 0 : unit == u'\'' ? 1 : 2];
        if (m_at < quote.unclosedUpTo)
            ++m_at;
        else
            open(text, quote);
    }
    const bool hasGrown = static_cast<qsizetype>(m_ranges.size()) > known;
    return hasGrown ? std::min(changedFrom, m_ranges[known].start) : changedFrom;
}

/// The first waiting quote whose end has arrived takes all text up to there, with whatever was
/// found in it while it looked unclosed.
qsizetype StringScanner::closeWaiting(QStringView text)
{
    std::array<Quote *, 3> order{&m_quotes[0], &m_quotes[1], &m_quotes[2]};
    std::ranges::sort(order, {}, &Quote::waiting);
    for (Quote *quote : order) {
        if (quote->waiting < 0)
            continue;
        const Search search = findEnd(text, quote->character, quote->searched);
        const qsizetype start = quote->waiting;
        quote->searched = search.at;
        quote->unclosedUpTo = search.ending == Ending::Missing ? text.size() : search.at;
        if (search.ending != Ending::Missing)
            quote->waiting = -1;
        if (search.ending != Ending::Closed)
            continue;
        m_ranges.erase(firstStartingAt(m_ranges, start), m_ranges.cend());
        m_ranges.push_back({start, search.at + 1});
        m_at = search.at + 1;
        for (Quote &other : m_quotes) {
            if (other.waiting > start)
                other = {other.character};
        }
        return start;
    }
    return text.size();
}

void StringScanner::open(QStringView text, Quote &quote)
{
    const Search search = findEnd(text, quote.character, m_at + 1);
    switch (search.ending) {
    case Ending::Closed:
        m_ranges.push_back({m_at, search.at + 1});
        m_at = search.at;
        break;
    case Ending::Broken:
        quote.unclosedUpTo = search.at;
        break;
    case Ending::Missing:
        quote.waiting = m_at;
        quote.searched = search.at;
        quote.unclosedUpTo = text.size();
        break;
    }
    ++m_at;
}

} // namespace velto::presentation
