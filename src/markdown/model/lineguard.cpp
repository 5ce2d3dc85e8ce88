// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/lineguard.h"

#include <cmark-gfm-core-extensions.h>

#include <algorithm>
#include <cstring>

namespace velto::markdown
{

namespace
{

constexpr std::string_view replacement = "\xef\xbf\xbd";
// As many as some five milliseconds take.
constexpr qint64 mostHeaderSteps = 10'000'000;

constexpr qint64 allowance(qint64 bytes)
{
    return 500'000 + bytes * 3 / 10;
}

void appendWithoutZeros(std::string &out, std::string_view line)
{
    std::size_t zero = line.find('\0');
    while (zero != std::string_view::npos) {
        out += line.substr(0, zero);
        out += replacement;
        line.remove_prefix(zero + 1);
        zero = line.find('\0');
    }
    out += line;
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}
bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Block markers at the start of a line.
struct Markers
{
    int count = 0;
    std::size_t end = 0;    ///< Where the line goes on behind them and the blanks.
    std::size_t escape = 0; ///< What to escape in the last one looked at.
};

std::size_t behindBlanks(std::string_view line, std::size_t at)
{
    while (at < line.size() && isBlank(line[at]))
        ++at;
    return at;
}

/// The position behind the marker at `at`, or `at` when there is none.
std::size_t behindMarker(std::string_view line, std::size_t at, std::size_t &escape)
{
    escape = at;
    if (line[at] == '>')
        return at + 1;
    std::size_t last = at;
    if (isDigit(line[at])) {
        while (last < line.size() && isDigit(line[last]))
            ++last;
        if (last - at > 9 || last == line.size() || (line[last] != '.' && line[last] != ')'))
            return at;
    } else if (line[at] != '-' && line[at] != '+' && line[at] != '*') {
        return at;
    }
    escape = last;
    const bool isAlone = last + 1 == line.size() || isBlank(line[last + 1]);
    return isAlone ? last + 1 : at;
}

Markers markersOf(std::string_view line, int most)
{
    Markers markers;
    markers.end = behindBlanks(line, 0);
    while (markers.end < line.size() && markers.count <= most) {
        const std::size_t next = behindMarker(line, markers.end, markers.escape);
        if (next == markers.end)
            break;
        ++markers.count;
        markers.end = behindBlanks(line, next);
    }
    return markers;
}

/// A line of one character and blanks is a thematic break or underline, however many markers it
/// seems to hold.
bool isRule(std::string_view line)
{
    const std::size_t start = behindBlanks(line, 0);
    const char c = start < line.size() ? line[start] : ' ';
    if (c != '-' && c != '*')
        return false;
    if (std::ranges::count(line, c) < 3)
        return false;
    return std::ranges::all_of(line, [c](char other) { return other == c || isBlank(other); });
}

int depthOf(const cmark_node *node)
{
    int depth = 0;
    for (; node->parent; node = node->parent)
        ++depth;
    return depth;
}

/// The open table that the next line may go on with.
const cmark_node *openTable(const cmark_node *current)
{
    if (current->type == CMARK_NODE_TABLE_CELL)
        current = current->parent;
    if (current->type == CMARK_NODE_TABLE_ROW)
        current = current->parent;
    return current->type == CMARK_NODE_TABLE ? current : nullptr;
}

bool isOpenText(const cmark_node *node)
{
    return node->type == CMARK_NODE_CODE_BLOCK || node->type == CMARK_NODE_HTML_BLOCK;
}

std::size_t behindQuotes(std::string_view line)
{
    const std::size_t start = line.find_first_not_of(" \t>");
    return start == std::string_view::npos ? line.size() : start;
}

bool looksLikeDelimiterRow(std::string_view row)
{
    return row.find_first_not_of("|:- \t") == std::string_view::npos &&
           row.find('-') != std::string_view::npos &&
           row.find_first_of("|:") != std::string_view::npos;
}

/// What the lines of a paragraph above a delimiter row mean for the search for a header.
struct LinesAbove
{
    qsizetype mostPipes = 0; ///< In one line.
    qint64 steps = 0;        ///< From each line start back to the pipe before it.
};

LinesAbove linesAbove(std::string_view text)
{
    LinesAbove lines;
    qsizetype pipes = 0;
    std::size_t lastPipe = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '|') {
            lines.mostPipes = std::max(lines.mostPipes, ++pipes);
            lastPipe = at;
        } else if (text[at] == '\n') {
            lines.steps += static_cast<qint64>(at - lastPipe);
            pipes = 0;
        }
    }
    return lines;
}

} // namespace

bool LineGuard::spend(qint64 units)
{
    m_work += units;
    m_isExhausted = m_work > allowance(m_bytes);
    return !m_isExhausted;
}

bool LineGuard::refusesHeader(const cmark_node *paragraph, std::string_view line, std::size_t start)
{
    if (paragraph->start_line != m_headerParagraph) {
        m_headerParagraph = paragraph->start_line;
        m_headerTries = 0;
    }
    if (++m_headerTries > mostHeaderTries)
        return true;
    const std::string_view above(reinterpret_cast<const char *>(paragraph->content.ptr),
                                 static_cast<std::size_t>(paragraph->content.size));
    const LinesAbove lines = linesAbove(above);
    m_work += static_cast<qint64>(above.size()) / 32;
    if (lines.mostPipes > mostPipes || lines.steps > mostHeaderSteps ||
        std::ranges::count(line.substr(start), '|') >= widest)
        return true;
    m_work += lines.steps / 128;
    return false;
}

void LineGuard::feedTableRow(Parser &parser, const cmark_node *table, std::string_view line)
{
    const auto pipes = std::ranges::count(line, '|');
    if (pipes > mostPipes) {
        parser.feed("\n");
        return;
    }
    const qint64 columns = cmark_gfm_extensions_get_table_columns(const_cast<cmark_node *>(table));
    m_work += 10 + columns * (5 + columns / 16) + pipes * pipes / 32;
}

bool LineGuard::feed(Parser &parser, std::string_view line)
{
    if (m_isExhausted)
        return false;
    m_bytes += static_cast<qint64>(line.size()) + 1;
    const cmark_node *current = parser.get()->current;
    m_line.clear();
    appendWithoutZeros(m_line, line);
    m_line += '\n';
    if (isOpenText(current) && current->parent == parser.root()) {
        if (!spend(1))
            return false;
        parser.feed(m_line);
        return true;
    }
    const int depth = depthOf(current);
    const int most = std::max(0, deepest - depth);
    const bool isBreak = isRule(line);
    const Markers markers = isBreak ? Markers{} : markersOf(line, most);
    const bool isHeading = markers.end < line.size() && line[markers.end] == '#';
    if (!spend(3 + 7 * (markers.count + (isHeading ? 1 : 0)) + (isBreak ? 4 : 0) + depth / 4))
        return false;
    const std::size_t start = behindQuotes(line);
    if (markers.count > most) {
        m_line.insert(markers.escape, 1, '\\');
    } else if (current->type == CMARK_NODE_PARAGRAPH && looksLikeDelimiterRow(line.substr(start))) {
        if (refusesHeader(current, line, start))
            m_line.insert(start, 1, '\\');
    } else if (const cmark_node *table = openTable(current)) {
        feedTableRow(parser, table, line);
    }
    parser.feed(m_line);
    return true;
}

} // namespace velto::markdown
