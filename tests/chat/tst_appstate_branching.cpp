// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "appstatetest.h"

#include <QSignalSpy>

using namespace velto;
using namespace velto::chat;
using test::answer;
using test::AppStateTest;
using test::await;
using test::deltaFrame;
using test::Exchange;
using test::finishFrame;
using test::RecordedRequest;
using test::text;
using test::waitUntil;

namespace
{

class AppStateBranching : public AppStateTest
{
protected:
    void answers(const QByteArray &words)
    {
        streams(deltaFrame(words) + finishFrame, {{"x-conversation-id", "c1"}});
    }
    /// "q1", "a1", "q2", "a2" in the conversation "c1".
    void talk()
    {
        answers("a1");
        send("q1");
        answers("a2");
        send("q2");
    }
    void edit(int row, const char *words, const QByteArray &reply)
    {
        answers(reply);
        await(state->editMessage(idAt(row), text(words)));
    }
    [[nodiscard]] QUuid idAt(int row) const { return state->messages()[row].id; }
    [[nodiscard]] const ChatMessage &turn() const { return state->messages()[0]; }

    /// The last request as "role: text" and the texts' ids.
    [[nodiscard]] QStringList asked() const
    {
        QStringList lines;
        for (const QJsonValue &message :
             lastBody("/v1/chat")[QLatin1StringView("messages")].toArray())
            lines += message[QLatin1StringView("role")].toString() + text(": ") +
                     message[QLatin1StringView("parts")][0][QLatin1StringView("text")].toString();
        return lines;
    }
    [[nodiscard]] QString askedConversation() const
    {
        return lastBody("/v1/chat")[QLatin1StringView("conversation_id")].toString();
    }
    [[nodiscard]] QStringList cachedTexts() const
    {
        QStringList texts;
        if (const auto cached = conversationcache::load(cacheFile)) {
            for (const ChatMessage &message : cached->messages)
                texts.append(message.plainText());
        }
        return texts;
    }
    void failNext()
    {
        server.on("/v1/chat", answer(500, "out of order"));
        send("will fail");
        ASSERT_TRUE(state->lastError().has_value());
    }
};

} // namespace

TEST_F(AppStateBranching, anEditAsksWithTheHistoryUpToTheEditedMessage)
{
    talk();
    edit(0, "  other\n", "b1");
    EXPECT_EQ(asked(), QStringList{text("user: other")});
    EXPECT_EQ(askedConversation(), text("c1"));
    EXPECT_EQ(lastBody("/v1/chat")[QLatin1StringView("messages")][0][QLatin1StringView("id")],
              turn().id.toString(QUuid::WithoutBraces).toUpper());
    EXPECT_EQ(lastBody("/v1/chat").keys(),
              (QStringList{text("conversation_id"), text("messages")}));
    EXPECT_EQ(texts(), (QStringList{text("other"), text("b1")}));
    EXPECT_EQ(cachedTexts(), texts());
}

TEST_F(AppStateBranching, anEditInTheMiddleKeepsWhatIsBeforeIt)
{
    talk();
    edit(2, "q2b", "a2b");
    EXPECT_EQ(asked(), (QStringList{text("user: q1"), text("assistant: a1"), text("user: q2b")}));
    EXPECT_EQ(texts(), (QStringList{text("q1"), text("a1"), text("q2b"), text("a2b")}));
    EXPECT_FALSE(turn().branches.has_value());
}

TEST_F(AppStateBranching, editsCountTheirVersions)
{
    talk();
    edit(0, "other", "b1");
    EXPECT_EQ(turn().branches->size(), 2);
    EXPECT_EQ(turn().activeBranchIndex, 1);
    edit(0, "third", "c1");
    EXPECT_EQ(turn().branches->size(), 3);
    EXPECT_EQ(turn().activeBranchIndex, 2);
}

TEST_F(AppStateBranching, theAnswerStandsInTheListAndNotInItsVersionYet)
{
    talk();
    edit(0, "other", "b1");
    ASSERT_EQ(turn().branches->at(1).tail.size(), 1);
    EXPECT_TRUE(turn().branches->at(1).tail[0].parts.isEmpty());
    state->switchBranch(idAt(0), 0);
    EXPECT_EQ(turn().branches->at(1).tail[0].plainText(), text("b1"));
}

TEST_F(AppStateBranching, anEditThatCantBeDoneChangesNothing)
{
    talk();
    failNext();
    const QList<ChatMessage> before = state->messages();
    const auto requests = server.count("/v1/chat");
    await(state->editMessage(idAt(0), text(" \n\t ")));
    await(state->editMessage(idAt(1), text("an answer")));
    await(state->editMessage(QUuid::createUuid(), text("nobody")));
    EXPECT_EQ(state->messages(), before);
    EXPECT_TRUE(state->lastError().has_value());
    EXPECT_EQ(server.count("/v1/chat"), requests);
}

TEST_F(AppStateBranching, anEditThatFailsLeavesTheTurnWithoutAnAnswer)
{
    talk();
    server.on("/v1/chat", answer(500, "out of order"));
    await(state->editMessage(idAt(0), text("other")));
    EXPECT_EQ(texts(), QStringList{text("other")});
    EXPECT_TRUE(state->lastError().has_value());
    state->switchBranch(idAt(0), 0);
    EXPECT_EQ(texts(), (QStringList{text("q1"), text("a1"), text("q2"), text("a2")}));
    EXPECT_FALSE(state->lastError().has_value());
    state->switchBranch(idAt(0), 1);
    EXPECT_EQ(texts(), QStringList{text("other")});
}

TEST_F(AppStateBranching, aSwitchShowsTheOtherVersionSavesItAndAsksNobody)
{
    talk();
    edit(0, "other", "b1");
    const auto requests = server.requests().size();
    state->switchBranch(idAt(0), 0);
    EXPECT_EQ(texts(), (QStringList{text("q1"), text("a1"), text("q2"), text("a2")}));
    EXPECT_EQ(cachedTexts(), texts());
    EXPECT_EQ(conversationcache::load(cacheFile)->conversationID, text("c1"));
    state->switchBranch(idAt(0), 1);
    EXPECT_EQ(texts(), (QStringList{text("other"), text("b1")}));
    EXPECT_EQ(cachedTexts(), texts());
    EXPECT_FALSE(state->isStreaming());
    // What finished runs ask for by themselves may come in meanwhile.
    for (auto i = requests; i < server.requests().size(); ++i)
        EXPECT_EQ(server.requests()[i].target, "/v1/conversations?limit=50&channel=chat_ui");
}

TEST_F(AppStateBranching, theNextTurnGoesIntoTheVersionOnScreen)
{
    talk();
    edit(0, "other", "b1");
    state->switchBranch(idAt(0), 0);
    answers("a3");
    send("q3");
    EXPECT_EQ(asked(), (QStringList{text("user: q1"), text("assistant: a1"), text("user: q2"),
                                    text("assistant: a2"), text("user: q3")}));
    state->switchBranch(idAt(0), 1);
    EXPECT_EQ(texts(), (QStringList{text("other"), text("b1")}));
    state->switchBranch(idAt(0), 0);
    EXPECT_EQ(texts().last(), text("a3"));
}

TEST_F(AppStateBranching, aSwitchThatCantBeDoneChangesNothing)
{
    talk();
    edit(0, "other", "b1");
    failNext();
    const QList<ChatMessage> before = state->messages();
    const QByteArray cached = cacheBytes();
    for (const int index : {-1, 1, 2})
        state->switchBranch(idAt(0), index);
    state->switchBranch(idAt(1), 0);
    state->switchBranch(idAt(2), 0);
    state->switchBranch(QUuid::createUuid(), 0);
    EXPECT_EQ(state->messages(), before);
    EXPECT_EQ(cacheBytes(), cached);
    EXPECT_TRUE(state->lastError().has_value());
}

TEST_F(AppStateBranching, regeneratingAsksAgainWithTheLastTurn)
{
    talk();
    answers("again");
    await(state->regenerate());
    EXPECT_EQ(asked(), (QStringList{text("user: q1"), text("assistant: a1"), text("user: q2")}));
    EXPECT_EQ(askedConversation(), text("c1"));
    EXPECT_EQ(texts(), (QStringList{text("q1"), text("a1"), text("q2"), text("again")}));
    EXPECT_FALSE(state->messages()[2].branches.has_value());
}

TEST_F(AppStateBranching, regeneratingInAVersionChangesThatOne)
{
    talk();
    edit(0, "other", "b1");
    answers("b2");
    await(state->regenerate());
    EXPECT_EQ(asked(), QStringList{text("user: other")});
    EXPECT_EQ(turn().branches->size(), 2);
    state->switchBranch(idAt(0), 0);
    state->switchBranch(idAt(0), 1);
    EXPECT_EQ(texts(), (QStringList{text("other"), text("b2")}));
}

TEST_F(AppStateBranching, continuingSendsATurnThatSaysSo)
{
    talk();
    failNext();
    await(state->regenerate());
    answers("more");
    await(state->regenerate());
    server.on("/v1/chat", answer(500, "x"));
    await(state->continueGeneration());
    EXPECT_TRUE(state->lastError().has_value());
    answers("and more");
    await(state->regenerate());
    EXPECT_FALSE(state->lastError().has_value());
    EXPECT_EQ(asked(), (QStringList{text("user: q1"), text("assistant: a1"), text("user: q2"),
                                    text("assistant: a2"), text("user: will fail"),
                                    text("assistant: more"), text("user: Continue")}));
    EXPECT_EQ(askedConversation(), text("c1"));
    EXPECT_EQ(texts().last(), text("and more"));
}

TEST_F(AppStateBranching, continuingClearsTheBanner)
{
    talk();
    server.on("/v1/chat", [](const RecordedRequest &, const Exchange &exchange) {
        exchange.beginStream();
        exchange.send(deltaFrame("part") + "data: {\"type\":\"error\",\"errorText\":\"boom\"}\n");
    });
    send("q3");
    ASSERT_EQ(state->lastError(), ChatErrorState{text("boom")});
    answers("more");
    await(state->continueGeneration());
    EXPECT_FALSE(state->lastError().has_value());
    EXPECT_EQ(texts(), (QStringList{text("q1"), text("a1"), text("q2"), text("a2"), text("q3"),
                                    text("part"), text("Continue"), text("more")}));
}

TEST_F(AppStateBranching, continuingAfterAFailedFirstAnswerDoesNothing)
{
    await(state->continueGeneration());
    EXPECT_EQ(server.count("/v1/chat"), 0);
    failNext();
    await(state->continueGeneration());
    EXPECT_EQ(texts(), QStringList{text("will fail")});
    EXPECT_EQ(server.count("/v1/chat"), 1);
    EXPECT_TRUE(state->lastError().has_value());
}

TEST_F(AppStateBranching, duringARunNoneOfTheFourDoesAnything)
{
    talk();
    edit(0, "other", "b1");
    std::optional<Exchange> open;
    server.on("/v1/chat", [&](const RecordedRequest &, const Exchange &exchange) {
        exchange.beginStream();
        exchange.send(deltaFrame("part"));
        open = exchange;
    });
    state->setInputDraft(text("q"));
    state->startSendDraft();
    ASSERT_TRUE(waitUntil([&] { return texts().last() == text("part"); }));
    const QList<ChatMessage> before = state->messages();
    const auto requests = server.count("/v1/chat");
    await(state->editMessage(idAt(0), text("x")));
    await(state->regenerate());
    await(state->continueGeneration());
    state->switchBranch(idAt(0), 0);
    EXPECT_EQ(state->messages(), before);
    EXPECT_EQ(server.count("/v1/chat"), requests);
    open->send(finishFrame);
    ASSERT_TRUE(waitUntil([&] { return !state->isStreaming(); }));
}

TEST_F(AppStateBranching, aReopenedConversationHasNoVersions)
{
    talk();
    edit(0, "other", "b1");
    makeState();
    await(state->bootstrap());
    storeToken(text("stored"));
    makeState();
    await(state->bootstrap());
    server.on("/v1/conversations/c1/messages",
              answer(200,
                     R"([{"id":"1","role":"user","parts":[{"type":"text","text":"other"}]},)"
                     R"({"id":"2","role":"assistant","parts":[{"type":"text","text":"b1"}]}])"));
    await(state->selectConversation(text("c1")));
    ASSERT_EQ(texts(), (QStringList{text("other"), text("b1")}));
    for (const ChatMessage &message : state->messages()) {
        EXPECT_FALSE(message.branches.has_value());
        EXPECT_EQ(message.activeBranchIndex, 0);
    }
}

TEST_F(AppStateBranching, theCacheHasThePathOnScreenOnly)
{
    talk();
    edit(0, "other", "b1");
    storeToken(text("stored"));
    makeState();
    await(state->bootstrap());
    EXPECT_EQ(texts(), (QStringList{text("other"), text("b1")}));
    EXPECT_FALSE(turn().branches.has_value());
}

TEST_F(AppStateBranching, aStoppedAnswerStaysInItsVersion)
{
    talk();
    server.on("/v1/chat", [](const RecordedRequest &, const Exchange &exchange) {
        exchange.beginStream();
        exchange.send(deltaFrame("part"));
    });
    state->startEditMessage(idAt(0), text("other"));
    ASSERT_TRUE(waitUntil([&] { return texts().last() == text("part"); }));
    state->stopStreaming();
    ASSERT_TRUE(waitUntil([&] { return !state->isStreaming(); }));
    state->switchBranch(idAt(0), 0);
    state->switchBranch(idAt(0), 1);
    EXPECT_EQ(texts(), (QStringList{text("other"), text("part\n\n_stopped_")}));
}

TEST_F(AppStateBranching, viewsKeepTheRowsThatStay)
{
    talk();
    QSignalSpy removed(state->messagesModel(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy reset(state->messagesModel(), &QAbstractItemModel::modelReset);
    QSignalSpy changed(state->messagesModel(), &QAbstractItemModel::dataChanged);
    const auto row = [&](int i) { return changed[i][0].toModelIndex().row(); };
    const auto tells = [&](int i, int role) {
        return changed[i][2].value<QList<int>>().contains(role);
    };
    edit(2, "q2b", "a2b");
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed[0][1].toInt(), 3);
    EXPECT_EQ(reset.count(), 0);
    ASSERT_GE(changed.count(), 1);
    EXPECT_EQ(row(0), 2);
    for (const int role : {MessageListModel::PartCountRole, MessageListModel::ContentVolumeRole,
                           MessageListModel::BranchCountRole, MessageListModel::ActiveBranchRole})
        EXPECT_TRUE(tells(0, role)) << role;
    EXPECT_FALSE(tells(0, MessageListModel::CreatedAtRole));
    changed.clear();
    state->switchBranch(idAt(2), 0);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(row(0), 2);
    EXPECT_FALSE(tells(0, MessageListModel::BranchCountRole));
    EXPECT_TRUE(tells(0, MessageListModel::ActiveBranchRole));
}
