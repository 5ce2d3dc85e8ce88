// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringView>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string_view>

namespace velto::presentation
{

/// Words of at most 15 ASCII letters, made at compile time and looked up without hashing.
class KeywordSet final
{
public:
    constexpr KeywordSet(std::initializer_list<std::string_view> words)
    {
        for (char16_t initial = 0; initial < 128; ++initial) {
            m_firstWith[initial] = m_count;
            for (const std::string_view word : words) {
                if (static_cast<char16_t>(word.front()) != initial)
                    continue;
                m_words[m_count++] = word;
                m_lengths[initial] |= 1U << word.size();
            }
        }
        m_firstWith[128] = m_count;
    }

    [[nodiscard]] constexpr qsizetype size() const { return m_count; }

    [[nodiscard]] bool contains(QStringView word) const
    {
        const char16_t initial = word.utf16()[0];
        if (initial >= 128 || word.size() > 15 || (m_lengths[initial] >> word.size() & 1) == 0)
            return false;
        for (quint8 i = m_firstWith[initial]; i < m_firstWith[initial + 1]; ++i) {
            if (std::equal(word.utf16(), word.utf16() + word.size(), m_words[i].begin(),
                           m_words[i].end(),
                           [](char16_t a, char b) { return a == QLatin1Char(b).unicode(); }))
                return true;
        }
        return false;
    }

private:
    std::array<std::string_view, 48> m_words{}; // by initial
    std::array<quint8, 129> m_firstWith{};
    std::array<quint16, 128> m_lengths{}; // of the words with an initial, as bits
    quint8 m_count = 0;
};

/// A family of languages that are coloured alike.
struct Language
{
    QStringView lineComment; ///< what starts one; empty where there are none
    bool hasBlockComments = false;
    bool hasKeys = false;
    const KeywordSet *keywords = nullptr;
};

/// The family that a name stands for, in any mix of cases, or nullptr.
[[nodiscard]] const Language *languageNamed(QStringView name);

} // namespace velto::presentation
