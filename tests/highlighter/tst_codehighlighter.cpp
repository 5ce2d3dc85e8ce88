// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/code/codehighlighter.h"
#include "presentation/code/syntaxhighlighter.h"

#include <QEventLoop>

#include <gtest/gtest.h>

#include <memory>

using velto::presentation::CodeHighlighter;
using velto::presentation::SyntaxHighlighter;
using velto::presentation::TokenRanges;

namespace
{

const QString js = QStringLiteral("js");
const QString line = QStringLiteral("let a = 'it' + 12; // don't\n");
const QString longCode = line.repeated(CodeHighlighter::longText / 16);

TokenRanges expected(const QString &text)
{
    return SyntaxHighlighter::tokenRanges(text, js);
}

void waitUntilComplete(CodeHighlighter &highlighter)
{
    QEventLoop loop;
    QObject::connect(&highlighter, &CodeHighlighter::tokensChanged, &loop, [&] {
        if (highlighter.isComplete())
            loop.quit();
    });
    if (!highlighter.isComplete())
        loop.exec();
}

} // namespace

TEST(CodeHighlighter, colorsAShortTextAtOnce)
{
    CodeHighlighter highlighter;
    highlighter.setCode(line, js);
    EXPECT_TRUE(highlighter.isComplete());
    EXPECT_EQ(highlighter.tokens(), expected(line));
}

TEST(CodeHighlighter, colorsALongTextWithoutMakingTheCallerWait)
{
    CodeHighlighter highlighter;
    highlighter.setCode(longCode, js);
    EXPECT_FALSE(highlighter.isComplete());
    EXPECT_TRUE(highlighter.tokens().empty());
    waitUntilComplete(highlighter);
    EXPECT_EQ(highlighter.tokens(), expected(longCode));
}

TEST(CodeHighlighter, keepsTheTokensOfTheStartWhileTheRestIsUnderWay)
{
    CodeHighlighter highlighter;
    highlighter.setCode(line, js);
    highlighter.setCode(longCode, js);
    EXPECT_EQ(highlighter.tokens(), expected(line));
    waitUntilComplete(highlighter);
    EXPECT_EQ(highlighter.tokens(), expected(longCode));
}

TEST(CodeHighlighter, catchesUpWithWhatArrivesMeanwhile)
{
    CodeHighlighter highlighter;
    QString text = longCode;
    highlighter.setCode(text, js);
    for (int i = 0; i < 50; ++i) {
        text += QStringLiteral("if (b) '");
        highlighter.setCode(text, js);
    }
    waitUntilComplete(highlighter);
    EXPECT_EQ(highlighter.tokens(), expected(text));
}

TEST(CodeHighlighter, announcesOnlyWhatHasChanged)
{
    CodeHighlighter highlighter;
    highlighter.setCode(longCode, js);
    waitUntilComplete(highlighter);
    qsizetype from = -1;
    QObject::connect(&highlighter, &CodeHighlighter::tokensChanged, &highlighter,
                     [&](qsizetype position) { from = position; });
    highlighter.setCode(longCode + QStringLiteral("if"), js);
    waitUntilComplete(highlighter);
    EXPECT_EQ(from, longCode.size());
}

TEST(CodeHighlighter, dropsATextThatAnotherHasReplaced)
{
    CodeHighlighter highlighter;
    highlighter.setCode(longCode, js);
    highlighter.setCode(QStringLiteral("1"), js);
    EXPECT_EQ(highlighter.tokens(), expected(QStringLiteral("1")));
    highlighter.setCode(QStringLiteral("'") + longCode, js);
    waitUntilComplete(highlighter);
    EXPECT_EQ(highlighter.tokens(), expected(QStringLiteral("'") + longCode));
}

TEST(CodeHighlighter, startsAnewForAnotherLanguage)
{
    CodeHighlighter highlighter;
    highlighter.setCode(line, js);
    highlighter.setCode(line, QStringLiteral("json"));
    EXPECT_EQ(highlighter.tokens(), SyntaxHighlighter::tokenRanges(line, u"json"));
    highlighter.setCode(line, QString());
    EXPECT_TRUE(highlighter.tokens().empty());
}

TEST(CodeHighlighter, mayGoWhileItsTextIsUnderWay)
{
    auto highlighter = std::make_unique<CodeHighlighter>();
    bool wasTold = false;
    highlighter->setCode(longCode, js);
    QObject::connect(highlighter.get(), &CodeHighlighter::tokensChanged, highlighter.get(),
                     [&] { wasTold = true; });
    highlighter.reset();
    CodeHighlighter other;
    other.setCode(longCode, js);
    waitUntilComplete(other);
    EXPECT_FALSE(wasTold);
    EXPECT_EQ(other.tokens(), expected(longCode));
}
