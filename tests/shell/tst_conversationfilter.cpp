// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/conversationfilter.h"

#include "shell/sidebar/displaytitle.h"
#include "shell/sidebar/highlightedtitle.h"

#include <gtest/gtest.h>

namespace velto::shell
{

namespace
{

using service::ConversationSummary;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

ConversationSummary conversation(const char *id, std::optional<QString> title,
                                 std::optional<QString> summary = {})
{
    return {text(id),
            text("chat_ui"),
            std::move(title),
            std::move(summary),
            3,
            text("2026-01-02T03:04:05Z")};
}

QStringList idsFound(const QList<ConversationSummary> &list, const char *query)
{
    QStringList ids;
    for (const auto &found : filterConversations(list, text(query)))
        ids.append(found.id);
    return ids;
}

const QList<ConversationSummary> history{
    conversation("c1", text("Harbour times"), text("When the ferry leaves")),
    conversation("c2", text("ÉTÉ à Paris")),
    conversation("c3", std::nullopt, text("Ferry or train")),
    conversation("c4", std::nullopt),
    conversation("c5", text(""), text("")),
    conversation("c6", text("東京の天気")),
};

struct FilterCase
{
    const char *query;
    QStringList ids;
};

class Filter : public testing::TestWithParam<FilterCase>
{};

/// The parts of a title that a query marks.
QStringList marked(const QString &title, const char *query)
{
    QStringList parts;
    for (const TitleRange &range : highlightedTitle(title, text(query)))
        parts.append(title.mid(range.start, range.end - range.start));
    return parts;
}

} // namespace

TEST_P(Filter, findsInOrderWhatContainsTheQuery)
{
    EXPECT_EQ(idsFound(history, GetParam().query), GetParam().ids);
}

INSTANTIATE_TEST_SUITE_P(
    Queries, Filter,
    testing::Values(FilterCase{"ferry", {text("c1"), text("c3")}}, // summary and summary alone
                    FilterCase{"HARBOUR", {text("c1")}},           // in either case
                    FilterCase{"  times\n", {text("c1")}},         // blanks around it don't count
                    FilterCase{"r t", {text("c1"), text("c3")}},   // blanks within it do
                    FilterCase{"été", {text("c2")}}, FilterCase{"ÉTÉ", {text("c2")}},
                    FilterCase{"天気", {text("c6")}},
                    FilterCase{"chat_ui", {}}, // neither channel nor id is searched
                    FilterCase{"c1", {}}, FilterCase{"times when", {}}, FilterCase{".*", {}},
                    FilterCase{"nowhere", {}}));

TEST(ConversationFilter, leavesTheListAsItIsForABlankQuery)
{
    for (const char *query : {"", "   ", " \n\t "})
        EXPECT_EQ(filterConversations(history, text(query)), history) << query;
}

TEST(ConversationFilter, findsNothingInAnEmptyHistory)
{
    EXPECT_TRUE(filterConversations({}, text("a")).isEmpty());
    EXPECT_TRUE(filterConversations({}, text(" ")).isEmpty());
}

TEST(DisplayTitle, isTitleThenSummaryThenAFixedText)
{
    EXPECT_EQ(displayTitle(conversation("c", text("Title"), text("Summary"))), text("Title"));
    EXPECT_EQ(displayTitle(conversation("c", std::nullopt, text("Summary"))), text("Summary"));
    EXPECT_EQ(displayTitle(conversation("c", text(""), text("Summary"))), text("Summary"));
    EXPECT_EQ(displayTitle(conversation("c", text(""), text(""))), text("New chat"));
    EXPECT_EQ(displayTitle(conversation("c", std::nullopt)), text("New chat"));
    EXPECT_EQ(displayTitle(conversation("c", text("  "))), text("  "));
}

TEST(HighlightedTitle, marksEveryPlaceWhateverTheCase)
{
    EXPECT_EQ(marked(text("Tea for two, TEA for one"), "tea"),
              (QStringList{text("Tea"), text("TEA")}));
    EXPECT_EQ(highlightedTitle(text("Tea for TEA"), text(" tEa ")),
              (QList<TitleRange>{{0, 3}, {8, 11}}));
}

TEST(HighlightedTitle, marksNothingForABlankQuery)
{
    for (const char *query : {"", "   ", "\n\t"})
        EXPECT_TRUE(highlightedTitle(text("  a \n"), text(query)).isEmpty()) << query;
}

TEST(HighlightedTitle, marksNothingWhereTheQueryIsnt)
{
    EXPECT_TRUE(highlightedTitle(text("Tea"), text("teas")).isEmpty());
    EXPECT_TRUE(highlightedTitle(QString(), text("a")).isEmpty());
}

TEST(HighlightedTitle, goesOnBehindAMatch)
{
    EXPECT_EQ(highlightedTitle(text("aaaaa"), text("aa")), (QList<TitleRange>{{0, 2}, {2, 4}}));
}

TEST(HighlightedTitle, landsOnAccentedCapitals)
{
    EXPECT_EQ(marked(text("Un ÉTÉ, deux étés"), "été"), (QStringList{text("ÉTÉ"), text("été")}));
}

TEST(HighlightedTitle, landsBehindCapitalsThatGrowWhenLowercased)
{
    // Lowercased, the dotted capital I is two code points, and still one character.
    const QString title = text("İSTANBUL and İZMİR");
    EXPECT_EQ(title.toLower().size(), title.size() + 3);
    EXPECT_EQ(marked(title, "and"), QStringList{text("and")});
    EXPECT_EQ(marked(title, "mİ"), QStringList{text("Mİ")});
    EXPECT_EQ(marked(title, "zm"), QStringList{text("ZM")});
}

TEST(HighlightedTitle, neverCutsACharacter)
{
    const QString family = text("👩‍👩‍👧 picnic 👩🏽 Cafe\u0301");
    EXPECT_EQ(marked(family, "picnic"), QStringList{text("picnic")});
    EXPECT_EQ(marked(family, "👩🏽"), QStringList{text("👩🏽")});
    EXPECT_EQ(marked(family, "cafe"), QStringList{text("Cafe\u0301")});
}

TEST(HighlightedTitle, rangesAreSortedAndDontOverlap)
{
    // Two matches within one character and the next.
    const QString title = text("e\u0301e\u0301e\u0301");
    qsizetype before = 0;
    for (const TitleRange &range : highlightedTitle(title, text("\u0301e"))) {
        EXPECT_LE(before, range.start);
        EXPECT_LE(range.start, range.end);
        EXPECT_LE(range.end, title.size());
        before = range.end;
    }
    EXPECT_GT(before, 0);
}

} // namespace velto::shell
