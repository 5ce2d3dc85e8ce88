// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringView>

#include <array>

namespace velto::presentation
{

/// What a character means to word boundaries, as Unicode-aware regular expressions see them.
enum class CharacterClass : quint8 {
    Other,
    Word,      ///< letters, spacing marks, connecting punctuation
    Digit,     ///< decimal digits of any script: part of words as well
    Extending, ///< belongs to the character before it: never at a boundary, and looked through
};

[[nodiscard]] CharacterClass classOfCodePoint(char32_t codePoint);

inline constexpr auto asciiClasses = [] {
    std::array<CharacterClass, 128> classes{};
    for (char16_t c = 0; c < 128; ++c) {
        const bool isLetter = (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
        const bool isDigit = c >= u'0' && c <= u'9';
        classes[c] = isLetter  ? CharacterClass::Word
                     : isDigit ? CharacterClass::Digit
                               : CharacterClass::Other;
    }
    return classes;
}();

struct ClassifiedCharacter
{
    CharacterClass kind = CharacterClass::Other;
    qsizetype units = 1;
};

/// The character that starts at `at` and is beyond ASCII. Half a surrogate pair counts as a
/// character of its own.
[[nodiscard]] ClassifiedCharacter foreignCharacterAt(QStringView text, qsizetype at);

/// The character that starts at `at`.
[[nodiscard]] inline ClassifiedCharacter characterAt(QStringView text, qsizetype at)
{
    const char16_t unit = text.utf16()[at];
    return unit < 128 ? ClassifiedCharacter{asciiClasses[unit], 1} : foreignCharacterAt(text, at);
}

/// As `isAfterWord`, where the character before `at` is beyond ASCII.
[[nodiscard]] bool isAfterForeignWord(QStringView text, qsizetype at);

/// Whether the character before `at`, looking through extending ones, is part of a word.
[[nodiscard]] inline bool isAfterWord(QStringView text, qsizetype at)
{
    if (at == 0)
        return false;
    const char16_t unit = text.utf16()[at - 1];
    return unit < 128 ? asciiClasses[unit] != CharacterClass::Other : isAfterForeignWord(text, at);
}

/// Ends a line for "." and "^" in regular expressions. For `findUnit` as well.
inline constexpr auto isLineTerminator = [](auto unit) {
    return ((unit >= 0x0a) & (unit <= 0x0d)) | (unit == 0x85) | ((unit | 1) == 0x2029);
};

} // namespace velto::presentation
