// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/markdowncontent.h"
#include "markdown/render/imageparagraph.h"
#include "markdown/render/imagerule.h"
#include "markdown/render/inlinerenderer.h"

#include <gtest/gtest.h>

namespace velto::markdown
{

namespace
{

QList<InlineNode> inlinesOf(const char *text)
{
    const MarkdownContent content(QString::fromUtf8(text));
    return std::get<blocks::Paragraph>(content.blocks.constFirst().kind).content;
}

AttributedString render(const char *text, SoftBreak::Mode mode = SoftBreak::Mode::Space,
                        const QUrl &base = {})
{
    AttributedStringInlineRenderer renderer(base, InlineTextStyles::of(Theme()), mode, {});
    renderer.render(inlinesOf(text));
    return renderer.result();
}

std::string plain(const char *text, SoftBreak::Mode mode = SoftBreak::Mode::Space)
{
    return render(text, mode).plainText().toStdString();
}

TextAttributes styled(const TextStyle &style)
{
    return style.applied({});
}

RawImageData image(const char *source, const char *alt)
{
    return {QString::fromUtf8(source), QString::fromUtf8(alt), std::nullopt};
}

QString markdownOf(const char *text, ColorScheme scheme)
{
    MarkdownContent content(QString::fromUtf8(text));
    content.blocks = filtered(content.blocks, scheme);
    return content.renderMarkdown().trimmed();
}

} // namespace

TEST(InlineRendererTest, ASoftBreakIsASpaceOrALineBreak)
{
    EXPECT_EQ(plain("a\nb"), "a b");
    EXPECT_EQ(plain("a\nb", SoftBreak::Mode::LineBreak), "a\nb");
}

TEST(InlineRendererTest, AHardBreakIsANewlineInBothModes)
{
    EXPECT_EQ(plain("a  \nb"), "a\nb");
    EXPECT_EQ(plain("a\\\nb", SoftBreak::Mode::LineBreak), "a\nb");
}

TEST(InlineRendererTest, ABreakTagBeginsALineWithoutTheBlanksBehindIt)
{
    EXPECT_EQ(plain("a<br>   b"), "a\nb");
    EXPECT_EQ(plain("a<BR/>\u00a0 b"), "a\nb");
    EXPECT_EQ(plain("a</br> b c"), "a\nb c");
}

TEST(InlineRendererTest, OnlyTheNextTextLosesItsBlanks)
{
    EXPECT_EQ(plain("a<br> b *c* d"), "a\nb c d");
    EXPECT_EQ(plain("a<br>*b* c"), "a\nb c");
}

TEST(InlineRendererTest, AnyOtherTagShowsAsItWasWritten)
{
    EXPECT_EQ(plain("a <b class=\"x\">c</b> d"), "a <b class=\"x\">c</b> d");
    EXPECT_EQ(plain("a <!-- br --> b"), "a <!-- br --> b");
}

TEST(InlineRendererTest, EachKindOfTextGetsItsStyle)
{
    const Theme theme;
    const auto only = [](const char *text) {
        const AttributedString rendered = render(text);
        EXPECT_EQ(rendered.runs().size(), 1);
        return rendered.runs().value(0).attributes;
    };
    EXPECT_EQ(only("plain"), TextAttributes());
    EXPECT_EQ(only("`code`"), styled(theme.code()));
    EXPECT_EQ(only("*text*"), styled(theme.emphasis()));
    EXPECT_EQ(only("**text**"), styled(theme.strong()));
    EXPECT_EQ(only("~~text~~"), styled(theme.strikethrough()));
}

TEST(InlineRendererTest, StylesAddUpAndEndWithTheirNode)
{
    const AttributedString rendered = render("a **b *c*** d");
    ASSERT_EQ(rendered.runs().size(), 4);
    EXPECT_EQ(rendered.runs()[1].attributes, styled(Theme().strong()));
    EXPECT_EQ(rendered.runs()[2].attributes,
              styled(TextStyleBuilder::build(Theme().strong(), Theme().emphasis())));
    EXPECT_EQ(rendered.runs()[3].attributes, TextAttributes());
}

TEST(InlineRendererTest, ALinkIsResolvedAgainstTheBase)
{
    const QUrl base(QStringLiteral("https://example.org/docs/index.html"));
    const auto target = [&](const char *text) {
        return render(text, SoftBreak::Mode::Space, base).runs().value(0).attributes.link;
    };
    EXPECT_EQ(target("[a](other.html)"),
              QUrl(QStringLiteral("https://example.org/docs/other.html")));
    EXPECT_EQ(target("[a](/root)"), QUrl(QStringLiteral("https://example.org/root")));
    EXPECT_EQ(target("[a](https://other.org)"), QUrl(QStringLiteral("https://other.org")));
    EXPECT_EQ(target("plain"), QUrl());
}

TEST(InlineRendererTest, WithoutABaseALinkStaysAsItIs)
{
    EXPECT_EQ(render("[a](other.html)").runs()[0].attributes.link,
              QUrl(QStringLiteral("other.html")));
}

TEST(InlineRendererTest, TheLinkHoldsForAllThatIsInIt)
{
    for (const TextRun &run : render("[a **b** `c`](https://x.org)").runs())
        EXPECT_EQ(run.attributes.link, QUrl(QStringLiteral("https://x.org")));
}

TEST(InlineRendererTest, APictureIsItsAlternativeTextUntilItIsThere)
{
    EXPECT_EQ(plain("see ![a *small* cat](cat.png)!"), "see a small cat!");
    TextInlineRenderer renderer({}, {}, {}, SoftBreak::Mode::Space, {});
    renderer.render(inlinesOf("see ![cat](cat.png)"));
    EXPECT_EQ(renderer.result().plainText(), QStringLiteral("see cat"));
}

TEST(InlineRendererTest, APictureThatIsThereStandsInTheText)
{
    TextInlineRenderer renderer({}, {},
                                {{QStringLiteral("cat.png"), QImage(2, 2, QImage::Format_RGB32)}},
                                SoftBreak::Mode::Space, {});
    renderer.render(inlinesOf("see ![cat](cat.png) and ![dog](dog.png)"));
    ASSERT_EQ(renderer.result().runs().size(), 3);
    EXPECT_EQ(renderer.result().runs()[1].image, QStringLiteral("cat.png"));
    EXPECT_EQ(renderer.result().runs()[2].text, QStringLiteral(" and dog"));
}

TEST(InlineRendererTest, CodeInAHeadingIsRelativeToTheHeading)
{
    const Theme theme = Theme().code(FontSize{em(0.92)});
    TextAttributes heading;
    FontSize{20.0}.apply(heading);
    AttributedStringInlineRenderer renderer({}, InlineTextStyles::of(theme), SoftBreak::Mode::Space,
                                            heading);
    renderer.render(inlinesOf("`code`"));
    EXPECT_DOUBLE_EQ(renderer.result().runs()[0].attributes.fontProperties.scaledSize(), 18.4);
}

struct SchemeCase
{
    const char *source;
    bool inLight;
    bool inDark;
};

class ColorSchemeRuleTest : public testing::TestWithParam<SchemeCase>
{};

TEST_P(ColorSchemeRuleTest, TheFragmentDecides)
{
    const QString source = QString::fromUtf8(GetParam().source);
    EXPECT_EQ(isShownIn(ColorScheme::Light, source), GetParam().inLight);
    EXPECT_EQ(isShownIn(ColorScheme::Dark, source), GetParam().inDark);
}

INSTANTIATE_TEST_SUITE_P(, ColorSchemeRuleTest,
                         testing::Values(SchemeCase{"a.png", true, true},
                                         SchemeCase{"a.png#other", true, true},
                                         SchemeCase{"a.png#gh-dark-mode-only", false, true},
                                         SchemeCase{"a.png#GH-Dark-Mode-Only", false, true},
                                         SchemeCase{"a.png#gh-light-mode-only", true, false},
                                         SchemeCase{"a.png#GH-LIGHT-MODE-ONLY", true, false},
                                         SchemeCase{"gh-dark-mode-only.png", true, true},
                                         SchemeCase{"a.png?x#gh-dark-mode-only", false, true}));

TEST(HiddenPicturesTest, PicturesAreLeftOutWhereverTheyAre)
{
    EXPECT_EQ(markdownOf("a ![x](x#gh-dark-mode-only) b", ColorScheme::Light).simplified(),
              QStringLiteral("a b"));
    EXPECT_EQ(markdownOf("- > a ![x](x#gh-dark-mode-only)", ColorScheme::Light).simplified(),
              QStringLiteral("- > a"));
    EXPECT_EQ(markdownOf("**a[![x](x#gh-dark-mode-only)](y)**", ColorScheme::Light),
              QStringLiteral("**a**"));
    const MarkdownContent table(QStringLiteral("|a|\n|-|\n|![x](x#gh-dark-mode-only)|"));
    const QList<BlockNode> shown = filtered(table.blocks, ColorScheme::Light);
    EXPECT_TRUE(std::get<blocks::Table>(shown[0].kind).rows[1].cells[0].content.isEmpty());
}

TEST(HiddenPicturesTest, BlocksWithoutHiddenPicturesAreShared)
{
    const MarkdownContent content(QStringLiteral("- a\n- ![x](x.png)\n\n> b"));
    const QList<BlockNode> shown = filtered(content.blocks, ColorScheme::Light);
    EXPECT_EQ(shown, content.blocks);
    EXPECT_EQ(shown.constData(), content.blocks.constData());
}

TEST(RawImageDataTest, IsOneImageWithOrWithoutALink)
{
    EXPECT_EQ(RawImageData::only(inlinesOf("![a *b*](x.png)")), image("x.png", "a b"));
    RawImageData linked = image("x.png", "a");
    linked.destination = QStringLiteral("https://y.org");
    EXPECT_EQ(RawImageData::only(inlinesOf("[![a](x.png)](https://y.org)")), linked);
}

TEST(RawImageDataTest, IsNothingElse)
{
    for (const char *text : {"a", "![a](x) b", "![a](x)![b](y)", "*![a](x)*", "[![a](x) b](y)"})
        EXPECT_EQ(RawImageData::only(inlinesOf(text)), std::nullopt) << text;
}

TEST(ImageFlowTest, HoldsImagesAndHardBreaksInOrder)
{
    const auto flow = ImageFlow::of(inlinesOf("![a](x)\n![b](y)  \n[![c](z)](l)"));
    ASSERT_TRUE(flow);
    ASSERT_EQ(flow->items.size(), 4);
    EXPECT_EQ(flow->items[1].content, decltype(flow->items[1].content)(image("y", "b")));
    EXPECT_TRUE(std::holds_alternative<ImageFlow::LineBreak>(flow->items[2].content));
    EXPECT_EQ(std::get<RawImageData>(flow->items[3].content).destination, QStringLiteral("l"));
    for (qsizetype index = 0; index < flow->items.size(); ++index)
        EXPECT_EQ(flow->items[index].index, index);
}

TEST(ImageFlowTest, IsAbsentWithAnyTextOrWithoutAnyImage)
{
    EXPECT_FALSE(ImageFlow::of(inlinesOf("![a](x) ![b](y)")));
    EXPECT_FALSE(ImageFlow::of(inlinesOf("![a](x)\nand")));
    EXPECT_FALSE(ImageFlow::of({InlineNode{inlines::SoftBreak{}}}));
    EXPECT_FALSE(ImageFlow::of({}));
}

TEST(FlowLayoutTest, WrapsWhereThereIsNoRoom)
{
    const FlowLayout layout{5, 7};
    const FlowLayout::Placed placed =
        layout.place({QSizeF(40, 10), QSizeF(50, 10), QSizeF(30, 10)}, 100);
    EXPECT_EQ(placed.rectangles, QList<QRectF>({{0, 0, 40, 10}, {45, 0, 50, 10}, {0, 17, 30, 10}}));
    EXPECT_EQ(placed.size, QSizeF(95, 27));
}

TEST(FlowLayoutTest, ABreakBeginsARow)
{
    const FlowLayout::Placed placed =
        FlowLayout{5, 7}.place({QSizeF(10, 10), std::nullopt, QSizeF(10, 10)}, 100);
    EXPECT_EQ(placed.rectangles, QList<QRectF>({{0, 0, 10, 10}, {}, {0, 17, 10, 10}}));
}

TEST(FlowLayoutTest, BoxesAreCentredInTheirRow)
{
    const FlowLayout::Placed placed = FlowLayout{0, 0}.place({QSizeF(10, 10), QSizeF(10, 30)}, 100);
    EXPECT_EQ(placed.rectangles, QList<QRectF>({{0, 10, 10, 10}, {10, 0, 10, 30}}));
}

TEST(FlowLayoutTest, ABoxWiderThanTheRoomHasARowOfItsOwn)
{
    const FlowLayout::Placed placed =
        FlowLayout{0, 0}.place({QSizeF(10, 10), QSizeF(200, 10), QSizeF(10, 10)}, 100);
    EXPECT_EQ(placed.rectangles,
              QList<QRectF>({{0, 0, 10, 10}, {0, 10, 200, 10}, {0, 20, 10, 10}}));
}

} // namespace velto::markdown
