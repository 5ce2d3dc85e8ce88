// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "codegenerator.h"

#include "presentation/code/growingcode.h"
#include "presentation/code/language.h"
#include "presentation/code/syntaxhighlighter.h"

#include <QFile>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using velto::presentation::GrowingCode;
using velto::presentation::SyntaxHighlighter;
using velto::presentation::TokenRange;
using velto::presentation::TokenRanges;

namespace
{

const std::vector<QString> families = [] {
    std::vector<QString> names;
    for (const char *name :
         {"swift", "js", "ts", "json", "sh", "yaml", "py", "html", "css", "rb", "go", "rs"})
        names.push_back(QString::fromLatin1(name));
    return names;
}();

TokenRanges before(const TokenRanges &tokens, qsizetype position)
{
    TokenRanges kept;
    std::ranges::copy_if(tokens, std::back_inserter(kept),
                         [&](const TokenRange &token) { return token.range.start < position; });
    return kept;
}

/// Appends a piece and says what is wrong afterwards, if anything.
QString appended(GrowingCode &code, const QString &family, QStringView piece)
{
    const TokenRanges earlier = code.tokens();
    const qsizetype from = code.append(piece);
    if (code.tokens() != SyntaxHighlighter::tokenRanges(code.text(), family))
        return QStringLiteral("not the tokens of the whole text");
    if (before(code.tokens(), from) != before(earlier, from))
        return QStringLiteral("more has changed than was said");
    return {};
}

QString grownInPieces(const QString &text, const QString &family, qsizetype size)
{
    GrowingCode code(family);
    for (qsizetype at = 0; at < text.size(); at += size) {
        const QString wrong = appended(code, family, QStringView(text).mid(at, size));
        if (!wrong.isEmpty())
            return wrong + QStringLiteral(" at %1").arg(at);
    }
    return {};
}

QString sample(const QString &family)
{
    QFile file(QStringLiteral(VELTO_TEST_DATA "/sample.") + family);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

TokenRanges grownTokens(const QString &language, const QStringList &pieces)
{
    GrowingCode code(language);
    for (const QString &piece : pieces)
        code.append(piece);
    return code.tokens();
}

} // namespace

TEST(GrowingCode, hasTheTokensOfTheWholeAfterEachCharacterOfRealCode)
{
    for (const QString &family : families) {
        const QString text = sample(family);
        ASSERT_GT(text.size(), 1000);
        EXPECT_EQ(grownInPieces(text, family, 1).toStdString(), "") << family.toStdString();
        EXPECT_EQ(grownInPieces(text, family, 37).toStdString(), "") << family.toStdString();
    }
}

RC_GTEST_PROP(GrowingCode, hasTheTokensOfTheWholeAfterEachCharacterOfSoup, ())
{
    const QString family = *rc::gen::elementOf(families);
    const QString text = *tokenSoup({QStringLiteral("if"), QStringLiteral("on")});
    RC_ASSERT(grownInPieces(text, family, 1).isEmpty());
}

RC_GTEST_PROP(GrowingCode, hasTheTokensOfTheWholeAfterEachPieceOfMutatedCode, ())
{
    const QString family = *rc::gen::elementOf(families);
    const QString text = *mutated(sample(family), {QStringLiteral("if"), QStringLiteral("on")});
    RC_ASSERT(grownInPieces(text, family, *rc::gen::inRange<qsizetype>(1, 20)).isEmpty());
}

TEST(GrowingCode, settlesAQuoteWhenItsEndArrives)
{
    const QStringList pieces{QStringLiteral("a = \"if 'b' 1"), QStringLiteral("2\" if")};
    const TokenRanges tokens = grownTokens(QStringLiteral("py"), pieces);
    EXPECT_EQ(tokens, SyntaxHighlighter::tokenRanges(pieces.join(QString()), u"py"));
    ASSERT_EQ(tokens.size(), 2U);
    EXPECT_EQ(tokens[0].range.length(), 11);
}

TEST(GrowingCode, takesABlockCommentBackWhenALineCommentStartsAtItsEnd)
{
    EXPECT_EQ(grownTokens(QStringLiteral("js"), {QStringLiteral("/* if *"), QStringLiteral("/")}),
              SyntaxHighlighter::tokenRanges(u"/* if */", u"js"));
    EXPECT_EQ(grownTokens(QStringLiteral("js"), {QStringLiteral("/* if */"), QStringLiteral("/")}),
              SyntaxHighlighter::tokenRanges(u"/* if *//", u"js"));
}

TEST(GrowingCode, leavesWhatIsSettledAlone)
{
    GrowingCode code(u"js");
    code.append(u"let a = 'x';\n// it's done\n");
    EXPECT_EQ(code.append(u"if (b) return 12"), 26);
    EXPECT_EQ(code.append(u".5"), 40);
    EXPECT_EQ(code.append(u";\n"), 40);
    EXPECT_EQ(code.append(u"x"), 46);
}

TEST(GrowingCode, hasNoTokensWithoutAKnownLanguage)
{
    GrowingCode code(u"cobol");
    EXPECT_EQ(code.append(u"if 1"), 4);
    EXPECT_TRUE(code.tokens().empty());
    EXPECT_EQ(code.text(), u"if 1");
}
