// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/parser.h"

#include <QtGlobal>

#include <string>
#include <string_view>

namespace velto::markdown
{

/// Feeds lines to a parser so that no text makes it work without measure. What it decides depends
/// on the lines so far and nothing else, so that a growing text is read as the finished one.
///
/// - A line opens no block that would be more than `deepest` blocks deep: the marker that would is
///   escaped.
/// - A delimiter row makes no table of more than `widest` columns, nor does one below a line of
/// more
///   than `mostPipes` pipes or the ninth one that failed in its paragraph: it is escaped. A row of
///   more than `mostPipes` pipes ends its table.
/// - All lines together cost at most what `allowance` says; the line that would go beyond is not
/// fed.
class LineGuard final
{
public:
    static constexpr int deepest = 64;
    static constexpr int widest = 128;
    static constexpr int mostPipes = 256;
    static constexpr int mostHeaderTries = 8;

    /// False when the line was not fed, and no later one will be. `line` comes without its end.
    [[nodiscard]] bool feed(Parser &parser, std::string_view line);
    [[nodiscard]] bool isExhausted() const { return m_isExhausted; }

private:
    void feedTableRow(Parser &parser, const cmark_node *table, std::string_view line);
    bool refusesHeader(const cmark_node *paragraph, std::string_view line, std::size_t start);
    bool spend(qint64 units);

    qint64 m_bytes = 0;
    qint64 m_work = 0;          // in tenths of a microsecond, roughly
    int m_headerParagraph = -1; // its first line
    int m_headerTries = 0;
    bool m_isExhausted = false;
    std::string m_line;
};

} // namespace velto::markdown
