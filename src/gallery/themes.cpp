// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "themes.h"

namespace velto::gallery
{

using namespace markdown;

namespace
{

Theme::Block heading(qreal size, qreal above, std::optional<qreal> below)
{
    return {[=](const BlockConfiguration &block) {
        return block.label
            .textStyle(TextStyleBuilder::build(FontSize{size}, FontWeight{QFont::DemiBold}))
            .lineHeight(1.2)
            .margin(above, below);
    }};
}

Theme::Block minorHeading()
{
    return {[](const BlockConfiguration &block) {
        return block.label
            .textStyle(TextStyleBuilder::build(FontSize{13.0}, FontWeight{QFont::DemiBold},
                                               ForegroundColor{Ink::secondary()}))
            .margin(12, 3);
    }};
}

BlockView quote(const BlockConfiguration &block)
{
    return block.label.textStyle(ForegroundColor{Ink::secondary()})
        .padding({14, 0, 0, 0})
        .leadingBar(Ink::primary().faded(0.18), 2);
}

BlockView code(const CodeBlockConfiguration &block)
{
    BlockView view =
        block.label
            .textStyle(TextStyleBuilder::build(
                FontFamilyVariant{FontProperties::FamilyVariant::Monospaced}, FontSize{12.5}))
            .lineHeight(1.25)
            .padding({12, 10, 12, 10})
            .background(Ink::primary().faded(0.045), 8)
            .scrolling();
    const QString language = block.language.value_or(QString()).trimmed();
    if (language.isEmpty())
        return view;
    return view.caption(language.toUpper(),
                        TextStyleBuilder::build(FontSize{9.0}, FontWeight{QFont::DemiBold},
                                                ForegroundColor{Ink::secondary()},
                                                TextTracking{0.6}),
                        6);
}

BlockView cell(const TableCellConfiguration &cell)
{
    return cell.row == 0 ? cell.label.textStyle(FontWeight{QFont::DemiBold}) : cell.label;
}

Theme reading()
{
    return Theme()
        .text(TextStyleBuilder::build(FontSize{15.0}, ForegroundColor{Ink::primary()}))
        .link(ForegroundColor{Ink::accent()})
        .code(TextStyleBuilder::build(FontFamilyVariant{FontProperties::FamilyVariant::Monospaced},
                                      FontSize{em(0.92)},
                                      BackgroundColor{Ink::primary().faded(0.06)}))
        .heading(1, heading(20, 18, 6))
        .heading(2, heading(17, 16, 5))
        .heading(3, heading(15, 14, 4))
        .heading(4, minorHeading())
        .heading(5, minorHeading())
        .heading(6, minorHeading())
        .blockquote({quote})
        .listItem({[](const BlockConfiguration &block) { return block.label.margin(3, 3); }})
        .codeBlock({code})
        .tableCell({cell});
}

} // namespace

QStringList themeNames()
{
    return {QStringLiteral("reading"), QStringLiteral("plain")};
}

Theme themeNamed(const QString &name)
{
    return name == QLatin1String("reading") ? reading() : Theme();
}

} // namespace velto::gallery
