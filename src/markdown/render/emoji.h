// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFont>
#include <QString>

namespace velto::markdown
{

/// The end of the emoji that stand next to each other from `at` on; `at` when there is none. A
/// sequence counts with all its parts: skin tones, joiners, flags, keycaps.
[[nodiscard]] qsizetype emojiEnd(QStringView text, qsizetype at);
/// The first position from `at` on where an emoji begins; the size of the text when none does.
[[nodiscard]] qsizetype nextEmoji(QStringView text, qsizetype at);
/// Whether what stands at `at` changes the look of the character before it.
[[nodiscard]] bool joinsToEmoji(QStringView text, qsizetype at);
/// The font for emoji that stand in a text of `font`. Fonts of text have some emoji as well, in
/// black, and others higher than their letters are; the shaper would take either, and give all of
/// the paragraph the height.
[[nodiscard]] QFont emojiFont(QFont font);

} // namespace velto::markdown
