// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/theme/relativesize.h"
#include "markdown/theme/textattributes.h"

#include <concepts>
#include <memory>
#include <type_traits>
#include <utility>
#include <variant>

namespace velto::markdown
{

/// A look of characters: one operation, which changes a container of attributes. Holds any value
/// that has it, such as those below; copies share it.
class TextStyle final
{
public:
    /// Changes nothing.
    TextStyle() = default;

    template<typename Style>
    requires(!std::same_as<std::remove_cvref_t<Style>, TextStyle> &&
             requires(const Style &style, TextAttributes &attributes) { style.apply(attributes); })
        // NOLINTNEXTLINE(google-explicit-constructor): every style is a TextStyle
        TextStyle(Style style)
        : m_style(std::make_shared<const Holder<Style>>(std::move(style)))
    {}

    void apply(TextAttributes &attributes) const
    {
        if (m_style)
            m_style->apply(attributes);
    }

    [[nodiscard]] TextAttributes applied(TextAttributes attributes) const
    {
        apply(attributes);
        return attributes;
    }

private:
    struct Any
    {
        virtual ~Any() = default;
        virtual void apply(TextAttributes &attributes) const = 0;
    };

    template<typename Style>
    struct Holder final : Any
    {
        explicit Holder(Style held)
            : style(std::move(held))
        {}
        void apply(TextAttributes &attributes) const override { style.apply(attributes); }
        Style style;
    };

    std::shared_ptr<const Any> m_style;
};

struct EmptyTextStyle
{
    void apply(TextAttributes &) const {}
};

struct BackgroundColor
{
    std::optional<Ink> color;
    void apply(TextAttributes &attributes) const { attributes.backgroundColor = color; }
};

struct ForegroundColor
{
    std::optional<Ink> color;
    void apply(TextAttributes &attributes) const { attributes.foregroundColor = color; }
};

/// Points replace the size; a relative size multiplies what is there.
struct FontSize
{
    std::variant<qreal, RelativeSize> size;
    void apply(TextAttributes &attributes) const;
};

struct FontWeight
{
    QFont::Weight weight;
    void apply(TextAttributes &attributes) const { attributes.fontProperties.weight = weight; }
};

struct FontStyle
{
    FontProperties::Style style;
    void apply(TextAttributes &attributes) const { attributes.fontProperties.style = style; }
};

struct FontFamily
{
    FontProperties::Family family;
    void apply(TextAttributes &attributes) const { attributes.fontProperties.family = family; }
};

struct FontFamilyVariant
{
    FontProperties::FamilyVariant variant;
    void apply(TextAttributes &attributes) const
    {
        attributes.fontProperties.familyVariant = variant;
    }
};

struct FontCapsVariant
{
    FontProperties::CapsVariant variant;
    void apply(TextAttributes &attributes) const
    {
        attributes.fontProperties.capsVariant = variant;
    }
};

struct FontDigitVariant
{
    FontProperties::DigitVariant variant;
    void apply(TextAttributes &attributes) const
    {
        attributes.fontProperties.digitVariant = variant;
    }
};

struct FontWidth
{
    QFont::Stretch width;
    void apply(TextAttributes &attributes) const { attributes.fontProperties.widthStorage = width; }
};

struct StrikethroughStyle
{
    std::optional<LinePattern> pattern;
    void apply(TextAttributes &attributes) const { attributes.strikethroughStyle = pattern; }
};

struct UnderlineStyle
{
    std::optional<LinePattern> pattern;
    void apply(TextAttributes &attributes) const { attributes.underlineStyle = pattern; }
};

struct TextKerning
{
    qreal kerning;
    void apply(TextAttributes &attributes) const { attributes.kerning = kerning; }
};

struct TextTracking
{
    qreal tracking;
    void apply(TextAttributes &attributes) const { attributes.tracking = tracking; }
};

/// Composes styles in order: `TextStyleBuilder::build(FontWeight{...}, FontSize{...})`.
struct TextStyleBuilder
{
    /// The first and then the second.
    struct Pair
    {
        TextStyle first;
        TextStyle second;
        void apply(TextAttributes &attributes) const
        {
            first.apply(attributes);
            second.apply(attributes);
        }
    };

    /// One of two, chosen when the style is made.
    struct Conditional
    {
        std::variant<TextStyle, TextStyle> chosen;

        Conditional(bool condition, TextStyle first, TextStyle second)
            : chosen(condition ? decltype(chosen)(std::in_place_index<0>, std::move(first))
                               : decltype(chosen)(std::in_place_index<1>, std::move(second)))
        {}
        void apply(TextAttributes &attributes) const
        {
            std::visit([&](const TextStyle &style) { style.apply(attributes); }, chosen);
        }
    };

    [[nodiscard]] static TextStyle build() { return {}; }

    template<typename First, typename... Rest>
    [[nodiscard]] static TextStyle build(First first, Rest... rest)
    {
        if constexpr (sizeof...(Rest) == 0)
            return first;
        else
            return Pair{std::move(first), build(std::move(rest)...)};
    }
};

} // namespace velto::markdown
