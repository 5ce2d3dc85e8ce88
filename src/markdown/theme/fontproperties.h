// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFont>
#include <QString>

#include <variant>

namespace velto::markdown
{

/// A family that the desktop chooses.
struct SystemFamily
{
    enum class Design { Default, Serif, Rounded, Monospaced };
    Design design = Design::Default;
    bool operator==(const SystemFamily &) const = default;
};

struct CustomFamily
{
    QString name;
    bool operator==(const CustomFamily &) const = default;
};

/// What is known of a font before it is looked up: the parts that text styles change one by one.
struct FontProperties
{
    using Family = std::variant<SystemFamily, CustomFamily>;
    enum class FamilyVariant { Normal, Monospaced };
    enum class CapsVariant { Normal, SmallCaps, LowercaseSmallCaps, UppercaseSmallCaps };
    enum class DigitVariant { Normal, Monospaced };
    enum class Style { Normal, Italic };

    static constexpr qreal defaultSize = 15;

    Family family;
    FamilyVariant familyVariant = FamilyVariant::Normal;
    CapsVariant capsVariant = CapsVariant::Normal;
    DigitVariant digitVariant = DigitVariant::Normal;
    Style style = Style::Normal;
    QFont::Weight weight = QFont::Normal;
    QFont::Stretch widthStorage = QFont::Unstretched;
    qreal size = defaultSize; ///< Device-independent pixels.
    qreal scale = 1;          ///< The product of the relative sizes around.

    [[nodiscard]] qreal scaledSize() const { return size * scale; }
    /// The desktop's font with these properties. Needs a QGuiApplication.
    [[nodiscard]] QFont font() const;

    bool operator==(const FontProperties &) const = default;
};

} // namespace velto::markdown
