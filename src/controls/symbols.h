// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QString>
#include <QStringList>

namespace velto::controls
{

/// The icon vocabulary: names as screens use them, shapes that were taken from the icon font when
/// the program was built. Any thread.
class Symbols final
{
public:
    Symbols() = delete;

    struct Inks
    {
        QColor shape;
        QColor letter;
    };

    /// Side of the square of a shape beside a text of size 1: shapes leave a margin that letters
    /// don't have.
    static constexpr qreal fontScale = 1.3;

    /// The shape in a square of side 1, y downwards. Empty, with a warning, for a name that isn't
    /// in the table.
    [[nodiscard]] static QPainterPath outline(const QString &name);
    /// The shape in a square of so many pixels, with what stands in it.
    [[nodiscard]] static QImage picture(const QString &name, int side, const Inks &inks);
    /// What stands in the middle of the shape, as the letter in a lettered circle. Mostly empty.
    [[nodiscard]] static QString letter(const QString &name);
    [[nodiscard]] static QStringList names();
};

} // namespace velto::controls
