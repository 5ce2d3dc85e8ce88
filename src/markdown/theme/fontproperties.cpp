// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/theme/fontproperties.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace velto::markdown
{

namespace
{

bool isMonospaced(const FontProperties &properties)
{
    const auto *system = std::get_if<SystemFamily>(&properties.family);
    return properties.familyVariant == FontProperties::FamilyVariant::Monospaced ||
           (system != nullptr && system->design == SystemFamily::Design::Monospaced);
}

QFont inFamily(const FontProperties &properties)
{
    if (isMonospaced(properties)) {
        static const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        return fixed;
    }
    QFont font = QGuiApplication::font();
    if (const auto *custom = std::get_if<CustomFamily>(&properties.family)) {
        font.setFamilies({custom->name, font.family()});
    } else if (std::get<SystemFamily>(properties.family).design ==
               SystemFamily::Design::Serif) {
        font.setFamily(QStringLiteral("serif"));
        font.setStyleHint(QFont::Serif);
    }
    return font;
}

QFont::Capitalization capitalization(FontProperties::CapsVariant variant)
{
    // The one small-capitals look that the text layout knows.
    return variant == FontProperties::CapsVariant::Normal ? QFont::MixedCase : QFont::SmallCaps;
}

} // namespace

QFont FontProperties::font() const
{
    QFont font = inFamily(*this);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(scaledSize()))));
    font.setWeight(weight);
    font.setItalic(style == Style::Italic);
    font.setStretch(widthStorage);
    font.setCapitalization(capitalization(capsVariant));
    return font;
}

} // namespace velto::markdown
