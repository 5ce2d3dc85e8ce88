// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/incrementalmarkdown.h"

#include "plainparse.h"

#include <gtest/gtest.h>

using namespace velto::markdown;

namespace
{

/// Each character an append of its own; equal to the whole after each.
void expectEqualAtEveryPrefix(const QString &text)
{
    IncrementalMarkdown markdown;
    for (qsizetype size = 1; size <= text.size(); ++size) {
        markdown.append(QStringView(text).sliced(size - 1, 1));
        ASSERT_EQ(markdown.content(), MarkdownContent(text.first(size)))
            << text.first(size).toStdString();
    }
}

IncrementalMarkdown markdownOf(const QStringList &parts)
{
    IncrementalMarkdown markdown;
    for (const QString &part : parts)
        markdown.append(part);
    return markdown;
}

struct Growth
{
    const char *name;
    const char16_t *text;
};

void PrintTo(const Growth &growth, std::ostream *out)
{
    *out << growth.name;
}

class GrowingText : public testing::TestWithParam<Growth>
{};

const Growth growths[] = {
    {"lazyContinuation", u"> a\nb\n- c\nd\n\ne"},
    {"underline", u"a\nb\n===\nc\n---\n- d\n  ---\n"},
    {"lateTable", u"a\nb | c\n--|--\nd | e | f\ng\n\nh|i\n:-|"},
    {"lateLooseness", u"- a\n- b\n\n  c\n- d\n\n\n- e\n\nf"},
    {"loosenessByADefinition", u"- a\n\n  [x]: /u\n- b\n- # h\n  [y]: /u\n\n  c\n"},
    {"loosenessInside", u"- a\n  - b\n\n  - c\n- d\n"},
    {"emptyItems", u"-\n\n  a\n-\n- b\n\n-\n"},
    {"lateCheckbox", u"- a\n- b\n- [x](u)\n- [x] c\n- [ ]\n"},
    {"lateDefinition", u"[a] and [B]\n\n> [a]\n\n[a]: /u\n[a]: /v\n[b]: /w 'title\nof two'\n\n[c]"},
    {"definitionThatIsNone", u"[a]\n\n[a]: /u x\n\n[a]: <u\n"},
    {"definitionInAQuote", u"[a]\n\n> - [a]: /u\n\n[a]\n"},
    {"definitionBelowAHeading", u"[a]\n\n[a]: /u\n===\n"},
    {"definitionOfOtherLetters", u"[\u00df] [\u212a]\n\n[SS]: /u\n[k]: /v\n"},
    {"openFence", u"~~~ x&amp;y\na\n~~\n~~~ z\n~~~\nb"},
    {"fenceInAList", u"1. ```\n   a\n\n  b\n   ```\n2. c"},
    {"indentedCode", u"    a\n\n    \n     b\n\n\nc"},
    {"htmlBlocks", u"<div>\na\n\n<!--\n\nb -->\n<pre>\n\n</pre> c\n<?\n?>\n<b>\nx\n\n<!X\n>"},
    {"headingThatEnds", u"# a\n\n## b #\nc"},
    {"tableInAQuote", u"> |a|\n> |-|\n> |b|\n> c\nd\n"},
    {"tabs", u"-\ta\n\n\tb\n\n\t\tc\n>\td"},
    {"lineEnds", u"a\r\nb\r\rc\n\r\nd\r- e\r\n- f\r"},
    {"returnBeforeARest", u"\rx\ny"},
    {"nothingButBlanks", u" \n\t\n  \n"},
    {"breaks", u"a  \nb\\\nc   "},
};

} // namespace

TEST_P(GrowingText, equalsTheWholeAtEveryPrefix)
{
    expectEqualAtEveryPrefix(QString::fromUtf16(GetParam().text));
}

TEST_P(GrowingText, equalsTheWholeHoweverItIsCutInTwo)
{
    const QString text = QString::fromUtf16(GetParam().text);
    for (qsizetype cut = 0; cut <= text.size(); ++cut) {
        IncrementalMarkdown markdown;
        markdown.append(QStringView(text).first(cut));
        markdown.append(QStringView(text).sliced(cut));
        ASSERT_EQ(markdown.content(), MarkdownContent(text)) << cut;
    }
}

INSTANTIATE_TEST_SUITE_P(All, GrowingText, testing::ValuesIn(growths),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(IncrementalMarkdown, isEmptyAtFirst)
{
    const IncrementalMarkdown markdown;
    EXPECT_TRUE(markdown.content().blocks.isEmpty());
    EXPECT_EQ(markdown.firstChangedBlock(), 0);
}

TEST(IncrementalMarkdown, joinsASurrogatePairAndAPairOfLineEnds)
{
    const QString smile = u"\U0001f600"_qs;
    EXPECT_EQ(markdownOf({smile.first(1), smile.last(1)}).content(), MarkdownContent(smile));
    EXPECT_EQ(markdownOf({u"a\r"_qs, u"\n\nb"_qs}).content(), MarkdownContent(u"a\r\n\nb"));
    EXPECT_EQ(markdownOf({u"a\r"_qs, QString(), u"\nb"_qs}).content(), MarkdownContent(u"a\r\nb"));
}

TEST(IncrementalMarkdown, takesLoneSurrogatesZerosAndMarks)
{
    expectEqualAtEveryPrefix(QString(QChar(0xfeff)) + u"a"_qs + QChar(0xd800) + u"\n"_qs +
                             QChar(0xdc00) + QChar(0) + u"\n```\n"_qs + QChar(0xfeff) + u"b\n"_qs +
                             QChar(0xfeff) + QChar(0) + u"\n"_qs);
}

TEST(IncrementalMarkdown, startsAnewAtReset)
{
    IncrementalMarkdown markdown = markdownOf({u"```\na\n"_qs});
    markdown.reset(u"b\r"_qs);
    EXPECT_EQ(markdown.content(), MarkdownContent(u"b"));
    EXPECT_EQ(markdown.firstChangedBlock(), 0);
    markdown.append(u"\nc");
    EXPECT_EQ(markdown.content(), MarkdownContent(u"b\nc"));
    markdown.reset({});
    EXPECT_TRUE(markdown.content().blocks.isEmpty());
    markdown.append(u"d");
    EXPECT_EQ(markdown.content(), MarkdownContent(u"d"));
}

TEST(IncrementalMarkdown, leavesACopyAsItWas)
{
    IncrementalMarkdown markdown = markdownOf({u"- a\n- b\n"_qs});
    const MarkdownContent before = markdown.content();
    markdown.append(u"- [x] c\n\n- d");
    EXPECT_EQ(before, MarkdownContent(u"- a\n- b\n"));
    EXPECT_EQ(markdown.content(), MarkdownContent(u"- a\n- b\n- [x] c\n\n- d"));
}

TEST(IncrementalMarkdown, tellsTheFirstBlockThatMayHaveChanged)
{
    IncrementalMarkdown markdown;
    markdown.append(u"a\n\nb\n\nc");
    EXPECT_EQ(markdown.firstChangedBlock(), 0);
    markdown.append(u"d");
    EXPECT_EQ(markdown.firstChangedBlock(), 2);
    markdown.append(u"\n\ne");
    EXPECT_EQ(markdown.firstChangedBlock(), 2);
    markdown.append(QStringView());
    EXPECT_EQ(markdown.firstChangedBlock(), 4);
}

TEST(IncrementalMarkdown, tellsTheFirstBlockThatADefinitionChanges)
{
    IncrementalMarkdown markdown;
    markdown.append(u"a\n\n[b]\n\nc\n\n");
    markdown.append(u"[b]: /u");
    EXPECT_EQ(markdown.firstChangedBlock(), 1);
    markdown.append(u"\n");
    EXPECT_EQ(markdown.firstChangedBlock(), 3);
    markdown.append(u"x");
    EXPECT_EQ(markdown.firstChangedBlock(), 3);
    EXPECT_EQ(markdown.content(), MarkdownContent(u"a\n\n[b]\n\nc\n\n[b]: /u\nx"));
}

TEST(IncrementalMarkdown, keepsEqualWhenManyDefinitionsComeAndGo)
{
    IncrementalMarkdown markdown;
    QString text;
    for (int i = 0; i < 60; ++i) {
        const QString step =
            QStringLiteral("[%1] [%2]\n\n[%3]: /%1\n").arg(i).arg(i + 7).arg(i / 2);
        for (qsizetype at = 0; at < step.size(); at += 5) {
            markdown.append(QStringView(step).sliced(at, std::min<qsizetype>(5, step.size() - at)));
            text += step.sliced(at, std::min<qsizetype>(5, step.size() - at));
            ASSERT_EQ(markdown.content(), MarkdownContent(text)) << text.toStdString();
        }
    }
}
