// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/theme/tablestyle.h"
#include "markdown/theme/theme.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velto::markdown
{

namespace
{

using testing::DoubleEq;

template<typename Style>
TextAttributes after(const Style &style)
{
    return TextStyle(style).applied({});
}

BlockConfiguration block()
{
    return {BlockView::label(), MarkdownContent()};
}

} // namespace

TEST(TextStyleTest, AnEmptyStyleChangesNothing)
{
    EXPECT_EQ(after(EmptyTextStyle{}), TextAttributes());
    EXPECT_EQ(TextStyle().applied({}), TextAttributes());
}

TEST(TextStyleTest, EachMemberChangesItsAttribute)
{
    EXPECT_EQ(after(BackgroundColor{Ink::accent()}).backgroundColor, Ink::accent());
    EXPECT_EQ(after(ForegroundColor{Ink::secondary()}).foregroundColor, Ink::secondary());
    EXPECT_EQ(after(FontWeight{QFont::Bold}).fontProperties.weight, QFont::Bold);
    EXPECT_EQ(after(FontStyle{FontProperties::Style::Italic}).fontProperties.style,
              FontProperties::Style::Italic);
    const FontProperties::Family custom = CustomFamily{QStringLiteral("Noto Serif")};
    EXPECT_EQ(after(FontFamily{custom}).fontProperties.family, custom);
    EXPECT_EQ(after(FontFamilyVariant{FontProperties::FamilyVariant::Monospaced})
                  .fontProperties.familyVariant,
              FontProperties::FamilyVariant::Monospaced);
    EXPECT_EQ(
        after(FontCapsVariant{FontProperties::CapsVariant::SmallCaps}).fontProperties.capsVariant,
        FontProperties::CapsVariant::SmallCaps);
    EXPECT_EQ(after(FontDigitVariant{FontProperties::DigitVariant::Monospaced})
                  .fontProperties.digitVariant,
              FontProperties::DigitVariant::Monospaced);
    EXPECT_EQ(after(FontWidth{QFont::Condensed}).fontProperties.widthStorage, QFont::Condensed);
    EXPECT_EQ(after(StrikethroughStyle{LinePattern::Dash}).strikethroughStyle, LinePattern::Dash);
    EXPECT_EQ(after(UnderlineStyle{LinePattern::Dot}).underlineStyle, LinePattern::Dot);
    EXPECT_EQ(after(TextKerning{1.5}).kerning, 1.5);
    EXPECT_EQ(after(TextTracking{0.6}).tracking, 0.6);
}

TEST(TextStyleTest, AStyleLeavesTheOtherAttributesAlone)
{
    TextAttributes expected;
    expected.fontProperties.weight = QFont::DemiBold;
    EXPECT_EQ(after(FontWeight{QFont::DemiBold}), expected);
}

TEST(TextStyleTest, StylesComposeInOrder)
{
    const TextStyle style =
        TextStyleBuilder::build(FontWeight{QFont::Bold}, FontStyle{FontProperties::Style::Italic},
                                FontWeight{QFont::Light});
    const TextAttributes attributes = style.applied({});
    EXPECT_EQ(attributes.fontProperties.weight, QFont::Light);
    EXPECT_EQ(attributes.fontProperties.style, FontProperties::Style::Italic);
}

TEST(TextStyleTest, APairAppliesTheFirstAndThenTheSecond)
{
    const TextStyle style = TextStyleBuilder::Pair{FontSize{20.0}, FontSize{RelativeSize{0.5}}};
    EXPECT_THAT(style.applied({}).fontProperties.scaledSize(), DoubleEq(10));
}

TEST(TextStyleTest, AConditionalIsTheOneThatWasChosen)
{
    const auto weight = [](bool condition) {
        return after(TextStyleBuilder::Conditional(condition, FontWeight{QFont::Bold},
                                                   FontWeight{QFont::Light}))
            .fontProperties.weight;
    };
    EXPECT_EQ(weight(true), QFont::Bold);
    EXPECT_EQ(weight(false), QFont::Light);
}

TEST(FontSizeTest, AnEmSizeMultipliesWhatIsThere)
{
    const TextStyle code = FontSize{em(0.92)};
    TextAttributes heading = after(FontSize{20.0});
    code.apply(heading);
    EXPECT_THAT(heading.fontProperties.scaledSize(), DoubleEq(18.4));
    code.apply(heading);
    EXPECT_THAT(heading.fontProperties.scaledSize(), DoubleEq(20 * 0.92 * 0.92));
}

TEST(FontSizeTest, ARemSizeIsRelativeToTheBaseText)
{
    TextAttributes attributes;
    attributes.baseSize = 16;
    FontSize{40.0}.apply(attributes);
    FontSize{em(0.5)}.apply(attributes);
    FontSize{rem(1.5)}.apply(attributes);
    EXPECT_THAT(attributes.fontProperties.scaledSize(), DoubleEq(24));
}

TEST(FontSizeTest, PointsReplaceTheSizeAndItsScale)
{
    TextAttributes attributes = after(FontSize{em(3)});
    FontSize{12.0}.apply(attributes);
    EXPECT_THAT(attributes.fontProperties.scaledSize(), DoubleEq(12));
}

TEST(RelativeSizeTest, IsMeasuredInTheSizeOfItsUnit)
{
    EXPECT_THAT(em(1.5).points(20, 15), DoubleEq(30));
    EXPECT_THAT(rem(1.5).points(20, 15), DoubleEq(22.5));
}

TEST(ThemeTest, InlineStylesHaveTheirDefaults)
{
    const Theme theme;
    EXPECT_EQ(theme.text().applied({}), TextAttributes());
    EXPECT_EQ(theme.link().applied({}), TextAttributes());
    EXPECT_EQ(theme.code().applied({}),
              after(FontFamilyVariant{FontProperties::FamilyVariant::Monospaced}));
    EXPECT_EQ(theme.emphasis().applied({}), after(FontStyle{FontProperties::Style::Italic}));
    EXPECT_EQ(theme.strong().applied({}), after(FontWeight{QFont::DemiBold}));
    EXPECT_EQ(theme.strikethrough().applied({}), after(StrikethroughStyle{LinePattern::Solid}));
}

TEST(ThemeTest, BlocksAreTheirLabelsUnchangedByDefault)
{
    const Theme theme;
    for (const Theme::Block &heading : theme.headings())
        EXPECT_TRUE(heading(block()).isPlainLabel());
    for (const Theme::Block &style : {theme.paragraph(), theme.blockquote(), theme.image(),
                                      theme.list(), theme.listItem(), theme.table()})
        EXPECT_TRUE(style(block()).isPlainLabel());
    EXPECT_TRUE(theme.codeBlock()({{}, QString(), BlockView::label()}).isPlainLabel());
    EXPECT_TRUE(theme.tableCell()({0, 0, BlockView::label(), {}}).isPlainLabel());
    EXPECT_TRUE(std::holds_alternative<BlockView::Divider>(theme.thematicBreak()().content()));
}

TEST(ThemeTest, AStyleGetsTheLabelItGivesBack)
{
    const BlockView label = BlockView::label().margin(3, 4);
    EXPECT_EQ(Theme().paragraph()({label, {}}).margin(), (BlockMargin{3, 4}));
}

TEST(ThemeTest, BulletsChangeWithTheLevelOfTheirList)
{
    const auto bullet = [](int level) {
        return std::get<BlockView::Symbol>(Theme().bulletedListMarker()({level, 1}).content()).name;
    };
    EXPECT_EQ(bullet(1), QStringLiteral("circle.fill"));
    EXPECT_EQ(bullet(2), QStringLiteral("circle"));
    EXPECT_EQ(bullet(3), QStringLiteral("square.fill"));
    EXPECT_EQ(bullet(7), QStringLiteral("square.fill"));
}

TEST(ThemeTest, ANumberHasAFullStopAndDigitsOfOneWidthOnTheTrailingSide)
{
    const BlockView marker = Theme().numberedListMarker()({1, 12});
    EXPECT_EQ(std::get<BlockView::Text>(marker.content()).text, QStringLiteral("12."));
    EXPECT_EQ(marker.textStyle().applied({}).fontProperties.digitVariant,
              FontProperties::DigitVariant::Monospaced);
    EXPECT_EQ(marker.frame(), (BlockView::Frame{em(1.5), BlockView::Alignment::Trailing}));
}

TEST(ThemeTest, ATaskIsABoxWithOrWithoutATick)
{
    const auto box = [](bool isCompleted) {
        return std::get<BlockView::Symbol>(Theme().taskListMarker()({isCompleted}).content()).name;
    };
    EXPECT_EQ(box(true), QStringLiteral("checkmark.square.fill"));
    EXPECT_EQ(box(false), QStringLiteral("square"));
}

TEST(ThemeTest, EveryMarkerStandsInAFrameOfOneAndAHalfEm)
{
    const Theme theme;
    for (const BlockView &marker :
         {theme.bulletedListMarker()({1, 1}), theme.numberedListMarker()({1, 1}),
          theme.taskListMarker()({true})}) {
        ASSERT_TRUE(marker.frame());
        EXPECT_EQ(marker.frame()->minimumWidth, em(1.5));
    }
}

TEST(ThemeTest, ASetterChangesACopyAndOnlyTheFieldThatItNames)
{
    const Theme before;
    const Theme theme =
        before.heading(2, {[](const BlockConfiguration &b) { return b.label.margin(6, 1); }});
    EXPECT_TRUE(before.headings()[1](block()).isPlainLabel());
    EXPECT_EQ(theme.headings()[1](block()).margin(), (BlockMargin{6, 1}));
    for (const std::size_t other : {0, 2, 3, 4, 5})
        EXPECT_TRUE(theme.headings()[other](block()).isPlainLabel());
    EXPECT_TRUE(theme.paragraph()(block()).isPlainLabel());
    EXPECT_EQ(theme.code().applied({}), before.code().applied({}));
}

TEST(ThemeTest, EachTextSetterSetsItsField)
{
    const TextStyle mark = TextKerning{7};
    const Theme theme;
    EXPECT_EQ(theme.text(mark).text().applied({}).kerning, 7);
    EXPECT_EQ(theme.code(mark).code().applied({}).kerning, 7);
    EXPECT_EQ(theme.emphasis(mark).emphasis().applied({}).kerning, 7);
    EXPECT_EQ(theme.strong(mark).strong().applied({}).kerning, 7);
    EXPECT_EQ(theme.strikethrough(mark).strikethrough().applied({}).kerning, 7);
    EXPECT_EQ(theme.link(mark).link().applied({}).kerning, 7);
}

TEST(ThemeTest, EachBlockSetterSetsItsField)
{
    const Theme::Block mark{[](const BlockConfiguration &b) { return b.label.margin(9, 9); }};
    const BlockMargin marked{9, 9};
    const Theme theme;
    EXPECT_EQ(theme.paragraph(mark).paragraph()(block()).margin(), marked);
    EXPECT_EQ(theme.blockquote(mark).blockquote()(block()).margin(), marked);
    EXPECT_EQ(theme.image(mark).image()(block()).margin(), marked);
    EXPECT_EQ(theme.list(mark).list()(block()).margin(), marked);
    EXPECT_EQ(theme.listItem(mark).listItem()(block()).margin(), marked);
    EXPECT_EQ(theme.table(mark).table()(block()).margin(), marked);
    const BlockView x = BlockView::text(QStringLiteral("x"));
    const auto isX = [](const BlockView &view) {
        return view.content() == BlockView::Content(BlockView::Text{QStringLiteral("x")});
    };
    EXPECT_TRUE(isX(theme.codeBlock({[=](const auto &) { return x; }})
                        .codeBlock()({{}, QString(), BlockView::label()})));
    EXPECT_TRUE(isX(theme.tableCell({[=](const auto &) { return x; }})
                        .tableCell()({0, 0, BlockView::label(), {}})));
    EXPECT_TRUE(isX(theme.taskListMarker({[=](const auto &) { return x; }}).taskListMarker()({})));
    EXPECT_TRUE(
        isX(theme.bulletedListMarker({[=](const auto &) { return x; }}).bulletedListMarker()({})));
    EXPECT_TRUE(
        isX(theme.numberedListMarker({[=](const auto &) { return x; }}).numberedListMarker()({})));
    EXPECT_TRUE(isX(theme.thematicBreak({[=] { return x; }}).thematicBreak()()));
}

namespace
{

TableBounds twoByTwo()
{
    return {{0, 0, 100, 60}, {{0, 20}, {20, 40}}, {{0, 30}, {30, 70}}};
}

} // namespace

TEST(TableStyleTest, SelectorsPickTheirRectangles)
{
    const auto rectangles = [](const TableBorderSelector &selector) {
        return selector.rectangles(twoByTwo(), 2);
    };
    EXPECT_TRUE(rectangles(TableBorderSelector::none()).isEmpty());
    EXPECT_EQ(rectangles(TableBorderSelector::outsideBorders()), QList<QRectF>({{0, 0, 100, 60}}));
    EXPECT_EQ(rectangles(TableBorderSelector::insideHorizontalBorders()),
              QList<QRectF>({{0, 19, 100, 2}}));
    EXPECT_EQ(rectangles(TableBorderSelector::insideVerticalBorders()),
              QList<QRectF>({{29, 0, 2, 60}}));
    EXPECT_EQ(rectangles(TableBorderSelector::insideBorders()),
              QList<QRectF>({{0, 19, 100, 2}, {29, 0, 2, 60}}));
    EXPECT_EQ(rectangles(TableBorderSelector::horizontalBorders()),
              QList<QRectF>({{0, 0, 100, 2}, {0, 19, 100, 2}, {0, 58, 100, 2}}));
    EXPECT_EQ(rectangles(TableBorderSelector::verticalBorders()),
              QList<QRectF>({{0, 0, 2, 60}, {29, 0, 2, 60}, {98, 0, 2, 60}}));
    EXPECT_EQ(
        rectangles(TableBorderSelector::allBorders()),
        QList<QRectF>(
            {{0, 0, 100, 60}, {0, 0, 30, 20}, {30, 0, 70, 20}, {0, 20, 30, 40}, {30, 20, 70, 40}}));
}

TEST(TableStyleTest, BackgroundsFollowRowAndColumn)
{
    const Ink ink = Ink::accent();
    EXPECT_EQ(TableBackgroundStyle::clear().background(0, 0), std::nullopt);
    EXPECT_EQ(TableBackgroundStyle::header(ink).background(0, 3), ink);
    EXPECT_EQ(TableBackgroundStyle::header(ink).background(1, 3), std::nullopt);
    const TableBackgroundStyle rows = TableBackgroundStyle::alternatingRows(ink, Ink::secondary());
    EXPECT_EQ(rows.background(2, 0), ink);
    EXPECT_EQ(rows.background(3, 0), Ink::secondary());
}

} // namespace velto::markdown
