// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/historymodel.h"

#include "chat/appstatetest.h"

#include <QAbstractItemModelTester>
#include <QGuiApplication>
#include <QSignalSpy>

#include <random>

namespace velto::shell
{

namespace
{

using test::answer;
using test::await;
using test::text;
using test::waitUntil;

QJsonObject conversation(const QString &id, const QString &title, const QDateTime &began)
{
    return {{text("id"), id},
            {text("channel"), text("chat_ui")},
            {text("title"), title},
            {text("messageCount"), 1},
            {text("createdAt"), began.toUTC().toString(Qt::ISODateWithMs)}};
}

class HistoryModelTest : public test::AppStateTest
{
protected:
    HistoryModelTest()
    {
        server.on("/v1/conversations/b", answer(200, "{}"));
        server.on("/v1/conversations/b1", answer(200, "{}"));
        model.setClock([this] { return now; });
        model.setAppState(state.get());
        signedIn();
    }

    void answerWith(const QJsonArray &list)
    {
        server.on("/v1/conversations", answer(200, QJsonDocument(list).toJson()));
        await(state->refreshConversations());
    }
    /// Conversations of today named by their ids.
    void show(const QStringList &ids)
    {
        QJsonArray list;
        for (const QString &id : ids)
            list.append(conversation(id, id, now));
        answerWith(list);
        inserted.clear();
        removed.clear();
        moved.clear();
        changed.clear();
    }
    /// Rows as "id", with "Label/" before the first of a bucket.
    [[nodiscard]] QStringList shown() const
    {
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex index = model.index(row);
            const QString label = index.data(HistoryModel::BucketLabelRole).toString();
            rows.append((label.isEmpty() ? QString() : label + QLatin1Char('/')) +
                        index.data(HistoryModel::TitleRole).toString());
        }
        return rows;
    }
    [[nodiscard]] QStringList idsShown() const
    {
        QStringList ids;
        for (int row = 0; row < model.rowCount(); ++row)
            ids.append(model.index(row).data(HistoryModel::ConversationIDRole).toString());
        return ids;
    }

    QDateTime now{QDate(2026, 3, 18), QTime(12, 0)};
    HistoryModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy inserted{&model, &QAbstractItemModel::rowsInserted};
    QSignalSpy removed{&model, &QAbstractItemModel::rowsRemoved};
    QSignalSpy moved{&model, &QAbstractItemModel::rowsMoved};
    QSignalSpy changed{&model, &QAbstractItemModel::dataChanged};
    QSignalSpy reset{&model, &QAbstractItemModel::modelReset};
};

QStringList words(const char *list)
{
    return text(list).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

TEST_F(HistoryModelTest, saysWhatStandsInPlaceOfRows)
{
    HistoryModel fresh;
    EXPECT_EQ(fresh.placeholder(), text("Loading…"));
    EXPECT_EQ(model.placeholder(), text("No conversations yet"));
    show(words("a b"));
    EXPECT_EQ(model.placeholder(), QString());
    model.setQuery(text("x"));
    EXPECT_EQ(model.placeholder(), text("No matches"));
    EXPECT_EQ(model.count(), 0);
    model.setQuery(text("B"));
    EXPECT_EQ(model.placeholder(), QString());
    EXPECT_EQ(idsShown(), words("b"));
}

TEST_F(HistoryModelTest, loadsUntilTheFirstAnswer)
{
    makeState();
    HistoryModel fresh;
    fresh.setAppState(state.get());
    EXPECT_EQ(fresh.placeholder(), text("Loading…"));
    fresh.setQuery(text("x"));
    EXPECT_EQ(fresh.placeholder(), text("Loading…"));
    model.setAppState(state.get());
}

TEST_F(HistoryModelTest, anEmptyHistoryNeverSaysNoMatches)
{
    model.setQuery(text("x"));
    EXPECT_EQ(model.placeholder(), text("No conversations yet"));
}

TEST_F(HistoryModelTest, aFirstListingThatFailsLeavesNobodyWaiting)
{
    server.on("/v1/conversations", answer(500, "no"));
    makeState();
    model.setAppState(state.get());
    EXPECT_EQ(model.placeholder(), text("Loading…"));
    signedIn();
    EXPECT_EQ(model.placeholder(), text("No conversations yet"));
}

TEST_F(HistoryModelTest, rowsStandInBuckets)
{
    answerWith({conversation(text("o"), text("Old"), now.addDays(-30)),
                conversation(text("t"), text("New"), now),
                conversation(text("y"), text("Before"), now.addDays(-1)),
                conversation(text("u"), text("Newer"), now),
                conversation(text("w"), text("Last week"), now.addDays(-3))});
    EXPECT_EQ(shown(), (QStringList{text("Today/New"), text("Newer"), text("Yesterday/Before"),
                                    text("Previous 7 Days/Last week"), text("Older/Old")}));
    model.setQuery(text("l"));
    EXPECT_EQ(shown(), (QStringList{text("Previous 7 Days/Last week"), text("Older/Old")}));
    EXPECT_EQ(model.rowOf(text("o")), 1);
    EXPECT_EQ(model.rowOf(text("t")), -1);
}

TEST_F(HistoryModelTest, aRenameTouchesOneRow)
{
    show(words("a b c"));
    await(state->renameConversation(text("b"), text("Beta")));
    EXPECT_EQ(shown(), (QStringList{text("Today/a"), text("Beta"), text("c")}));
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex().row(), 1);
    EXPECT_EQ(changed[0][1].toModelIndex().row(), 1);
    EXPECT_EQ(inserted.count() + removed.count() + moved.count() + reset.count(), 0);
}

TEST_F(HistoryModelTest, aNewConversationOnTopIsOneInsertion)
{
    show(words("b c d"));
    answerWith({conversation(text("a"), text("a"), now), conversation(text("b"), text("b"), now),
                conversation(text("c"), text("c"), now), conversation(text("d"), text("d"), now)});
    EXPECT_EQ(shown(), (QStringList{text("Today/a"), text("b"), text("c"), text("d")}));
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 0);
    EXPECT_EQ(inserted[0][2].toInt(), 0);
    EXPECT_EQ(removed.count() + moved.count() + reset.count(), 0);
    ASSERT_EQ(changed.count(), 1); // the label went up a row
    EXPECT_LE(changed[0][1].toModelIndex().row(), 1);
}

TEST_F(HistoryModelTest, aConversationThatRisesIsOneMove)
{
    show(words("a b c d"));
    QJsonArray list;
    for (const QString &id : words("d a b c"))
        list.append(conversation(id, id, now));
    answerWith(list);
    EXPECT_EQ(idsShown(), words("d a b c"));
    EXPECT_EQ(moved.count(), 1);
    EXPECT_EQ(inserted.count() + removed.count() + reset.count(), 0);
}

TEST_F(HistoryModelTest, aDeletionIsOneRemoval)
{
    show(words("a b c"));
    await(state->deleteConversation(text("b")));
    EXPECT_EQ(idsShown(), words("a c"));
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed[0][1].toInt(), 1);
    EXPECT_EQ(inserted.count() + moved.count() + changed.count() + reset.count(), 0);
}

TEST_F(HistoryModelTest, anotherQueryUsesTheRowsThatAreThere)
{
    show(words("a1 b1 a2 b2 a3 b3"));
    model.setQuery(text("b"));
    EXPECT_EQ(idsShown(), words("b1 b2 b3"));
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed[0][1].toInt(), 3);
    EXPECT_EQ(removed[0][2].toInt(), 5);
    EXPECT_EQ(changed.count(), 1);
    model.setQuery({});
    EXPECT_EQ(idsShown(), words("a1 b1 a2 b2 a3 b3"));
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 3);
    EXPECT_EQ(moved.count() + reset.count(), 0);
}

TEST_F(HistoryModelTest, theQueryHoldsForConversationsThatCome)
{
    model.setQuery(text("a"));
    show(words("a1 b1"));
    EXPECT_EQ(idsShown(), words("a1"));
    await(state->renameConversation(text("b1"), text("not any more: a")));
    EXPECT_EQ(idsShown(), words("a1 b1"));
}

TEST_F(HistoryModelTest, anyHistoryBecomesAnyOther)
{
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        QStringList ids;
        const auto size = random() % 30;
        for (unsigned i = 0; i < size; ++i)
            ids.append(QString::number(random() % 40)); // some of them twice
        if (round % 2 == 0)
            std::sort(ids.begin(), ids.end());
        show(ids);
        EXPECT_EQ(idsShown(), ids);
        EXPECT_EQ(model.count(), ids.size());
    }
    EXPECT_EQ(reset.count(), 0);
}

TEST_F(HistoryModelTest, aHistoryWithLittleInCommonTakesFewSteps)
{
    QStringList ids;
    for (int i = 0; i < 2000; ++i)
        ids.append(QString::number(i));
    show(ids);
    std::reverse(ids.begin(), ids.end());
    QJsonArray list;
    for (const QString &id : ids)
        list.append(conversation(id, id, now));
    answerWith(list);
    EXPECT_EQ(idsShown(), ids);
    EXPECT_LT(inserted.count() + removed.count() + moved.count() + changed.count(), 100);
}

TEST_F(HistoryModelTest, rowsGoToAnotherBucketWhenTheDayEnds)
{
    now = QDateTime(QDate(2026, 3, 18), QTime(23, 59, 59, 900));
    answerWith({conversation(text("a"), text("a"), now), conversation(text("b"), text("b"), now),
                conversation(text("w"), text("w"), now.addDays(-7).addMSecs(20))});
    EXPECT_EQ(shown(), (QStringList{text("Today/a"), text("b"), text("Previous 7 Days/w")}));
    now = now.addMSecs(20);
    ASSERT_TRUE(waitUntil([&] { return shown().last() == text("Older/w"); }));
    EXPECT_EQ(shown().first(), text("Today/a"));
    now = QDateTime(QDate(2026, 3, 19), QTime(0, 0));
    ASSERT_TRUE(waitUntil([&] { return shown().first() == text("Yesterday/a"); }));
    EXPECT_EQ(shown(), (QStringList{text("Yesterday/a"), text("b"), text("Older/w")}));
    EXPECT_EQ(reset.count(), 0);
}

TEST_F(HistoryModelTest, lookingAtTheProgramAgainGroupsAgain)
{
    show(words("a"));
    now = now.addDays(1);
    EXPECT_EQ(shown(), QStringList{text("Today/a")});
    emit qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_EQ(shown(), QStringList{text("Yesterday/a")});
}

TEST_F(HistoryModelTest, aNewQueryGroupsByThePresentMoment)
{
    show(words("a"));
    now = now.addDays(1);
    model.setQuery(text("a"));
    EXPECT_EQ(shown(), QStringList{text("Yesterday/a")});
}

} // namespace velto::shell
