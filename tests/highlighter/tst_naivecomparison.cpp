// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "codegenerator.h"
#include "naivehighlighter.h"

#include "presentation/code/syntaxhighlighter.h"

#include <QFile>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using velto::presentation::SyntaxHighlighter;
using velto::presentation::TokenColor;
using velto::presentation::TokenRange;

namespace velto::presentation
{

void showValue(const TokenRange &token, std::ostream &out)
{
    out << '[' << token.range.start << ", " << token.range.end << ") "
        << static_cast<int>(token.color);
}

std::ostream &operator<<(std::ostream &out, const TokenRange &token)
{
    showValue(token, out);
    return out;
}

} // namespace velto::presentation

namespace
{

QString sample(const QString &family)
{
    QFile file(QStringLiteral(VELTO_TEST_DATA "/sample.") + family);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

rc::Gen<QString> anyFamily()
{
    const QStringList families = languageFamilies();
    return rc::gen::elementOf(std::vector<QString>(families.begin(), families.end()));
}

class EachFamily : public testing::TestWithParam<QString>
{};

} // namespace

TEST_P(EachFamily, colorsRealCodeByTheRules)
{
    const QString text = sample(GetParam());
    ASSERT_GT(text.size(), 1000);
    const auto expected = naiveTokens(text, GetParam());
    EXPECT_GT(expected.size(), 40U);
    EXPECT_EQ(SyntaxHighlighter::tokenRanges(text, GetParam()), expected);
}

TEST_P(EachFamily, colorsRealCodeWithOtherLineEndsByTheRules)
{
    for (const char16_t *lineEnd : {u"\r\n", u"\r", u"\u2028"}) {
        QString text = sample(GetParam());
        text.replace(u'\n', QString::fromUtf16(lineEnd));
        EXPECT_EQ(SyntaxHighlighter::tokenRanges(text, GetParam()), naiveTokens(text, GetParam()));
    }
}

INSTANTIATE_TEST_SUITE_P(Highlighter, EachFamily, testing::ValuesIn(languageFamilies()),
                         [](const auto &info) { return info.param.toStdString(); });

RC_GTEST_PROP(NaiveComparison, soupIsColoredByTheRules, ())
{
    const QString family = *anyFamily();
    const QString text = *tokenSoup(keywordsOf(family));
    RC_ASSERT(SyntaxHighlighter::tokenRanges(text, family) == naiveTokens(text, family));
}

RC_GTEST_PROP(NaiveComparison, mutatedCodeIsColoredByTheRules, ())
{
    const QString family = *anyFamily();
    const QString text = *mutated(sample(family), keywordsOf(family));
    RC_ASSERT(SyntaxHighlighter::tokenRanges(text, family) == naiveTokens(text, family));
}

TEST(NaiveComparison, longTokensAreColoredByTheRules)
{
    const QString filling = QString(20'000, u'x');
    for (const QString &text :
         {u'"' + filling + u'"', u'"' + filling, QStringLiteral("/*") + filling + u"*/"_qs,
          QStringLiteral("// ") + filling, QString(20'000, u'7'), QString(20'000, u'\\') + u'"'}) {
        EXPECT_EQ(SyntaxHighlighter::tokenRanges(text, u"js"),
                  naiveTokens(text, QStringLiteral("js")));
    }
}
