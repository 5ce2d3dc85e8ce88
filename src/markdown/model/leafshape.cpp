// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/leafshape.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace velto::markdown
{

namespace
{

constexpr qint64 longestLabel = 1000; // bytes; the parser looks up none that is longer

/// What a character at which the parser stops costs at most, in tenths of a microsecond.
constexpr std::array<std::uint8_t, 256> characterCosts()
{
    std::array<std::uint8_t, 256> costs{};
    for (const char c : std::string_view("\\`_*[]<>!~\"'w"))
        costs[static_cast<unsigned char>(c)] = 4;
    costs[static_cast<unsigned char>('\n')] = 6;
    costs[static_cast<unsigned char>(':')] = 8;
    costs[static_cast<unsigned char>('&')] = 8;
    costs[static_cast<unsigned char>('@')] = 40;
    return costs;
}

constexpr std::array<std::uint8_t, 256> costs = characterCosts();

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isMailCharacter(char c)
{
    return isLetter(c) || c == '@' || c == '.' || c == '-' || c == '_';
}

bool isHostCharacter(char c)
{
    return isMailCharacter(c) || c == '\\' || static_cast<unsigned char>(c) >= 0x80;
}

bool beginsAddress(std::string_view text, std::size_t at)
{
    return text.substr(at, 3) == "://" || text.substr(at, 4) == "www.";
}

template<typename Condition>
std::size_t endOf(std::string_view text, std::size_t start, Condition holds)
{
    while (start < text.size() && holds(text[start]))
        ++start;
    return start;
}

} // namespace

LeafShape::LeafShape(std::string_view text)
{
    bool hasTags = false;
    bool hasAddresses = false;
    bool hasMailAddresses = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        const std::uint8_t cost = costs[static_cast<unsigned char>(c)];
        if (cost == 0)
            continue;
        characters += cost;
        if (c == '*' || c == '_' || c == '~')
            countDelimiter(text, at);
        else if (c == '[' || c == ']')
            countBracket(text, at);
        else if (c == '<')
            hasTags = true;
        else if (beginsAddress(text, at))
            hasAddresses = true;
        else if (c == '@')
            hasMailAddresses = true;
    }
    if (hasTags)
        countOpenEnded(text);
    if (hasAddresses)
        countAddresses(text);
    if (hasMailAddresses)
        countMailAddresses(text);
}

void LeafShape::countDelimiter(std::string_view text, std::size_t at)
{
    ++delimiters;
    const char c = text[at];
    if (at == 0 || text[at - 1] != c)
        m_runStart = at;
    if (at + 1 < text.size() && text[at + 1] == c)
        return;
    const char before = m_runStart > 0 ? text[m_runStart - 1] : ' ';
    const char after = at + 1 < text.size() ? text[at + 1] : ' ';
    const bool isWithinWord = c == '_' && isLetter(before) && isLetter(after);
    runs += isWithinWord || (isSpace(before) && isSpace(after)) ? 0 : 1;
}

void LeafShape::countBracket(std::string_view text, std::size_t at)
{
    const auto position = static_cast<qint64>(at);
    if (text[at] == '[') {
        delimiters += at > 0 && text[at - 1] == '!' ? 1 : 0;
        m_openers.push_back(position);
        return;
    }
    ++brackets;
    if (m_openers.empty())
        return;
    labels += std::min(longestLabel, position - m_openers.back());
    m_openers.pop_back();
}

/// `<?`, `<!X` and `<![CDATA[` are looked for an end up to the end of the text.
void LeafShape::countOpenEnded(std::string_view text)
{
    const std::size_t lastInstructionEnd = text.rfind("?>");
    const std::size_t lastTagEnd = text.rfind('>');
    const std::size_t lastSectionEnd = text.rfind("]]>");
    const auto isBehind = [](std::size_t at, std::size_t end) {
        return end == std::string_view::npos || at > end;
    };
    for (std::size_t at = text.find('<'); at != std::string_view::npos && at + 1 < text.size();
         at = text.find('<', at + 1)) {
        const bool isInstruction = text[at + 1] == '?';
        const bool isSection = text.substr(at, 3) == "<![";
        const bool isDeclaration = !isSection && text[at + 1] == '!';
        if ((isInstruction && isBehind(at, lastInstructionEnd)) ||
            (isSection && isBehind(at, lastSectionEnd)) ||
            (isDeclaration && isBehind(at, lastTagEnd)))
            openEnded += static_cast<qint64>(text.size() - at);
    }
}

/// An address is read up to a blank, and then what is behind a `<` is given back. A host that is
/// none is given back as a whole.
void LeafShape::countAddresses(std::string_view text)
{
    std::size_t hostEnd = 0;
    std::size_t readTo = 0;
    std::size_t wordEnd = 0;
    for (std::size_t at = text.find_first_of(":w"); at != std::string_view::npos;
         at = text.find_first_of(":w", at + 1)) {
        if (!beginsAddress(text, at))
            continue;
        const std::size_t host = at + (text[at] == ':' ? 3 : 0);
        if (host >= hostEnd)
            hostEnd = endOf(text, host, isHostCharacter);
        addresses += static_cast<qint64>(hostEnd - at);
        if (at < readTo)
            continue;
        if (at >= wordEnd)
            wordEnd = endOf(text, at, [](char c) { return !isSpace(c); });
        addresses += static_cast<qint64>(wordEnd - at);
        readTo = at + std::min(text.substr(at, wordEnd - at).find('<'), wordEnd - at);
    }
}

/// From each `@`, the text is read as far as it could be an address.
void LeafShape::countMailAddresses(std::string_view text)
{
    std::size_t end = 0;
    for (std::size_t at = text.find('@'); at != std::string_view::npos;
         at = text.find('@', at + 1)) {
        if (at >= end)
            end = endOf(text, at, isMailCharacter);
        addresses += static_cast<qint64>(end - at);
    }
}

} // namespace velto::markdown
