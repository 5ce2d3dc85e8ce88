// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/code/keyreader.h"

#include "presentation/code/characterclass.h"

namespace velto::presentation
{
namespace
{

constexpr bool isNameStart(char16_t c)
{
    return c < 128 && asciiClasses[c] == CharacterClass::Word;
}

constexpr bool isNamePart(char16_t c)
{
    return c == u'-' || (c < 128 && asciiClasses[c] != CharacterClass::Other);
}

/// The characters with Unicode's property White_Space.
constexpr bool isSpace(char16_t c)
{
    return c == u' ' || (c >= 0x09 && c <= 0x0d) || c == 0x85 || c == 0xa0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200a) || c == 0x2028 || c == 0x2029 || c == 0x202f ||
           c == 0x205f || c == 0x3000;
}

bool isLineStart(QStringView text, qsizetype at)
{
    return at == 0 || isLineTerminator(text.utf16()[at - 1]);
}

/// Whether nothing but indent and one quote stands before `at` in its line.
bool isBehindFirstQuote(QStringView text, qsizetype at)
{
    if (text[at - 1] != u'"')
        return false;
    --at;
    while (at > 0 && isKeyIndent(text.utf16()[at - 1]))
        --at;
    return isLineStart(text, at);
}

} // namespace

KeyReading readKey(QStringView text, qsizetype start, qsizetype end)
{
    const char16_t *units = text.utf16();
    const qsizetype size = text.size();
    qsizetype at = start;
    const auto skipQuote = [&] { at += at < size && units[at] == u'"' ? 1 : 0; };
    const bool startsLine = isLineStart(text, start);
    if (startsLine) {
        while (at < end && isKeyIndent(units[at]))
            ++at;
        skipQuote();
    }
    if (at >= end)
        return {{}, at == size};
    if (!isNameStart(units[at]) || (!startsLine && !isBehindFirstQuote(text, at)))
        return {};
    const qsizetype nameStart = at;
    while (at < end && isNamePart(units[at]))
        ++at;
    const TextRange name{nameStart, at};
    skipQuote();
    while (at < size && isSpace(units[at]))
        ++at;
    if (at < size && units[at] == u':')
        return {name, false};
    return {{}, at == size};
}

} // namespace velto::presentation
