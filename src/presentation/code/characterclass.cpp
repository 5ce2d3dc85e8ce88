// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/code/characterclass.h"

#include <algorithm>
#include <span>

namespace velto::presentation
{
namespace
{

struct CodePoints
{
    char32_t first;
    char32_t last;
};

bool isAmong(std::span<const CodePoints> list, char32_t codePoint)
{
    const auto found = std::ranges::lower_bound(list, codePoint, {}, &CodePoints::last);
    return found != list.end() && found->first <= codePoint;
}

/// Grapheme_Extend beyond the general categories Mn, Me and Cf.
constexpr CodePoints otherExtending[] = {
    {0x09be, 0x09be},   {0x09d7, 0x09d7},   {0x0b3e, 0x0b3e},   {0x0b57, 0x0b57},
    {0x0bbe, 0x0bbe},   {0x0bd7, 0x0bd7},   {0x0cc2, 0x0cc2},   {0x0cd5, 0x0cd6},
    {0x0d3e, 0x0d3e},   {0x0d57, 0x0d57},   {0x0dcf, 0x0dcf},   {0x0ddf, 0x0ddf},
    {0x1b35, 0x1b35},   {0x302e, 0x302f},   {0xff9e, 0xff9f},   {0x1133e, 0x1133e},
    {0x11357, 0x11357}, {0x114b0, 0x114b0}, {0x114bd, 0x114bd}, {0x115af, 0x115af},
    {0x11930, 0x11930}, {0x1d165, 0x1d165}, {0x1d16e, 0x1d172},
};

/// Alphabetic although their general category is So: letters in circles and squares.
constexpr CodePoints alphabeticSymbols[] = {
    {0x24b6, 0x24e9}, {0x1f130, 0x1f149}, {0x1f150, 0x1f169}, {0x1f170, 0x1f189}};

} // namespace

CharacterClass classOfCodePoint(char32_t codePoint)
{
    switch (QChar::category(codePoint)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
        return CharacterClass::Extending;
    case QChar::Number_DecimalDigit:
        return CharacterClass::Digit;
    case QChar::Mark_SpacingCombining:
    case QChar::Letter_Modifier:
        return isAmong(otherExtending, codePoint) ? CharacterClass::Extending
                                                  : CharacterClass::Word;
    case QChar::Letter_Uppercase:
    case QChar::Letter_Lowercase:
    case QChar::Letter_Titlecase:
    case QChar::Letter_Other:
    case QChar::Number_Letter:
    case QChar::Punctuation_Connector:
        return CharacterClass::Word;
    case QChar::Symbol_Other:
        return isAmong(alphabeticSymbols, codePoint) ? CharacterClass::Word : CharacterClass::Other;
    default:
        return CharacterClass::Other;
    }
}

ClassifiedCharacter foreignCharacterAt(QStringView text, qsizetype at)
{
    const char16_t unit = text.utf16()[at];
    if (QChar::isHighSurrogate(unit) && at + 1 < text.size() && text[at + 1].isLowSurrogate())
        return {classOfCodePoint(QChar::surrogateToUcs4(unit, text.utf16()[at + 1])), 2};
    return {classOfCodePoint(unit), 1};
}

bool isAfterForeignWord(QStringView text, qsizetype at)
{
    while (at > 0) {
        --at;
        if (at > 0 && text[at].isLowSurrogate() && text[at - 1].isHighSurrogate())
            --at;
        const CharacterClass kind = characterAt(text, at).kind;
        if (kind != CharacterClass::Extending)
            return kind != CharacterClass::Other;
    }
    return false;
}

} // namespace velto::presentation
