// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/incrementalmarkdown.h"

#include "generatedtext.h"
#include "plainparse.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace velto::markdown;
using namespace velto::test;

namespace
{

/// What a view sees that changes only the blocks that it is told of.
struct Follower
{
    QList<BlockNode> seen;

    void follow(const IncrementalMarkdown &markdown)
    {
        const QList<BlockNode> &now = markdown.content().blocks;
        const qsizetype kept = markdown.firstChangedBlock();
        RC_ASSERT(kept <= seen.size());
        RC_ASSERT(kept <= now.size());
        seen = seen.first(kept) + now.sliced(kept);
        RC_ASSERT(seen == now);
    }
};

void checkStep(const IncrementalMarkdown &markdown, Follower &follower, const QString &text)
{
    const MarkdownContent whole(text);
    if (!(markdown.content() == whole)) {
        RC_LOG() << text.toUtf8().toPercentEncoding(" \n#*>|-").toStdString() << "\nincremental:\n"
                 << dump(markdown.content().blocks).toStdString() << "\nwhole:\n"
                 << dump(whole.blocks).toStdString();
        RC_FAIL("differs");
    }
    follower.follow(markdown);
}

void checkEveryPrefix(const QString &text)
{
    IncrementalMarkdown markdown;
    Follower follower;
    for (qsizetype size = 1; size <= text.size(); ++size) {
        markdown.append(QStringView(text).sliced(size - 1, 1));
        checkStep(markdown, follower, text.first(size));
    }
}

void checkCuts(const QString &text)
{
    IncrementalMarkdown markdown;
    Follower follower;
    qsizetype at = 0;
    for (const qsizetype cut : *cutsOf(text.size())) {
        markdown.append(QStringView(text).sliced(at, cut - at));
        checkStep(markdown, follower, text.first(cut));
        at = cut;
    }
    markdown.append(QStringView(text).sliced(at));
    checkStep(markdown, follower, text);
}

} // namespace

RC_GTEST_PROP(IncrementalMarkdownProperty, equalsTheWholeAtEveryPrefixOfAGeneratedText, ())
{
    checkEveryPrefix(*generatedText());
}

RC_GTEST_PROP(IncrementalMarkdownProperty, equalsTheWholeHoweverAGeneratedTextIsCut, ())
{
    checkCuts(*generatedText());
}

RC_GTEST_PROP(IncrementalMarkdownProperty, equalsTheWholeHoweverAMutatedTextIsCut, ())
{
    checkCuts(*mutatedText());
}

RC_GTEST_PROP(MarkdownContentProperty, isWhatTheLibraryMakesOfAGeneratedText, ())
{
    const QString text = *generatedText();
    const MarkdownContent ours(text);
    const MarkdownContent plain = plainParse(text);
    if (!(ours == plain)) {
        RC_LOG() << text.toUtf8().toPercentEncoding(" \n#*>|-").toStdString() << "\nours:\n"
                 << dump(ours.blocks).toStdString() << "\nlibrary:\n"
                 << dump(plain.blocks).toStdString();
        RC_FAIL("differs");
    }
}

RC_GTEST_PROP(MarkdownContentProperty, isWhatTheLibraryMakesOfAMutatedText, ())
{
    const QString text = *mutatedText();
    RC_ASSERT(MarkdownContent(text) == plainParse(text));
}
