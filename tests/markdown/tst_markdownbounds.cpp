// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/incrementalmarkdown.h"

#include "plainparse.h"
#include "support/cputime.h"

#include <QThread>

#include <gtest/gtest.h>

using namespace velto::markdown;
using velto::test::dump;
using velto::test::plainParse;

namespace
{

struct Hostile
{
    const char *name;
    QString text;
};

QString times(qsizetype count, const QString &unit)
{
    return unit.repeated(count);
}

/// Shapes that would take the library minutes, or the stack.
QList<Hostile> hostileTexts()
{
    return {
        {"wideTable", times(5000, u"|a"_qs) + u"\n"_qs + times(5000, u"|-"_qs) + u"\n|b\n"_qs},
        {"wideRow", u"a|b\n-|-\n"_qs + times(10000, u"|a"_qs) + u"\n\nc"_qs},
        {"filledRows", times(120, u"|a"_qs) + u"\n"_qs + times(120, u"|-"_qs) + u"\n"_qs +
                           times(8000, u"|b\n"_qs)},
        {"delimiterRows", times(8000, u"-|-\n-|-|-\n"_qs)},
        {"quotesInALine", times(30000, u">"_qs) + u"a\n"_qs + times(1000, u"b\n"_qs)},
        {"bulletsInALine", times(20000, u"- "_qs) + u"a"_qs + times(5000, u"\n"_qs)},
        {"numbersInALine", times(8000, u"1. "_qs) + u"a"_qs},
        {"links", times(8000, u"*[a](b)"_qs)},
        {"images", times(8000, u"![[]()"_qs)},
        {"instructions", times(10000, u"a <? b "_qs)},
        {"declarations", times(10000, u"a <!A b "_qs)},
        {"sections", times(10000, u"a <![CDATA[ b "_qs)},
        {"addresses", times(10000, u"a@b."_qs)},
        {"longTarget", u"[a]: /"_qs + times(20000, u"u"_qs) + u"\n\n"_qs + times(8000, u"[a] "_qs)},
        {"nestedEmphasis", times(20000, u"*"_qs) + u"a"_qs + times(20000, u"*"_qs)},
        {"nestedLinks", times(8000, u"!["_qs) + u"a"_qs + times(8000, u"](b)"_qs)},
        {"brackets", u"[a]: b\n\n"_qs + times(10000, u"["_qs) + u"a"_qs + times(10000, u"]"_qs)},
        {"zeros", QString(200000, QChar(0))},
        {"addressesInAWord", times(100000, u"http://a.<"_qs)},
        {"hostsThatAreNone", times(200000, u"www._"_qs)},
        {"mailThatIsNone", times(160000, u"w.aba@"_qs)},
        {"struckOrNot", times(120000, u"~-~~  ~="_qs)},
        {"emphasisOrNot", times(120000, u"} _*__-*"_qs)},
        {"oneHeader", u"*\n"_qs + times(200000, u"-:*\n"_qs) + u"-:"_qs},
        {"returns", times(1000000, u"a\r"_qs)},
        {"manyHeadings", times(250000, u"# a\n"_qs)},
        {"manyItems", times(60000, u"- a\n"_qs)},
        {"manyDefinitions", times(8000, u"[a]: b\n"_qs)},
    };
}

int depthOf(const QList<InlineNode> &nodes);

template<typename Node>
int depthOf(const Node &)
{
    return 0;
}
int depthOf(const inlines::Emphasis &node)
{
    return 1 + depthOf(node.children);
}
int depthOf(const inlines::Strong &node)
{
    return 1 + depthOf(node.children);
}

int depthOf(const QList<InlineNode> &nodes)
{
    int deepest = 0;
    for (const InlineNode &node : nodes)
        deepest = std::max(deepest,
                           std::visit([](const auto &kind) { return depthOf(kind); }, node.kind));
    return deepest;
}

int quoteDepth(const QList<BlockNode> &nodes)
{
    if (nodes.isEmpty() || !std::holds_alternative<blocks::Blockquote>(nodes.first().kind))
        return 0;
    return 1 + quoteDepth(std::get<blocks::Blockquote>(nodes.first().kind).children);
}

} // namespace

TEST(MarkdownBounds, everyHostileTextIsReadWithoutMuchStack)
{
    bool isDone = false;
    QThread *thread = QThread::create([&isDone] {
        for (const Hostile &hostile : hostileTexts()) {
            const MarkdownContent content(hostile.text);
            EXPECT_FALSE(content.blocks.isEmpty() && hostile.name != std::string("manyDefinitions"))
                << hostile.name;
            const MarkdownContent copy =
                content; // NOLINT(performance-unnecessary-copy-initialization)
            EXPECT_EQ(qHash(copy), qHash(content)) << hostile.name;
            EXPECT_EQ(MarkdownContent(hostile.text), content) << hostile.name;
            EXPECT_FALSE(content.renderPlainText().isEmpty()) << hostile.name;
        }
        isDone = true;
    });
    thread->setStackSize(512 * 1024);
    thread->start();
    thread->wait();
    delete thread;
    EXPECT_TRUE(isDone);
}

// A release build needs a fiftieth of this, the library alone many times as much for most.
TEST(MarkdownBounds, everyHostileTextIsReadInTime)
{
    for (const Hostile &hostile : hostileTexts()) {
        const double start = velto::test::processSeconds();
        const MarkdownContent content(hostile.text);
        EXPECT_LT(velto::test::processSeconds() - start, 5) << hostile.name;
    }
}

TEST(MarkdownBounds, aHostileTextThatGrowsIsReadAsTheWhole)
{
    for (const Hostile &hostile : hostileTexts()) {
        IncrementalMarkdown markdown;
        const qsizetype step = std::max<qsizetype>(1, hostile.text.size() / 3);
        for (qsizetype at = 0; at < hostile.text.size(); at += step) {
            const qsizetype end = std::min(at + step, hostile.text.size());
            markdown.append(QStringView(hostile.text).sliced(at, end - at));
            ASSERT_TRUE(markdown.content() == MarkdownContent(QStringView(hostile.text).first(end)))
                << hostile.name << " at " << end;
        }
    }
}

TEST(MarkdownBounds, aTableOfAHundredColumnsIsOne)
{
    const QString text = times(100, u"|a"_qs) + u"\n"_qs + times(100, u"|-"_qs) + u"\n|b\n"_qs;
    EXPECT_EQ(MarkdownContent(text), plainParse(text));
}

TEST(MarkdownBounds, aWiderTableIsAParagraphThatSaysTheSame)
{
    const QString text = u"|a|\n"_qs + times(130, u"|-"_qs);
    EXPECT_EQ(
        dump(MarkdownContent(text).blocks),
        u"paragraph\n  text \"|a|\"\n  soft break\n  text \"%1\"\n"_qs.arg(times(130, u"|-"_qs)));
}

TEST(MarkdownBounds, aRowOfVeryManyPipesEndsItsTable)
{
    const MarkdownContent content(u"a|b\n-|-\n"_qs + times(300, u"|"_qs));
    ASSERT_EQ(content.blocks.size(), 2);
    EXPECT_TRUE(std::holds_alternative<blocks::Table>(content.blocks[0].kind));
    EXPECT_EQ(dump({content.blocks[1]}), u"paragraph\n  text \"%1\"\n"_qs.arg(times(300, u"|"_qs)));
}

TEST(MarkdownBounds, sixtyFourQuotesAreExactAndMoreAreText)
{
    const QString deep = times(64, u">"_qs) + u"a"_qs;
    EXPECT_EQ(MarkdownContent(deep), plainParse(deep));
    const MarkdownContent deeper(times(70, u">"_qs) + u"a"_qs);
    EXPECT_EQ(quoteDepth(deeper.blocks), 64);
    EXPECT_TRUE(dump(deeper.blocks).contains(u"text \">>>>>>a\""_qs));
}

TEST(MarkdownBounds, aRuleOfManyDashesIsARule)
{
    EXPECT_EQ(dump(MarkdownContent(times(200, u"- "_qs)).blocks), u"thematic break\n"_qs);
}

TEST(MarkdownBounds, aLeafThatNestsTooDeepIsPlain)
{
    const QString deep = times(60, u"**"_qs) + u"a"_qs + times(60, u"**"_qs);
    EXPECT_EQ(MarkdownContent(deep), plainParse(deep));
    const QString deeper = times(80, u"**"_qs) + u"a\nb"_qs + times(80, u"**"_qs);
    EXPECT_EQ(dump(MarkdownContent(deeper).blocks),
              u"paragraph\n  text \"%1\"\n"_qs.arg(QString(deeper).replace(u'\n', u' ')));
}

TEST(MarkdownBounds, nothingIsDeeperThanTheBound)
{
    const MarkdownContent content(times(3000, u"*a **b "_qs) + times(3000, u"c** d* "_qs));
    ASSERT_EQ(content.blocks.size(), 1);
    EXPECT_LE(depthOf(std::get<blocks::Paragraph>(content.blocks[0].kind).content), 64);
}

TEST(MarkdownBounds, whatIsTooMuchIsShownAsItStands)
{
    const QString text = times(150000, u"- a\n"_qs);
    const MarkdownContent content(text);
    ASSERT_EQ(content.blocks.size(), 2);
    const auto &list = std::get<blocks::BulletedList>(content.blocks[0].kind);
    const auto &rest = std::get<blocks::CodeBlock>(content.blocks[1].kind);
    EXPECT_GT(list.items.size(), 20000);
    EXPECT_EQ(rest.content, times(150000 - list.items.size(), u"- a\n"_qs));
}

TEST(MarkdownBounds, aHeaderBelowManyLinesIsOne)
{
    const QString text = times(300, u"a line of a log, of some length\n"_qs) + u"|a|b|\n|-|-|\n"_qs;
    const MarkdownContent content(text);
    EXPECT_EQ(content, plainParse(text));
    ASSERT_EQ(content.blocks.size(), 2);
    EXPECT_TRUE(std::holds_alternative<blocks::Table>(content.blocks[1].kind));
}

TEST(MarkdownBounds, aHeaderBelowVeryManyLinesIsText)
{
    const MarkdownContent content(times(20000, u"a\n"_qs) + u"|a|b|\n|-|-|\n"_qs);
    ASSERT_EQ(content.blocks.size(), 1);
    EXPECT_TRUE(dump(content.blocks).endsWith(u"text \"|-|-|\"\n"_qs));
}

TEST(MarkdownBounds, aParagraphOfManyAddressesIsExact)
{
    const QString text =
        times(1000, u"see https://example.org/a_b, <https://example.org> or a@example.org "_qs);
    EXPECT_EQ(MarkdownContent(text), plainParse(text));
}

TEST(MarkdownBounds, aParagraphOfManyNamesWithUnderscoresIsExact)
{
    const QString text = times(10000, u"a_long_name = 2 * b\n"_qs);
    EXPECT_TRUE(MarkdownContent(text) == plainParse(text));
}

TEST(MarkdownBounds, aListOfFiveThousandItemsIsExact)
{
    QString text;
    for (int i = 0; i < 5000; ++i)
        text += QStringLiteral("- item **%1** with `code`\n").arg(i);
    EXPECT_TRUE(MarkdownContent(text) == plainParse(text));
}
