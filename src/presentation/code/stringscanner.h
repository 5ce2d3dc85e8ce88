// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/code/textrange.h"

#include <QStringView>

#include <array>

namespace velto::presentation
{

/// Texts in double quotes, single quotes or backticks, which may span lines. A backslash takes the
/// next character with it; before the end of a line it leaves the text unclosed. A quote that is
/// never closed is none.
class StringScanner final
{
public:
    /// Takes in what has been appended to `text` since the last call. Returns where what `ranges`
    /// said before may have changed.
    qsizetype grow(QStringView text);
    [[nodiscard]] const TextRanges &ranges() const { return m_ranges; }

private:
    /// What is known of the quotes of one kind, so that no part of the text is searched in vain
    /// for the same closing quote twice.
    struct Quote
    {
        char16_t character;
        qsizetype waiting = -1;     // the first that more text may still close
        qsizetype searched = 0;     // how far its end has been looked for
        qsizetype unclosedUpTo = 0; // opening quotes before it have no end, so far
    };

    qsizetype closeWaiting(QStringView text);
    void open(QStringView text, Quote &quote);

    std::array<Quote, 3> m_quotes{{{u'"'}, {u'\''}, {u'`'}}};
    TextRanges m_ranges;
    qsizetype m_at = 0;
};

} // namespace velto::presentation
