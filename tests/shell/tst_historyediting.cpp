// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/historyediting.h"

#include "chat/appstatetest.h"

#include <QSignalSpy>

namespace velto::shell
{

namespace
{

using service::ConversationSummary;
using test::answer;
using test::text;
using test::waitUntil;

ConversationSummary conversation(std::optional<QString> title, std::optional<QString> summary = {})
{
    ConversationSummary result;
    result.title = std::move(title);
    result.summary = std::move(summary);
    return result;
}

class HistoryEditingTest : public test::AppStateTest
{
protected:
    HistoryEditingTest()
    {
        server.on("/v1/conversations",
                  answer(200, R"([{"id":"a","channel":"chat_ui","title":"Alpha","summary":null,)"
                              R"("messageCount":1,"createdAt":""},)"
                              R"({"id":"b","channel":"chat_ui","title":null,"summary":"Second",)"
                              R"("messageCount":1,"createdAt":""}])"));
        server.on("/v1/conversations/a", answer(200, "{}"));
        server.on("/v1/conversations/b", answer(200, "{}"));
        signedIn();
        editing.setAppState(state.get());
    }

    /// What was asked of a conversation, "PATCH title" or "DELETE ".
    [[nodiscard]] QStringList asked() const
    {
        QStringList list;
        for (const auto &request : server.requests()) {
            if (!request.target.startsWith("/v1/conversations/"))
                continue;
            const QJsonObject body = QJsonDocument::fromJson(request.body).object();
            list.append(QString::fromLatin1(request.method) + QLatin1Char(' ') +
                        body.value(text("title")).toString());
        }
        return list;
    }
    [[nodiscard]] std::optional<QString> titleOf(const char *id) const
    {
        for (const auto &row : *state->conversations()) {
            if (row.id == text(id))
                return row.title;
        }
        return text("(gone)");
    }
    void write(const char *id, const char *words)
    {
        editing.beginRename(text(id));
        editing.setRenameBuffer(text(words));
        editing.commitRename();
    }

    HistoryEditing editing;
};

} // namespace

TEST(RenamedTitle, isWhatWasWrittenWithoutBlanksAround)
{
    EXPECT_EQ(renamedTitle(text("Old"), text(" New \n")), text("New"));
    EXPECT_EQ(renamedTitle(text("Old"), text("old")), text("old"));
    EXPECT_EQ(renamedTitle(text(" Old "), text("Old")), text("Old"));
    EXPECT_EQ(renamedTitle(std::nullopt, text("New")), text("New"));
    EXPECT_EQ(renamedTitle(text(""), text("New")), text("New"));
}

TEST(RenamedTitle, isAbsentForNothingNew)
{
    EXPECT_EQ(renamedTitle(text("Old"), text("  Old \n")), std::nullopt);
    EXPECT_EQ(renamedTitle(text("Old"), text("")), std::nullopt);
    EXPECT_EQ(renamedTitle(text("Old"), text(" \n\t ")), std::nullopt);
    EXPECT_EQ(renamedTitle(std::nullopt, text("  ")), std::nullopt);
}

TEST(DeletionMessage, namesTheTitleAlone)
{
    EXPECT_EQ(deletionMessage(conversation(text("Tides"), text("Of the sea"))),
              text("\"Tides\" will be permanently removed."));
    EXPECT_EQ(deletionMessage(conversation(std::nullopt, text("Of the sea"))),
              text("\"This chat\" will be permanently removed."));
    EXPECT_EQ(deletionMessage(conversation(text(""), text("Of the sea"))),
              text("\"This chat\" will be permanently removed."));
    EXPECT_EQ(deletionMessage(conversation(text("100 %1 <b>"))),
              text("\"100 %1 <b>\" will be permanently removed."));
}

TEST(ConversationLink, endsWithTheId)
{
    EXPECT_EQ(conversationLink(text("c-1")), text("ltd.orbax.velto://chat/c-1"));
}

TEST_F(HistoryEditingTest, aRenameBeginsWithTheTitleAndNotTheSummary)
{
    editing.beginRename(text("a"));
    EXPECT_EQ(editing.renamingID(), text("a"));
    EXPECT_EQ(editing.renameBuffer(), text("Alpha"));
    editing.beginRename(text("b"));
    EXPECT_EQ(editing.renamingID(), text("b"));
    EXPECT_EQ(editing.renameBuffer(), QString());
}

TEST_F(HistoryEditingTest, aCommitSendsTheTrimmedTitle)
{
    write("a", "  Beta ");
    EXPECT_EQ(editing.renamingID(), QString());
    EXPECT_EQ(titleOf("a"), text("Beta"));
    ASSERT_TRUE(waitUntil([&] { return asked().size() == 1; }));
    EXPECT_EQ(asked(), QStringList{text("PATCH Beta")});
}

TEST_F(HistoryEditingTest, anyTextIsAChangeWhereThereIsNoTitle)
{
    write("b", "Second");
    ASSERT_TRUE(waitUntil([&] { return asked().size() == 1; }));
    EXPECT_EQ(asked(), QStringList{text("PATCH Second")});
}

TEST_F(HistoryEditingTest, nothingIsSentForTheSameTextOrNone)
{
    for (const char *words : {"Alpha", "  Alpha \n", "", "   "}) {
        write("a", words);
        EXPECT_EQ(editing.renamingID(), QString());
    }
    // Whatever had been sent would have come before this.
    write("a", "Beta");
    ASSERT_TRUE(waitUntil([&] { return !asked().isEmpty(); }));
    EXPECT_EQ(asked(), QStringList{text("PATCH Beta")});
}

TEST_F(HistoryEditingTest, aCancelledRenameSendsNothing)
{
    editing.beginRename(text("a"));
    editing.setRenameBuffer(text("Beta"));
    editing.cancelRename();
    EXPECT_EQ(editing.renamingID(), QString());
    EXPECT_EQ(titleOf("a"), text("Alpha"));
    editing.commitRename(); // there is nothing to commit any more
    write("a", "Gamma");
    ASSERT_TRUE(waitUntil([&] { return !asked().isEmpty(); }));
    EXPECT_EQ(asked(), QStringList{text("PATCH Gamma")});
}

TEST_F(HistoryEditingTest, aRefusedRenameBringsTheOldTitleBack)
{
    server.on("/v1/conversations/a", answer(500, "no"));
    write("a", "Beta");
    EXPECT_EQ(titleOf("a"), text("Beta"));
    ASSERT_TRUE(waitUntil([&] { return titleOf("a") == text("Alpha"); }));
    EXPECT_FALSE(state->hasError());
}

TEST_F(HistoryEditingTest, aDeletionAsksFirst)
{
    QSignalSpy changed(&editing, &HistoryEditing::deletingChanged);
    editing.askToDelete(text("b"));
    EXPECT_TRUE(editing.isDeleting());
    EXPECT_EQ(editing.deletionMessage(), text("\"This chat\" will be permanently removed."));
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(state->conversations()->size(), 2);
}

TEST_F(HistoryEditingTest, aConfirmedDeletionIsSent)
{
    editing.askToDelete(text("a"));
    editing.confirmDeletion();
    EXPECT_FALSE(editing.isDeleting());
    EXPECT_EQ(titleOf("a"), text("(gone)"));
    ASSERT_TRUE(waitUntil([&] { return !asked().isEmpty(); }));
    EXPECT_EQ(asked(), QStringList{text("DELETE ")});
}

TEST_F(HistoryEditingTest, aCancelledDeletionLeavesEverything)
{
    editing.askToDelete(text("a"));
    editing.cancelDeletion();
    EXPECT_FALSE(editing.isDeleting());
    editing.confirmDeletion(); // of nothing
    EXPECT_EQ(state->conversations()->size(), 2);
    write("a", "Beta");
    ASSERT_TRUE(waitUntil([&] { return !asked().isEmpty(); }));
    EXPECT_EQ(asked(), QStringList{text("PATCH Beta")});
}

TEST_F(HistoryEditingTest, aRefusedDeletionBringsTheRowBackWithoutAWord)
{
    server.on("/v1/conversations/a", answer(500, "no"));
    editing.askToDelete(text("a"));
    editing.confirmDeletion();
    EXPECT_EQ(titleOf("a"), text("(gone)"));
    ASSERT_TRUE(waitUntil([&] { return titleOf("a") == text("Alpha"); }));
    EXPECT_FALSE(state->hasError());
}

TEST_F(HistoryEditingTest, whatIsNotInTheHistoryCanNeitherBeRenamedNorDeleted)
{
    editing.beginRename(text("x"));
    EXPECT_EQ(editing.renamingID(), QString());
    editing.askToDelete(text("x"));
    EXPECT_FALSE(editing.isDeleting());
}

} // namespace velto::shell
