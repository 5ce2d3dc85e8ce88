// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/code/wordscanner.h"

#include "presentation/code/characterclass.h"
#include "presentation/code/keyreader.h"

#include <utility>

namespace velto::presentation
{
namespace
{

class WordScan final
{
public:
    WordScan(QStringView text, TextRange part, const Language &language, TokenRanges &tokens)
        : m_text(text)
        , m_units(text.utf16())
        , m_at(part.start)
        , m_end(part.end)
        , m_isAfterWord(isAfterWord(text, part.start))
        , m_hasKeys(language.hasKeys)
        , m_keywords(*language.keywords)
        , m_tokens(tokens)
        , m_undecided(text.size())
    {}

    qsizetype run()
    {
        if (m_hasKeys)
            findKey();
        readWords();
        return m_undecided;
    }

private:
    void readWords()
    {
        while (m_at < m_end) {
            const char16_t unit = m_units[m_at];
            if (unit >= 128) {
                readForeign();
                continue;
            }
            const CharacterClass kind = asciiClasses[unit];
            if (kind == CharacterClass::Other) {
                m_isAfterWord = false;
                ++m_at;
                if (m_hasKeys && isLineTerminator(unit))
                    findKey();
            } else if (m_isAfterWord) {
                m_at = wordEnd();
            } else if (kind == CharacterClass::Word) {
                readWord();
            } else {
                readNumber();
            }
        }
    }

    /// A key with a number or keyword in it is none.
    void findKey()
    {
        const KeyReading reading = readKey(m_text, m_at, m_end);
        if (reading.isUndecided)
            m_undecided = std::min(m_undecided, m_at);
        if (!reading.key)
            return;
        const size_t known = m_tokens.size();
        m_at = reading.key->start;
        const qsizetype end = std::exchange(m_end, reading.key->end);
        readWords();
        m_end = end;
        if (m_tokens.size() == known)
            m_tokens.push_back({*reading.key, TokenColor::Key});
    }

    /// The end of the ASCII part of the word here.
    [[nodiscard]] qsizetype wordEnd() const
    {
        qsizetype at = m_at + 1;
        while (at < m_end && m_units[at] < 128 &&
               asciiClasses[m_units[at]] != CharacterClass::Other)
            ++at;
        return at;
    }

    [[nodiscard]] bool isBoundaryAfterWord(qsizetype at) const
    {
        return at == m_end || characterAt(m_text, at).kind == CharacterClass::Other;
    }

    void readForeign()
    {
        const ClassifiedCharacter character = characterAt(m_text, m_at);
        if (character.kind == CharacterClass::Digit && !m_isAfterWord) {
            readNumber();
            return;
        }
        if (character.kind != CharacterClass::Extending)
            m_isAfterWord = character.kind != CharacterClass::Other;
        const bool endsLine = isLineTerminator(m_units[m_at]);
        m_at += character.units;
        if (m_hasKeys && endsLine)
            findKey();
    }

    void readWord()
    {
        const qsizetype end = wordEnd();
        if (m_keywords.contains(m_text.sliced(m_at, end - m_at)) && isBoundaryAfterWord(end))
            m_tokens.push_back({{m_at, end}, TokenColor::Keyword});
        m_at = end;
        m_isAfterWord = true;
    }

    [[nodiscard]] qsizetype digitsEnd(qsizetype at) const
    {
        while (at < m_end) {
            const ClassifiedCharacter character = characterAt(m_text, at);
            if (character.kind != CharacterClass::Digit)
                break;
            at += character.units;
        }
        return at;
    }

    [[nodiscard]] bool isUnit(qsizetype at, char16_t unit) const
    {
        return at < m_end && m_units[at] == unit;
    }

    /// The end of ".5" at `at`, or `at`.
    [[nodiscard]] qsizetype fractionEnd(qsizetype at) const
    {
        if (!isUnit(at, u'.'))
            return at;
        const qsizetype end = digitsEnd(at + 1);
        return end > at + 1 ? end : at;
    }

    /// The end of "e-5" at `at`, or `at`.
    [[nodiscard]] qsizetype exponentEnd(qsizetype at) const
    {
        if (!isUnit(at, u'e') && !isUnit(at, u'E'))
            return at;
        const qsizetype digits = isUnit(at + 1, u'+') || isUnit(at + 1, u'-') ? at + 2 : at + 1;
        const qsizetype end = digitsEnd(digits);
        return end > digits ? end : at;
    }

    void readNumber()
    {
        const qsizetype whole = digitsEnd(m_at);
        const qsizetype fraction = fractionEnd(whole);
        qsizetype end = exponentEnd(fraction);
        bool isNumber = isBoundaryAfterWord(end);
        // With a letter right behind it, "1.5x" still has the number before its point.
        if (!isNumber && fraction > whole) {
            end = whole;
            isNumber = true;
        }
        if (isNumber)
            m_tokens.push_back({{m_at, end}, TokenColor::Number});
        m_at = isNumber ? end : whole;
        m_isAfterWord = true;
    }

    QStringView m_text;
    const char16_t *m_units;
    qsizetype m_at;
    qsizetype m_end;
    bool m_isAfterWord;
    bool m_hasKeys;
    const KeywordSet &m_keywords;
    TokenRanges &m_tokens;
    qsizetype m_undecided;
};

} // namespace

qsizetype scanWords(QStringView text, TextRange part, const Language &language, TokenRanges &tokens)
{
    return WordScan(text, part, language, tokens).run();
}

qsizetype unsettledWordStart(QStringView text, qsizetype from)
{
    const char16_t *units = text.utf16();
    qsizetype at = text.size();
    const auto mayGoOn = [](char16_t unit) {
        return unit >= 128 || asciiClasses[unit] != CharacterClass::Other || unit == u'.' ||
               unit == u'+' || unit == u'-';
    };
    while (at > from && mayGoOn(units[at - 1]))
        --at;
    return at;
}

} // namespace velto::presentation
