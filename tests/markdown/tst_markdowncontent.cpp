// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/markdowncontent.h"

#include "plainparse.h"

#include <gtest/gtest.h>

#include <unordered_set>

using namespace velto::markdown;
using velto::test::dump;

namespace
{

QString dumped(const QString &text)
{
    return dump(MarkdownContent(text).blocks);
}

struct Construct
{
    const char *name;
    const char16_t *text;
    const char *blocks;
};

void PrintTo(const Construct &construct, std::ostream *out)
{
    *out << construct.name;
}

class MarkdownConstruct : public testing::TestWithParam<Construct>
{};

const Construct constructs[] = {
    {"paragraph", u"one\n\ntwo", "paragraph\n  text \"one\"\nparagraph\n  text \"two\"\n"},
    {"softBreak", u"a\nb", "paragraph\n  text \"a\"\n  soft break\n  text \"b\"\n"},
    {"lineBreakOfBlanks", u"a  \nb", "paragraph\n  text \"a\"\n  line break\n  text \"b\"\n"},
    {"lineBreakOfBackslash", u"a\\\nb", "paragraph\n  text \"a\"\n  line break\n  text \"b\"\n"},
    {"headings", u"# a\n###### b ##\n####### c",
     "heading 1\n  text \"a\"\nheading 6\n  text \"b\"\nparagraph\n  text \"####### c\"\n"},
    {"underlinedHeadings", u"a\n=\n\nb\n-", "heading 1\n  text \"a\"\nheading 2\n  text \"b\"\n"},
    {"thematicBreaks", u"***\n---\n_ _ _", "thematic break\nthematic break\nthematic break\n"},
    {"quote", u"> a\nlazy",
     "quote\n  paragraph\n    text \"a\"\n    soft break\n    text \"lazy\"\n"},
    {"quoteInQuote", u"> > a\n>\n> b",
     "quote\n  quote\n    paragraph\n      text \"a\"\n  paragraph\n    text \"b\"\n"},
    {"tightBullets", u"- a\n- b",
     "bullets tight=1\n  item\n    paragraph\n      text \"a\"\n  item\n    paragraph\n"
     "      text \"b\"\n"},
    {"looseBullets", u"- a\n\n- b",
     "bullets tight=0\n  item\n    paragraph\n      text \"a\"\n  item\n    paragraph\n"
     "      text \"b\"\n"},
    {"numbersWithStart", u"2. a",
     "numbers tight=1 start=2\n  item\n    paragraph\n      text \"a\"\n"},
    {"listInList", u"- a\n  1. b\n     - c",
     "bullets tight=1\n  item\n    paragraph\n      text \"a\"\n    numbers tight=1 start=1\n"
     "      item\n        paragraph\n          text \"b\"\n        bullets tight=1\n          "
     "item\n"
     "            paragraph\n              text \"c\"\n"},
    {"anotherBulletBeginsAnotherList", u"- a\n* b",
     "bullets tight=1\n  item\n    paragraph\n      text \"a\"\nbullets tight=1\n  item\n"
     "    paragraph\n      text \"b\"\n"},
    {"oneCheckboxMakesTasks", u"- a\n- [x] b\n- c",
     "tasks tight=1\n  task 0\n    paragraph\n      text \"a\"\n  task 1\n    paragraph\n"
     "      text \"b\"\n  task 0\n    paragraph\n      text \"c\"\n"},
    {"numberedTasks", u"1. [ ] a", "tasks tight=1\n  task 0\n    paragraph\n      text \"a\"\n"},
    {"fence", u"```cpp x\n a\n\n```\nb",
     "code block \"cpp x| a\\n\\n\"\nparagraph\n  text \"b\"\n"},
    {"openFence", u"~~~\na", "code block \"|a\\n\"\n"},
    {"indentedCode", u"    a\n\n      b\n\n", "code block \"|a\\n\\n  b\\n\"\n"},
    {"fenceInItem", u"- a\n  ```\n  b\n  ```",
     "bullets tight=1\n  item\n    paragraph\n      text \"a\"\n    code block \"|b\\n\"\n"},
    {"htmlBlock", u"<div>\n*a*\n\n*b*",
     "html block \"<div>\\n*a*\\n\"\nparagraph\n  emphasis\n    text \"b\"\n"},
    {"table", u"|a|b|c|d|\n|-|:-|:-:|-:|\n|1|2|\n\n> |x|\n> |-|",
     "table 4\n  row\n    cell\n      text \"a\"\n    cell\n      text \"b\"\n    cell\n"
     "      text \"c\"\n    cell\n      text \"d\"\n  row\n    cell\n      text \"1\"\n    cell\n"
     "      text \"2\"\n    cell\n    cell\nquote\n  table 1\n    row\n      cell\n"
     "        text \"x\"\n"},
    {"pipeInCell", u"a|b\n-|-\n`x \\| y`|*z*",
     "table 2\n  row\n    cell\n      text \"a\"\n    cell\n      text \"b\"\n  row\n    cell\n"
     "      code \"x | y\"\n    cell\n      emphasis\n        text \"z\"\n"},
    {"emphasis", u"*a* _b_ **c** __d__ ***e***",
     "paragraph\n  emphasis\n    text \"a\"\n  text \" \"\n  emphasis\n    text \"b\"\n  text \" "
     "\"\n"
     "  strong\n    text \"c\"\n  text \" \"\n  strong\n    text \"d\"\n  text \" \"\n  emphasis\n"
     "    strong\n      text \"e\"\n"},
    {"strikethrough", u"~a~ ~~*b*~~",
     "paragraph\n  strikethrough\n    text \"a\"\n  text \" \"\n  strikethrough\n    emphasis\n"
     "      text \"b\"\n"},
    {"code", u"`` a`b ``", "paragraph\n  code \"a`b\"\n"},
    {"link", u"[*a* `b`](/u \"t\")",
     "paragraph\n  link /u\n    emphasis\n      text \"a\"\n    text \" \"\n    code \"b\"\n"},
    {"linkWithoutDestination", u"[a]()", "paragraph\n  link \n    text \"a\"\n"},
    {"linkByReference", u"[a][B] [b]\n\n[b]: <x y>",
     "paragraph\n  link x y\n    text \"a\"\n  text \" \"\n  link x y\n    text \"b\"\n"},
    {"image", u"![a *b*](p.png)",
     "paragraph\n  image p.png\n    text \"a \"\n    emphasis\n      text \"b\"\n"},
    {"imageInLink", u"[![a](p)](u)", "paragraph\n  link u\n    image p\n      text \"a\"\n"},
    {"angleLink", u"<https://x.y>", "paragraph\n  link https://x.y\n    text \"https://x.y\"\n"},
    {"bareLink", u"see https://x.org.",
     "paragraph\n  text \"see \"\n  link https://x.org\n    text \"https://x.org\"\n  text "
     "\".\"\n"},
    {"bareHost", u"www.x.org", "paragraph\n  link http://www.x.org\n    text \"www.x.org\"\n"},
    {"bareAddress", u"to a@b.org",
     "paragraph\n  text \"to \"\n  link mailto:a@b.org\n    text \"a@b.org\"\n  text \"\"\n"},
    {"html", u"a<br/><b>c</b><!-- d -->",
     "paragraph\n  text \"a\"\n  html \"<br/>\"\n  html \"<b>\"\n  text \"c\"\n  html \"</b>\"\n"
     "  html \"<!-- d -->\"\n"},
    {"entitiesAndEscapes", u"&lt;&#65;\\*\\\\", "paragraph\n  text \"<A*\\\"\n"},
    {"noFootnotes", u"a[^1]\n\n[^1]: b", "paragraph\n  text \"a\"\n  link b\n    text \"^1\"\n"},
};

} // namespace

TEST_P(MarkdownConstruct, isReadAs)
{
    EXPECT_EQ(dumped(QString::fromUtf16(GetParam().text)).toStdString(), GetParam().blocks);
}

INSTANTIATE_TEST_SUITE_P(All, MarkdownConstruct, testing::ValuesIn(constructs),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(MarkdownContent, ofAnEmptyTextIsEmpty)
{
    EXPECT_TRUE(MarkdownContent(QStringView()).blocks.isEmpty());
    EXPECT_TRUE(MarkdownContent(u"\n \n").blocks.isEmpty());
}

TEST(MarkdownContent, alignsTheColumnsOfATable)
{
    using Alignment = RawTableColumnAlignment;
    const MarkdownContent content(u"|n|l|c|r|\n|-|:-|:-:|-:|");
    ASSERT_EQ(content.blocks.size(), 1);
    EXPECT_EQ(
        std::get<blocks::Table>(content.blocks[0].kind).columnAlignments,
        (QList<Alignment>{Alignment::None, Alignment::Left, Alignment::Center, Alignment::Right}));
}

TEST(MarkdownContent, hasNothingForADefinition)
{
    EXPECT_TRUE(MarkdownContent(u"[a]: /u").blocks.isEmpty());
}

TEST(MarkdownContent, takesTheFirstDefinitionOfALabel)
{
    EXPECT_EQ(dumped(u"[a]\n\n[A]: /1\n[a]: /2"_qs).toStdString(),
              "paragraph\n  link /1\n    text \"a\"\n");
}

TEST(MarkdownContent, takesEveryLineEnd)
{
    const MarkdownContent expected(u"a\n\n- b\n- c\n");
    EXPECT_EQ(MarkdownContent(u"a\r\n\r\n- b\r\n- c\r\n"), expected);
    EXPECT_EQ(MarkdownContent(u"a\r\r- b\r- c\r"), expected);
}

TEST(MarkdownContent, replacesWhatIsNoCharacter)
{
    EXPECT_EQ(MarkdownContent(QString(QChar(0))), MarkdownContent(u"\ufffd"));
    EXPECT_EQ(MarkdownContent(QString(QChar(0xd83d))).blocks.size(), 1);
}

TEST(MarkdownContent, keepsAByteOrderMarkWithinAText)
{
    const QString text = QStringLiteral("a ") + QChar(0xfeff) + u"*"_qs + QChar(0xfeff) + u"b*"_qs;
    EXPECT_EQ(dumped(text),
              QStringLiteral("paragraph\n  text \"a %1\"\n  emphasis\n    text \"%1b\"\n")
                  .arg(QChar(0xfeff)));
    EXPECT_EQ(MarkdownContent(QString(QChar(0xfeff)) + u"# a"_qs), MarkdownContent(u"# a"));
}

TEST(MarkdownContent, isEqualAndHashesEqualForEqualTexts)
{
    const QString text = u"- [x] a\n\n|b|\n|:-|\n|*c*|\n\n```d\ne\n```\n> ![f](g)"_qs;
    EXPECT_EQ(MarkdownContent(text), MarkdownContent(text));
    EXPECT_EQ(qHash(MarkdownContent(text), 7), qHash(MarkdownContent(text), 7));
}

TEST(MarkdownContent, differsWhereverATextDiffers)
{
    const QStringList texts{u"a"_qs,        u"*a*"_qs,       u"**a**"_qs,      u"~a~"_qs,
                            u"`a`"_qs,      u"# a"_qs,       u"## a"_qs,       u"- a"_qs,
                            u"1. a"_qs,     u"2. a"_qs,      u"- [ ] a"_qs,    u"- [x] a"_qs,
                            u"> a"_qs,      u"    a"_qs,     u"```b\na"_qs,    u"[a](b)"_qs,
                            u"[a](c)"_qs,   u"![a](b)"_qs,   u"<a>"_qs,        u"x <a>"_qs,
                            u"|a|\n|-|"_qs, u"|a|\n|:-|"_qs, u"|a|\n|-:|"_qs,  u"|a|\n|:-:|"_qs,
                            u"---"_qs,      u"- a\n- b"_qs,  u"- a\n\n- b"_qs, u"a\nb"_qs,
                            u"a  \nb"_qs,   QString(),       u"1. a\n1. b"_qs, u"1. a\n\n1. b"_qs};
    std::unordered_set<MarkdownContent> distinct;
    for (const QString &text : texts)
        distinct.insert(MarkdownContent(text));
    EXPECT_EQ(distinct.size(), static_cast<std::size_t>(texts.size()));
    std::unordered_set<std::size_t> hashes;
    for (const MarkdownContent &content : distinct)
        hashes.insert(std::hash<MarkdownContent>()(content));
    EXPECT_EQ(hashes.size(), distinct.size());
}

TEST(MarkdownContent, rendersMarkdownThatReadsTheSame)
{
    const QString text =
        u"# a *b*\n\n1. c\n2. d\n\n> e `f`\n\n``` g\nh\n```\n\n- [x] i\n- [ ] j\n\n"
        "| k | l |\n| :-: | --- |\n| m | ~n~ |\n\n[o](p) ![q](r) z\\\ns\n"_qs;
    const MarkdownContent content(text);
    EXPECT_EQ(MarkdownContent(content.renderMarkdown()), content)
        << content.renderMarkdown().toStdString();
}

TEST(MarkdownContent, rendersPlainText)
{
    EXPECT_EQ(MarkdownContent(u"# a *b*\n\n- c\n- `d`\n\n[e](f)").renderPlainText(),
              u"a b\n\n  - c\n  - d\n\ne\n"_qs);
}

TEST(MarkdownContent, rendersHtmlWithoutWhatTheTextBringsAlong)
{
    EXPECT_EQ(
        MarkdownContent(u"**a** <b>\n\n<script>\n\n[x](javascript:y)\n").renderHTML(),
        u"<p><strong>a</strong> <!-- raw HTML omitted --></p>\n<!-- raw HTML omitted -->\n"_qs);
}

TEST(MarkdownContent, rendersBlocksThatWereNeverParsed)
{
    const MarkdownContent content(QList<BlockNode>{
        {blocks::Heading{2, {{inlines::Text{u"a"_qs}}}}},
        {blocks::TaskList{true, {{true, {{blocks::Paragraph{{{inlines::Code{u"b"_qs}}}}}}}}}},
        {blocks::ThematicBreak{}}});
    EXPECT_EQ(content.renderMarkdown(), u"## a\n\n- [x] `b`\n\n-----\n"_qs);
}

TEST(MarkdownContent, skipsWhatTheLibraryCannotHoldWhenRendering)
{
    const MarkdownContent content(
        QList<BlockNode>{{blocks::Heading{1, {{inlines::Text{u"a"_qs}}}}}, {blocks::Paragraph{}}});
    EXPECT_TRUE(content.renderHTML().startsWith(u"<h1>a</h1>\n"_qs));
    EXPECT_EQ(MarkdownContent().renderMarkdown(), u"\n"_qs);
    EXPECT_EQ(MarkdownContent().renderPlainText(), u"\n"_qs);
    EXPECT_EQ(MarkdownContent().renderHTML(), QString());
}
