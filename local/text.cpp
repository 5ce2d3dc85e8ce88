// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/text.h"

#include <algorithm>
#include <array>
#include <ctime>

namespace velto::local
{

namespace
{

constexpr std::string_view Blanks = " \t\r\n\f\v";

std::string onOneLine(std::string_view text)
{
    std::string line;
    for (const char c : trimmed(text)) {
        const bool blank = Blanks.find(c) != Blanks.npos;
        if (blank && line.ends_with(' '))
            continue;
        line += blank ? ' ' : c;
    }
    return line;
}

std::string withoutMarks(std::string_view line)
{
    std::string plain;
    for (const char c : line) {
        if (std::string_view("*_`[]").find(c) == std::string_view::npos)
            plain += c;
    }
    return plain;
}

} // namespace

std::size_t characterLength(std::string_view text, std::size_t position)
{
    std::size_t end = position + 1;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xc0) == 0x80)
        ++end;
    return std::min(end, text.size()) - position;
}

std::string_view trimmed(std::string_view text)
{
    const auto begin = text.find_first_not_of(Blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(Blanks) - begin + 1);
}

std::string shortened(std::string_view text, std::size_t limit)
{
    std::string line = onOneLine(text);
    std::size_t end = 0;
    for (std::size_t count = 0; count + 1 < limit && end < line.size(); ++count)
        end += characterLength(line, end);
    if (end == line.size() || end + characterLength(line, end) == line.size())
        return line;
    const auto blank = line.rfind(' ', end);
    line.resize(blank != std::string::npos && blank > end / 2 ? blank : end);
    return line + "…";
}

std::string gist(std::string_view markdown, std::size_t limit)
{
    bool inCode = false;
    while (!markdown.empty()) {
        const auto end = markdown.find('\n');
        const std::string_view line = trimmed(markdown.substr(0, end));
        markdown = end == std::string_view::npos ? std::string_view() : markdown.substr(end + 1);
        if (line.starts_with("```"))
            inCode = !inCode;
        const bool prose = !line.empty() && !inCode &&
                           std::string_view("#|>`!-[").find(line.front()) == std::string_view::npos;
        if (prose)
            return shortened(withoutMarks(line), limit);
    }
    return {};
}

std::string isoTime(std::int64_t seconds)
{
    const auto time = static_cast<std::time_t>(seconds);
    std::tm parts{};
    ::gmtime_r(&time, &parts);
    std::array<char, 32> buffer{};
    const auto length = std::strftime(buffer.data(), buffer.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
    return std::string(buffer.data(), length);
}

} // namespace velto::local
