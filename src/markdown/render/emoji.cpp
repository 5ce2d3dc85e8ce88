// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/emoji.h"

#include <algorithm>
#include <array>

namespace velto::markdown
{

namespace
{

struct Range
{
    char32_t first;
    char32_t last;
};

// Characters that Unicode shows as emoji unless told otherwise, in order. Large ranges include a
// few that it shows as text, which emoji fonts have as well.
constexpr std::array emojiByDefault{
    Range{0x231A, 0x231B},   Range{0x23E9, 0x23EC},   Range{0x23F0, 0x23F0},
    Range{0x23F3, 0x23F3},   Range{0x25FD, 0x25FE},   Range{0x2614, 0x2615},
    Range{0x2648, 0x2653},   Range{0x267F, 0x267F},   Range{0x2693, 0x2693},
    Range{0x26A1, 0x26A1},   Range{0x26AA, 0x26AB},   Range{0x26BD, 0x26BE},
    Range{0x26C4, 0x26C5},   Range{0x26CE, 0x26CE},   Range{0x26D4, 0x26D4},
    Range{0x26EA, 0x26EA},   Range{0x26F2, 0x26F3},   Range{0x26F5, 0x26F5},
    Range{0x26FA, 0x26FA},   Range{0x26FD, 0x26FD},   Range{0x2705, 0x2705},
    Range{0x270A, 0x270B},   Range{0x2728, 0x2728},   Range{0x274C, 0x274C},
    Range{0x274E, 0x274E},   Range{0x2753, 0x2755},   Range{0x2757, 0x2757},
    Range{0x2795, 0x2797},   Range{0x27B0, 0x27B0},   Range{0x27BF, 0x27BF},
    Range{0x2B1B, 0x2B1C},   Range{0x2B50, 0x2B50},   Range{0x2B55, 0x2B55},
    Range{0x1F004, 0x1F004}, Range{0x1F0CF, 0x1F0CF}, Range{0x1F18E, 0x1F18E},
    Range{0x1F191, 0x1F19A}, Range{0x1F1E6, 0x1F1FF}, Range{0x1F201, 0x1F201},
    Range{0x1F21A, 0x1F21A}, Range{0x1F22F, 0x1F22F}, Range{0x1F232, 0x1F236},
    Range{0x1F238, 0x1F23A}, Range{0x1F250, 0x1F251}, Range{0x1F300, 0x1F64F},
    Range{0x1F680, 0x1F6FF}, Range{0x1F7E0, 0x1F7EB}, Range{0x1F90C, 0x1F9FF},
    Range{0x1FA70, 0x1FAFF}};

constexpr char32_t joiner = 0x200D;
constexpr char32_t textVariation = 0xFE0E;
constexpr char32_t emojiVariation = 0xFE0F;
constexpr char32_t keycap = 0x20E3;
constexpr char16_t firstOfInterest = 0x200D; ///< No emoji is made of smaller ones alone.

char32_t characterAt(QStringView text, qsizetype at)
{
    const QChar c = text[at];
    if (c.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate())
        return QChar::surrogateToUcs4(c, text[at + 1]);
    return c.unicode();
}

qsizetype unitsOf(char32_t character)
{
    return character > 0xFFFF ? 2 : 1;
}

bool isEmojiByDefault(char32_t character)
{
    const auto found = std::ranges::lower_bound(emojiByDefault, character, {}, &Range::last);
    return found != emojiByDefault.end() && found->first <= character;
}

bool isPartOfSequence(char32_t character)
{
    return character == joiner || character == emojiVariation || character == keycap ||
           (character >= 0x1F3FB && character <= 0x1F3FF) ||
           (character >= 0xE0020 && character <= 0xE007F);
}

/// Whether the character at `at` is shown as an emoji.
bool beginsEmoji(QStringView text, qsizetype at)
{
    const char32_t character = characterAt(text, at);
    const qsizetype next = at + unitsOf(character);
    const char32_t following = next < text.size() ? characterAt(text, next) : 0;
    if (following == emojiVariation)
        return character > 0x20;
    return isEmojiByDefault(character) && following != textVariation;
}

} // namespace

bool joinsToEmoji(QStringView text, qsizetype at)
{
    const char32_t character = characterAt(text, at);
    return isPartOfSequence(character) || character == textVariation;
}

qsizetype emojiEnd(QStringView text, qsizetype at)
{
    while (at < text.size() && beginsEmoji(text, at)) {
        at += unitsOf(characterAt(text, at));
        bool isJoined = false;
        while (at < text.size()) {
            const char32_t character = characterAt(text, at);
            if (!isPartOfSequence(character) && !isJoined)
                break;
            isJoined = character == joiner;
            at += unitsOf(character);
        }
    }
    return at;
}

qsizetype nextEmoji(QStringView text, qsizetype at)
{
    while (at < text.size()) {
        const bool mayBegin = text[at].unicode() > firstOfInterest ||
                              (at + 1 < text.size() && text[at + 1].unicode() == emojiVariation);
        if (mayBegin && beginsEmoji(text, at))
            return at;
        at += unitsOf(characterAt(text, at));
    }
    return at;
}

QFont emojiFont(QFont font)
{
    QStringList families{QStringLiteral("Noto Color Emoji")};
    families += font.families().isEmpty() ? QStringList{font.family()} : font.families();
    font.setFamilies(families);
    font.setWeight(QFont::Normal);
    font.setItalic(false);
    return font;
}

} // namespace velto::markdown
