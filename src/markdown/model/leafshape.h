// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <string_view>
#include <vector>

namespace velto::markdown
{

/// What makes the inlines of one leaf expensive, counted without looking anything up. Upper bounds:
/// where the parser stops early, the count goes on.
struct LeafShape final
{
    explicit LeafShape(std::string_view text);

    qint64 characters = 0; ///< Their costs, in tenths of a microsecond.
    qint64 delimiters = 0; ///< That may stay on the parser's stack: emphasis and images.
    qint64 brackets = 0;   ///< Closing ones.
    qint64 labels = 0;     ///< Bytes that are compared with labels.
    qint64 runs = 0;       ///< Of delimiters; each may be compared with all before it.
    qint64 openEnded = 0;  ///< Bytes behind a construct that never ends, for each of them.
    qint64 addresses = 0;  ///< Bytes that are read in search of the end of an address.

private:
    void countDelimiter(std::string_view text, std::size_t at);
    void countBracket(std::string_view text, std::size_t at);
    void countOpenEnded(std::string_view text);
    void countAddresses(std::string_view text);
    void countMailAddresses(std::string_view text);

    std::vector<qint64> m_openers;
    std::size_t m_runStart = 0;
};

} // namespace velto::markdown
