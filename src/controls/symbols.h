// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPainterPath>
#include <QString>
#include <QStringList>

namespace velto::controls
{

/// The icon vocabulary: names as screens use them, shapes from the icon font that is compiled in.
/// Main thread only.
class Symbols final
{
public:
    Symbols() = delete;

    /// The shape in a square of side 1, y downwards. Empty, with a warning, for a name that isn't
    /// in the table.
    [[nodiscard]] static QPainterPath outline(const QString &name);
    /// Family of the icon font, for a mark among the letters of a text. The first read announces
    /// the font to the system's font matching, which `outline` does without; empty when that
    /// failed.
    [[nodiscard]] static QString family();
    /// The character of `family` that shows the mark. Empty, with a warning, as `outline`.
    [[nodiscard]] static QString glyph(const QString &name);
    /// What stands in the middle of the shape, as the letter in a lettered circle. Mostly empty.
    [[nodiscard]] static QString letter(const QString &name);
    [[nodiscard]] static QStringList names();
};

} // namespace velto::controls
