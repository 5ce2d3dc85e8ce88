// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/theme/fontproperties.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

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
    } else if (std::get<SystemFamily>(properties.family).design == SystemFamily::Design::Serif) {
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

QFont made(const FontProperties &properties)
{
    QFont font = inFamily(properties);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(properties.scaledSize()))));
    font.setWeight(properties.weight);
    font.setItalic(properties.style == FontProperties::Style::Italic);
    // A stretch that changes nothing would make it another font than that of other texts, which is
    // looked up anew.
    if (properties.widthStorage != QFont::Unstretched)
        font.setStretch(properties.widthStorage);
    font.setCapitalization(capitalization(properties.capsVariant));
    return font;
}

// A document has a handful of fonts; each is looked up by the system once, since copies share it.
constexpr std::size_t mostKnown = 32;

} // namespace

QFont FontProperties::font() const
{
    static std::vector<std::pair<FontProperties, QFont>> known;
    static QFont base;
    if (base != QGuiApplication::font()) {
        base = QGuiApplication::font();
        known.clear();
    }
    const auto found = std::find_if(known.cbegin(), known.cend(),
                                    [this](const auto &entry) { return entry.first == *this; });
    if (found != known.cend())
        return found->second;
    if (known.size() == mostKnown)
        known.clear();
    return known.emplace_back(*this, made(*this)).second;
}

} // namespace velto::markdown
