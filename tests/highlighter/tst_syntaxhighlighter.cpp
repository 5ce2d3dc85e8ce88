// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/code/language.h"
#include "presentation/code/syntaxhighlighter.h"

#include <QStringList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;
using velto::presentation::HighlightedCode;
using velto::presentation::Language;
using velto::presentation::languageNamed;
using velto::presentation::Rgb;
using velto::presentation::rgb;
using velto::presentation::SyntaxHighlighter;
using velto::presentation::TextRange;
using velto::presentation::TokenColor;
using velto::presentation::TokenRange;

namespace
{

/// Tokens as "kind text".
std::vector<std::string> colored(QStringView language, QStringView text)
{
    static constexpr const char *kinds[] = {"comment ", "string ", "number ", "keyword ", "key "};
    std::vector<std::string> list;
    for (const TokenRange &token : SyntaxHighlighter::tokenRanges(text, language)) {
        const QStringView part = text.sliced(token.range.start, token.range.length());
        list.push_back(kinds[static_cast<int>(token.color)] + part.toString().toStdString());
    }
    return list;
}

bool hasKeyword(QStringView language, const char *word)
{
    const QString text = QString::fromLatin1(word);
    return colored(language, text) == std::vector<std::string>{std::string("keyword ") + word};
}

struct Selection
{
    const char *name;
    const char *like; // another name of the same family
};

class EachName : public testing::TestWithParam<Selection>
{};

} // namespace

TEST_P(EachName, selectsItsFamilyInAnyMixOfCases)
{
    const QString name = QString::fromLatin1(GetParam().name);
    const Language *family = languageNamed(QString::fromLatin1(GetParam().like));
    ASSERT_NE(family, nullptr);
    EXPECT_EQ(languageNamed(name), family);
    EXPECT_EQ(languageNamed(name.toUpper()), family);
    EXPECT_EQ(languageNamed(name.left(1).toUpper() + name.mid(1)), family);
}

INSTANTIATE_TEST_SUITE_P(
    SyntaxHighlighter, EachName,
    testing::Values(Selection{"swift", "swift"}, Selection{"js", "js"},
                    Selection{"javascript", "js"}, Selection{"mjs", "js"}, Selection{"cjs", "js"},
                    Selection{"ts", "ts"}, Selection{"typescript", "ts"}, Selection{"tsx", "ts"},
                    Selection{"jsx", "ts"}, Selection{"json", "json"}, Selection{"jsonc", "json"},
                    Selection{"sh", "sh"}, Selection{"bash", "sh"}, Selection{"zsh", "sh"},
                    Selection{"shell", "sh"}, Selection{"yaml", "yaml"}, Selection{"yml", "yaml"},
                    Selection{"py", "py"}, Selection{"python", "py"}, Selection{"html", "html"},
                    Selection{"xml", "html"}, Selection{"vue", "html"}, Selection{"svelte", "html"},
                    Selection{"css", "css"}, Selection{"scss", "css"}, Selection{"sass", "css"},
                    Selection{"rb", "rb"}, Selection{"ruby", "rb"}, Selection{"go", "go"},
                    Selection{"golang", "go"}, Selection{"rs", "rs"}, Selection{"rust", "rs"}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(SyntaxHighlighter, leavesTextOfAnUnknownLanguageAsItIs)
{
    for (const QStringView name : {u"", u"c", u"c++", u" swift", u"swift ", u"objective-c"})
        EXPECT_THAT(colored(name, u"if \"a\" 1 // x # y"), IsEmpty());
}

TEST(SyntaxHighlighter, knowsAsManyKeywordsAsEachFamilyHas)
{
    const std::pair<QStringView, int> counts[] = {
        {u"swift", 47}, {u"js", 44},  {u"ts", 44}, {u"json", 3}, {u"sh", 19}, {u"yaml", 7},
        {u"py", 31},    {u"html", 0}, {u"css", 0}, {u"rb", 26},  {u"go", 25}, {u"rs", 30}};
    for (const auto &[name, count] : counts)
        EXPECT_EQ(languageNamed(name)->keywords->size(), count) << name.toString().toStdString();
}

TEST(SyntaxHighlighter, colorsKeywordsOfTheOwnFamilyOnly)
{
    EXPECT_TRUE(hasKeyword(u"swift", "fileprivate"));
    EXPECT_TRUE(hasKeyword(u"swift", "Self"));
    EXPECT_TRUE(hasKeyword(u"js", "instanceof"));
    EXPECT_TRUE(hasKeyword(u"tsx", "readonly"));
    EXPECT_TRUE(hasKeyword(u"py", "None"));
    EXPECT_FALSE(hasKeyword(u"py", "none"));
    EXPECT_FALSE(hasKeyword(u"js", "break"));
    EXPECT_FALSE(hasKeyword(u"html", "class"));
    EXPECT_FALSE(hasKeyword(u"css", "import"));
}

TEST(SyntaxHighlighter, colorsWholeWordsOnly)
{
    EXPECT_THAT(colored(u"go", u"if iffy _if if2 go.if"),
                ElementsAre("keyword if", "keyword go", "keyword if"));
    EXPECT_THAT(colored(u"go", u"éif ifé 中if if\u0301 ²if"), ElementsAre("keyword if"));
    EXPECT_THAT(colored(u"go", u"e\u0301if x\u200dif  \u0301if"), ElementsAre("keyword if"));
}

TEST(SyntaxHighlighter, colorsANumberAsOneToken)
{
    EXPECT_THAT(colored(u"css", u"1.5e10"), ElementsAre("number 1.5e10"));
    EXPECT_THAT(colored(u"css", u"1 2.5 3E+4 5e-6 0.75"),
                ElementsAre("number 1", "number 2.5", "number 3E+4", "number 5e-6", "number 0.75"));
}

TEST(SyntaxHighlighter, findsNoNumberInsideAWord)
{
    EXPECT_THAT(colored(u"css", u"abc1 1abc 0x1f 1_000 a1.5"), ElementsAre("number 5"));
}

TEST(SyntaxHighlighter, keepsOfABrokenNumberWhatStandsBeforeItsPoint)
{
    EXPECT_THAT(colored(u"css", u"1.5em"), ElementsAre("number 1"));
    EXPECT_THAT(colored(u"css", u"1.5e+7x"), ElementsAre("number 1"));
    EXPECT_THAT(colored(u"css", u"1e+7x"), IsEmpty());
    EXPECT_THAT(colored(u"css", u"1.2.3"), ElementsAre("number 1.2", "number 3"));
    EXPECT_THAT(colored(u"css", u"1. .5 1e+"), ElementsAre("number 1", "number 5"));
}

TEST(SyntaxHighlighter, takesDigitsOfAllScriptsForNumbers)
{
    EXPECT_THAT(colored(u"css", u"\u0661\u0662.\u0663 ²"),
                ElementsAre("number \u0661\u0662.\u0663"));
    EXPECT_EQ(SyntaxHighlighter::tokenRanges(u"\U0001d7ce1", u"css"),
              (std::vector<TokenRange>{{{0, 3}, TokenColor::Number}}));
}

TEST(SyntaxHighlighter, colorsTextInQuotesOfAllKindsInEveryFamily)
{
    for (const QStringView name : {u"swift", u"js", u"ts", u"json", u"sh", u"yaml", u"py", u"html",
                                   u"css", u"rb", u"go", u"rs"})
        EXPECT_THAT(colored(name, u"\"a\" 'b' `c` \"\""),
                    ElementsAre("string \"a\"", "string 'b'", "string `c`", "string \"\""));
}

TEST(SyntaxHighlighter, letsATextInQuotesSpanLines)
{
    EXPECT_THAT(colored(u"swift", u"\"a\nif\n1\""), ElementsAre("string \"a\nif\n1\""));
}

TEST(SyntaxHighlighter, leavesWhatFollowsAnUnclosedQuoteToOtherRules)
{
    EXPECT_THAT(colored(u"swift", u"\"if 1"), ElementsAre("keyword if", "number 1"));
    EXPECT_THAT(colored(u"swift", u"\" 'a' if"), ElementsAre("string 'a'", "keyword if"));
}

TEST(SyntaxHighlighter, takesAnEscapedQuoteForNoEnd)
{
    EXPECT_THAT(colored(u"js", u"'a\\'b' 'c\\\\' 1"),
                ElementsAre("string 'a\\'b'", "string 'c\\\\'", "number 1"));
    EXPECT_THAT(colored(u"js", u"\\'a' 1"), ElementsAre("string 'a'", "number 1"));
}

TEST(SyntaxHighlighter, leavesTextWithAnEscapedLineEndUnclosed)
{
    for (const QStringView end : {u"\n", u"\r", u"\v", u"\f", u"\x85", u"\u2028", u"\u2029"}) {
        const QString text = QStringLiteral("'a\\%1b' 1").arg(end);
        EXPECT_THAT(colored(u"js", text), ElementsAre("number 1"));
    }
}

TEST(SyntaxHighlighter, colorsCommentsToTheEndOfTheLine)
{
    for (const QStringView name : {u"sh", u"yaml", u"py", u"rb"}) {
        EXPECT_THAT(colored(name, u"# a 1\n2"), ElementsAre("comment # a 1", "number 2"));
        EXPECT_THAT(colored(name, u"// 1 /* 2 */"), ElementsAre("number 1", "number 2"));
    }
    for (const QStringView name : {u"swift", u"js", u"ts", u"css", u"go", u"rs"})
        EXPECT_THAT(colored(name, u"// a 1\n# 2"), ElementsAre("comment // a 1", "number 2"));
    for (const QStringView name : {u"json", u"html"})
        EXPECT_THAT(colored(name, u"// 1\n# 2"), ElementsAre("number 1", "number 2"));
}

TEST(SyntaxHighlighter, endsALineCommentAtALineFeedOnly)
{
    EXPECT_THAT(colored(u"py", u"# a\r\n1"), ElementsAre("comment # a\r", "number 1"));
    EXPECT_THAT(colored(u"py", u"# a\r1\u20282"), ElementsAre("comment # a\r1\u20282"));
}

TEST(SyntaxHighlighter, colorsBlockCommentsToTheirNearestEnd)
{
    for (const QStringView name : {u"swift", u"js", u"ts", u"html", u"css", u"go", u"rs"})
        EXPECT_THAT(colored(name, u"/* 1\n/* */ 2 */"),
                    ElementsAre("comment /* 1\n/* */", "number 2"));
    EXPECT_THAT(colored(u"json", u"/* 1 */"), ElementsAre("number 1"));
    EXPECT_THAT(colored(u"css", u"/*/ 1 */ 2"), ElementsAre("comment /*/ 1 */", "number 2"));
    EXPECT_THAT(colored(u"css", u"/* 1"), ElementsAre("number 1"));
    EXPECT_THAT(colored(u"html", u"<!-- 1 -->"), ElementsAre("number 1"));
}

TEST(SyntaxHighlighter, dropsABlockCommentThatTouchesALineComment)
{
    EXPECT_THAT(colored(u"js", u"/* if\n // a\n 1 */ 2"),
                ElementsAre("keyword if", "comment // a", "number 1", "number 2"));
    EXPECT_THAT(colored(u"js", u"/* if *// 1"), ElementsAre("keyword if", "comment // 1"));
}

TEST(SyntaxHighlighter, takesAQuotedWebAddressForAComment)
{
    EXPECT_THAT(colored(u"js", u"let a = \"https://b.example/1\"; 2\n3"),
                ElementsAre("keyword let", "comment //b.example/1\"; 2", "number 3"));
}

TEST(SyntaxHighlighter, takesAHashInATextForACommentInPython)
{
    EXPECT_THAT(colored(u"py", u"a = \"if #b\" 1\n2"),
                ElementsAre("keyword if", "comment #b\" 1", "number 2"));
}

TEST(SyntaxHighlighter, keepsQuotesInACommentFromClosingInCode)
{
    EXPECT_THAT(colored(u"py", u"# don't\nif 'a' 1"),
                ElementsAre("comment # don't", "keyword if", "number 1"));
}

TEST(SyntaxHighlighter, colorsABareKeyInYaml)
{
    EXPECT_THAT(colored(u"yaml", u"name: x\n  - sub-key : 1\n\tlast\n\n  :"),
                ElementsAre("key name", "key sub-key", "number 1", "key last"));
    EXPECT_THAT(colored(u"yaml", u"a b: 1"), ElementsAre("number 1"));
    EXPECT_THAT(colored(u"yaml", u"\"open: 1"), ElementsAre("key open", "number 1"));
}

TEST(SyntaxHighlighter, colorsAKeyThatIsAKeywordAsKeyword)
{
    EXPECT_THAT(
        colored(u"yaml", u"on: 1\non-call: 2\nonly: 3"),
        ElementsAre("keyword on", "number 1", "keyword on", "number 2", "key only", "number 3"));
    EXPECT_THAT(colored(u"yaml", u"part-2: x"), ElementsAre("number 2"));
}

TEST(SyntaxHighlighter, colorsAQuotedKeyInJsonAsText)
{
    EXPECT_THAT(colored(u"json", u"{\n  \"a\": 1,\n  \"b\": true\n}"),
                ElementsAre("string \"a\"", "number 1", "string \"b\"", "keyword true"));
    EXPECT_THAT(colored(u"json", u"bare: 1"), ElementsAre("key bare", "number 1"));
}

TEST(SyntaxHighlighter, findsAKeyRightBehindATextThatEndsInItsLine)
{
    EXPECT_THAT(colored(u"yaml", u"\"a\n- \"key: 1"),
                ElementsAre("string \"a\n- \"", "key key", "number 1"));
}

TEST(SyntaxHighlighter, startsLinesForKeysAtEveryKindOfLineEnd)
{
    for (const QStringView end : {u"\n", u"\r", u"\r\n", u"\v", u"\f", u"\x85", u"\u2028"})
        EXPECT_THAT(colored(u"yaml", QStringLiteral("1%1b:").arg(end)),
                    ElementsAre("number 1", "key b"));
}

TEST(SyntaxHighlighter, colorsNoKeysElsewhere)
{
    EXPECT_THAT(colored(u"py", u"a: 1"), ElementsAre("number 1"));
}

TEST(SyntaxHighlighter, countsInUtf16Units)
{
    EXPECT_EQ(
        SyntaxHighlighter::tokenRanges(u"\U0001f600 if '\U0001f600'", u"py"),
        (std::vector<TokenRange>{{{3, 5}, TokenColor::Keyword}, {{6, 10}, TokenColor::String}}));
}

TEST(SyntaxHighlighter, hasTheColorOfEachKind)
{
    EXPECT_EQ(rgb(TokenColor::Comment), (Rgb{0.55, 0.60, 0.66}));
    EXPECT_EQ(rgb(TokenColor::String), (Rgb{0.83, 0.40, 0.36}));
    EXPECT_EQ(rgb(TokenColor::Number), (Rgb{0.40, 0.55, 0.85}));
    EXPECT_EQ(rgb(TokenColor::Keyword), (Rgb{0.66, 0.41, 0.78}));
    EXPECT_EQ(rgb(TokenColor::Key), (Rgb{0.36, 0.61, 0.78}));
}

TEST(SyntaxHighlighter, laysTokensOverTheBase)
{
    const HighlightedCode code =
        SyntaxHighlighter::highlightedCode(QStringLiteral("if x"), QStringLiteral("Swift"));
    EXPECT_EQ(code.text, u"if x");
    EXPECT_EQ(code.base.fontSize, 11);
    EXPECT_TRUE(code.base.isMonospaced);
    EXPECT_EQ(code.base.foregroundOpacity, 0.88);
    EXPECT_EQ(code.tokens, (std::vector<TokenRange>{{{0, 2}, TokenColor::Keyword}}));
}

TEST(SyntaxHighlighter, givesTheBaseAloneWithoutAKnownLanguage)
{
    const HighlightedCode base{QStringLiteral("if 1"), {}, {}};
    for (const std::optional<QString> &language :
         {std::optional<QString>(), std::optional(QString()), std::optional(QStringLiteral("c"))})
        EXPECT_EQ(SyntaxHighlighter::highlightedCode(base.text, language), base);
}

TEST(SyntaxHighlighter, givesTheBaseOnAnEmptyText)
{
    EXPECT_EQ(SyntaxHighlighter::highlightedCode(QString(), QStringLiteral("py")),
              HighlightedCode());
}
