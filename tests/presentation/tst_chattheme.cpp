// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/rows/chattheme.h"

#include "presentation/code/codehighlighter.h"
#include "support/coroutinetest.h"

#include <QCoreApplication>
#include <QThreadPool>

#include <gtest/gtest.h>

namespace velto::presentation
{

namespace
{

using namespace markdown;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

BlockView fenced(std::optional<QString> language)
{
    return chatTheme().codeBlock()({std::move(language), text("x = 1"), BlockView::label()});
}

const std::optional<QString> python = QStringLiteral("python");

} // namespace

TEST(ChatTheme, textIsFifteenPointsInThePrimaryColour)
{
    TextAttributes attributes;
    chatTheme().text().apply(attributes);
    EXPECT_EQ(attributes.fontProperties.size, 15);
    EXPECT_EQ(attributes.foregroundColor, Ink::primary());
}

TEST(ChatTheme, strongIsSemiboldAndLinksHaveTheAccent)
{
    EXPECT_EQ(chatTheme().strong().applied({}).fontProperties.weight, QFont::DemiBold);
    EXPECT_EQ(chatTheme().link().applied({}).foregroundColor, Ink::accent());
}

TEST(ChatTheme, inlineCodeIsSmallerMonospacedOnABackground)
{
    const TextAttributes code = chatTheme().code().applied({});
    EXPECT_EQ(code.fontProperties.familyVariant, FontProperties::FamilyVariant::Monospaced);
    EXPECT_DOUBLE_EQ(code.fontProperties.scaledSize(), 0.92 * FontProperties::defaultSize);
    EXPECT_EQ(code.backgroundColor, Ink::primary().faded(0.06));
}

TEST(ChatTheme, threeLevelsOfHeadings)
{
    struct Level
    {
        qreal size;
        std::optional<qreal> above;
        std::optional<qreal> below;
    };
    const Level levels[] = {{20, 8, 2}, {17, 6, 1}, {15, 4, std::nullopt}};
    for (std::size_t index = 0; index < std::size(levels); ++index) {
        const BlockView view = chatTheme().headings()[index]({BlockView::label(), {}});
        const TextAttributes attributes = view.textStyle().applied({});
        EXPECT_EQ(attributes.fontProperties.size, levels[index].size);
        EXPECT_EQ(attributes.fontProperties.weight, QFont::DemiBold);
        EXPECT_EQ(view.margin().top, levels[index].above);
        EXPECT_EQ(view.margin().bottom, levels[index].below);
    }
}

TEST(ChatTheme, quotesAreFaintBehindABar)
{
    const BlockView view = chatTheme().blockquote()({BlockView::label(), {}});
    EXPECT_EQ(view.textStyle().applied({}).foregroundColor, Ink::secondary());
    EXPECT_EQ(view.padding().left(), 12);
    ASSERT_TRUE(view.leadingBar());
    EXPECT_EQ(view.leadingBar()->width, 2);
    EXPECT_EQ(view.leadingBar()->ink, Ink::primary().faded(0.18));
}

TEST(ChatTheme, listItemsStandApart)
{
    const BlockView view = chatTheme().listItem()({BlockView::label(), {}});
    EXPECT_EQ(view.margin(), (BlockMargin{2, 2}));
}

TEST(ChatTheme, theLanguageOfABlockStandsAboveItInUpperCase)
{
    const BlockView view = fenced(text(" python\n"));
    ASSERT_TRUE(view.caption());
    EXPECT_EQ(view.caption()->text, text("PYTHON"));
    EXPECT_EQ(view.caption()->distance, 4);
    const TextAttributes caption = view.caption()->style.applied({});
    EXPECT_EQ(caption.fontProperties.size, 9);
    EXPECT_EQ(caption.tracking, 0.6);
    EXPECT_EQ(view.background()->radius, 6);
}

TEST(ChatTheme, aBlockWithoutALanguageHasNoLabelAndPlainText)
{
    EXPECT_FALSE(fenced(std::nullopt).caption());
    EXPECT_FALSE(fenced(text("  ")).caption());
    const AttributedString plain =
        chatHighlighter()->highlightCode(text("def x(): return 1"), std::nullopt, {});
    ASSERT_EQ(plain.runs().size(), 1);
    EXPECT_EQ(plain.runs().first().attributes, TextAttributes());
}

TEST(ChatTheme, codeIsElevenPointsOnAFaintSurface)
{
    for (const BlockView &view :
         {fenced(python), toolPayloadTheme().codeBlock()({{}, {}, BlockView::label()})}) {
        const TextAttributes attributes = view.textStyle().applied({});
        EXPECT_EQ(attributes.fontProperties.size, 11);
        EXPECT_EQ(attributes.foregroundColor, Ink::primary().faded(0.88));
        EXPECT_EQ(view.background()->fill, Ink::primary().faded(0.04));
        EXPECT_EQ(view.padding(), QMarginsF(8, 8, 8, 8));
        EXPECT_TRUE(view.isScrolling());
        EXPECT_EQ(view.scrollBar(), BlockView::ScrollBar::Hidden);
    }
}

TEST(ChatTheme, errorsAreRed)
{
    const BlockView view = toolErrorTheme().codeBlock()({{}, {}, BlockView::label()});
    EXPECT_EQ(view.textStyle().applied({}).foregroundColor, Ink::failure());
    EXPECT_EQ(view.background()->fill, Ink::failure().faded(0.08));
}

TEST(ChatHighlighter, coloursTheTokensAndLeavesTheRest)
{
    const QString code = text("x = 1  # one\n");
    const AttributedString coloured = chatHighlighter()->highlightCode(code, python, {});
    EXPECT_EQ(coloured.plainText(), code);
    QStringList tokens;
    for (const TextRun &run : coloured.runs()) {
        if (run.attributes.foregroundColor)
            tokens.append(run.text);
    }
    EXPECT_EQ(tokens, (QStringList{text("1"), text("# one")}));
}

TEST(ChatHighlighter, codeThatGrowsLooksLikeTheWhole)
{
    const QString code =
        text("def f(x):\n    '''doc'''\n    return \"a\" + str(12)  # end\n\"\"\"");
    const auto growing = chatHighlighter()->highlight(python, {});
    for (qsizetype size = 0; size <= code.size(); ++size) {
        const QString piece = code.first(size);
        EXPECT_LE(growing->grow(piece), size);
        EXPECT_EQ(growing->text(), piece);
        const AttributedString whole = chatHighlighter()->highlightCode(piece, python, {});
        EXPECT_EQ(growing->part(0, size), whole) << size;
        const qsizetype half = size / 2;
        EXPECT_EQ(growing->part(0, half).plainText() + growing->part(half, size).plainText(),
                  piece);
    }
}

TEST(ChatHighlighter, longCodeGetsItsColoursFromAnotherThread)
{
    QString code;
    while (code.size() <= CodeHighlighter::longText)
        code += text("def f(x):\n    return 12  # end\n");
    const AttributedString whole = chatHighlighter()->highlightCode(code, python, {});
    const auto growing = chatHighlighter()->highlight(python, {});
    std::optional<qsizetype> changed;
    growing->setChanged([&](qsizetype from) { changed = from; });
    EXPECT_EQ(growing->grow(code), 0);
    EXPECT_EQ(growing->text(), code);
    EXPECT_EQ(growing->part(0, code.size()).runs().size(), 1) << "plain until then";
    ASSERT_TRUE(test::waitUntil([&] { return changed.has_value(); }));
    EXPECT_EQ(*changed, 0);
    EXPECT_EQ(growing->part(0, code.size()), whole);

    changed.reset();
    const QString longer = code + text("class C: pass\n");
    EXPECT_EQ(growing->grow(longer), code.size());
    ASSERT_TRUE(test::waitUntil([&] { return changed.has_value(); }));
    EXPECT_EQ(growing->part(0, longer.size()),
              chatHighlighter()->highlightCode(longer, python, {}));
}

TEST(ChatHighlighter, longCodeMayGoBeforeItsColoursHaveCome)
{
    auto growing = chatHighlighter()->highlight(python, {});
    bool told = false;
    growing->setChanged([&](qsizetype) { told = true; });
    (void)growing->grow(QString(2 * CodeHighlighter::longText, u'1'));
    growing.reset();
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    EXPECT_FALSE(told);
}

} // namespace velto::presentation
