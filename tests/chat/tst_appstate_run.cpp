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

class AppStateRun : public AppStateTest
{
protected:
    /// A run whose answer the test writes piece by piece.
    void startOpenRun(const QByteArray &frames)
    {
        server.on("/v1/chat", [this, frames](const RecordedRequest &, const Exchange &open) {
            open.beginStream();
            open.send(frames);
            exchange = open;
        });
        state->setInputDraft(text("question"));
        state->startSendDraft();
    }
    [[nodiscard]] bool idle()
    {
        return waitUntil([this] { return !state->isStreaming(); });
    }
    [[nodiscard]] const ChatMessage &lastMessage() const { return state->messages().last(); }

    std::optional<Exchange> exchange;
};

} // namespace

TEST_F(AppStateRun, aBlankDraftStaysAndSendsNothing)
{
    for (const char *draft : {"", "   ", "\n \t\n"}) {
        send(draft);
        EXPECT_EQ(state->inputDraft(), text(draft));
    }
    EXPECT_TRUE(state->messages().isEmpty());
    EXPECT_EQ(server.count("/v1/chat"), 0);
}

TEST_F(AppStateRun, sendingTrimsAndAppendsTheTurnAndItsAnswer)
{
    streams(deltaFrame("Hello") + finishFrame, {{"x-conversation-id", "c1"}});
    send("  hi\n");
    EXPECT_EQ(texts(), (QStringList{text("hi"), text("Hello")}));
    EXPECT_EQ(state->messages()[0].role, ChatMessage::Role::User);
    EXPECT_EQ(state->messages()[1].role, ChatMessage::Role::Assistant);
    EXPECT_TRUE(state->inputDraft().isEmpty());
    EXPECT_EQ(state->conversationID(), text("c1"));
    EXPECT_FALSE(state->isStreaming());
    EXPECT_FALSE(state->lastError().has_value());
}

TEST_F(AppStateRun, theHistoryEndsWithTheTurnToBeAnswered)
{
    streams(deltaFrame("A1") + finishFrame, {{"x-conversation-id", "c1"}});
    send("q1");
    EXPECT_FALSE(lastBody("/v1/chat").contains(QLatin1StringView("conversation_id")));
    send("q2");
    const QJsonObject body = lastBody("/v1/chat");
    EXPECT_EQ(body[QLatin1StringView("conversation_id")].toString(), text("c1"));
    QStringList sent;
    for (const QJsonValue &message : body[QLatin1StringView("messages")].toArray())
        sent += message[QLatin1StringView("parts")][0][QLatin1StringView("text")].toString();
    EXPECT_EQ(sent, (QStringList{text("q1"), text("A1"), text("q2")}));
}

TEST_F(AppStateRun, sendingDuringARunLeavesTheDraft)
{
    startOpenRun({});
    ASSERT_TRUE(waitUntil([&] { return exchange.has_value(); }));
    send("second");
    EXPECT_EQ(state->inputDraft(), text("second"));
    EXPECT_EQ(state->messages().size(), 2);
    await(state->regenerate());
    EXPECT_EQ(server.count("/v1/chat"), 1);
}

TEST_F(AppStateRun, finishSavesAndRefreshesTheHistory)
{
    streams(deltaFrame("Hello") + finishFrame, {{"x-conversation-id", "c1"}});
    send("hi");
    const auto cached = conversationcache::load(cacheFile);
    ASSERT_TRUE(cached.has_value());
    EXPECT_EQ(cached->conversationID, text("c1"));
    EXPECT_EQ(cached->messages.size(), 2);
    EXPECT_TRUE(waitUntil([&] { return state->conversations().has_value(); }));
    EXPECT_EQ(server.requests().last().target, "/v1/conversations?limit=50&channel=chat_ui");
}

TEST_F(AppStateRun, theRunEndsAtFinishThoughMoreIsSent)
{
    streams(deltaFrame("a") + finishFrame + deltaFrame("b"));
    send("hi");
    EXPECT_EQ(lastMessage().plainText(), text("a"));
}

TEST_F(AppStateRun, aStreamThatClosesWithoutFinishLeavesTheMessageAsItStands)
{
    streams(deltaFrame("part"));
    send("hi");
    EXPECT_EQ(lastMessage().plainText(), text("part"));
    EXPECT_FALSE(state->lastError().has_value());
    EXPECT_TRUE(cacheBytes().isEmpty());
    EXPECT_EQ(server.count("/v1/conversations"), 0);
}

TEST_F(AppStateRun, progressAndSuggestionShowAndEndAsTheyShould)
{
    startOpenRun(R"(data: {"type":"data-agent_progress","data":{"summary":"Reading"}}
data: {"type":"data-prompt_suggestion","data":{"suggestion":"More"}}
)");
    ASSERT_TRUE(waitUntil([&] { return state->promptSuggestion() == text("More"); }));
    EXPECT_EQ(state->agentProgress(), text("Reading"));
    exchange->send(finishFrame);
    ASSERT_TRUE(idle());
    EXPECT_TRUE(state->agentProgress().isEmpty());
    EXPECT_EQ(state->promptSuggestion(), text("More"));
    state->newConversation();
    EXPECT_EQ(state->promptSuggestion(), text("More"));
    startOpenRun({});
    EXPECT_TRUE(state->promptSuggestion().isEmpty());
}

TEST_F(AppStateRun, aFailedFirstRequestShowsTheBannerAndKeepsTheTurn)
{
    server.on("/v1/chat", answer(500, "out of order"));
    send("hi");
    ASSERT_TRUE(state->lastError().has_value());
    EXPECT_EQ(state->lastError()->message, text("Chat request failed (HTTP 500): out of order"));
    EXPECT_EQ(texts(), QStringList{text("hi")});
    EXPECT_TRUE(cacheBytes().isEmpty());
}

TEST_F(AppStateRun, retryAfterAFailedFirstAnswerSendsTheTurnAgain)
{
    server.on("/v1/chat", answer(500, "x"));
    send("hi");
    streams(deltaFrame("Hello") + finishFrame);
    await(state->regenerate());
    EXPECT_EQ(texts(), (QStringList{text("hi"), text("Hello")}));
    EXPECT_FALSE(state->lastError().has_value());
}

TEST_F(AppStateRun, regenerateDropsTheOldAnswer)
{
    streams(deltaFrame("one") + finishFrame);
    send("hi");
    streams(deltaFrame("two") + finishFrame);
    await(state->regenerate());
    EXPECT_EQ(texts(), (QStringList{text("hi"), text("two")}));
}

TEST_F(AppStateRun, regenerateWithoutATurnDoesNothing)
{
    await(state->regenerate());
    EXPECT_TRUE(state->messages().isEmpty());
    EXPECT_EQ(server.count("/v1/chat"), 0);
}

TEST_F(AppStateRun, aFailureAfterSomeTextKeepsItAndWritesNoNote)
{
    server.on("/v1/chat", [](const RecordedRequest &, const Exchange &open) {
        open.send("HTTP/1.1 200 X\r\nContent-Length: 1000\r\n\r\n" + deltaFrame("part"));
        open.close();
    });
    send("hi");
    EXPECT_EQ(lastMessage().plainText(), text("part"));
    EXPECT_TRUE(state->lastError().has_value());
    EXPECT_TRUE(cacheBytes().isEmpty());
}

TEST_F(AppStateRun, anErrorFrameEndsTheRunThoughMoreIsSent)
{
    streams(deltaFrame("part") + "data: {\"type\":\"error\",\"errorText\":\"boom\"}\n" +
            deltaFrame("more") + finishFrame);
    send("hi");
    EXPECT_EQ(state->lastError(), ChatErrorState{text("boom")});
    EXPECT_EQ(lastMessage().plainText(), text("part"));
    EXPECT_TRUE(cacheBytes().isEmpty());
}

TEST_F(AppStateRun, anErrorFrameBeforeAnyTextRemovesThePlaceholder)
{
    streams(R"(data: {"type":"data-agent_progress","data":{"summary":"Reading"}}
data: {"type":"error"}
)");
    send("hi");
    EXPECT_EQ(state->lastError(), ChatErrorState{text("stream error")});
    EXPECT_EQ(texts(), QStringList{text("hi")});
    EXPECT_TRUE(state->agentProgress().isEmpty());
}

TEST_F(AppStateRun, theBannerGoesWithDismissAndTheNextSendOnly)
{
    server.on("/v1/chat", answer(500, "x"));
    server.on("/v1/conversations/c2/messages", answer(200, "[]"));
    send("hi");
    await(state->selectConversation(text("c2")));
    EXPECT_TRUE(state->lastError().has_value());
    state->dismissError();
    EXPECT_FALSE(state->lastError().has_value());
    send("again");
    EXPECT_TRUE(state->lastError().has_value());
    streams(finishFrame);
    send("third");
    EXPECT_FALSE(state->lastError().has_value());
    server.on("/v1/chat", answer(500, "x"));
    send("fourth");
    state->newConversation();
    EXPECT_FALSE(state->lastError().has_value());
}

TEST_F(AppStateRun, aStopWritesTheNoteAndSaves)
{
    startOpenRun(deltaFrame("part"));
    ASSERT_TRUE(waitUntil([&] { return lastMessage().plainText() == text("part"); }));
    state->stopStreaming();
    ASSERT_TRUE(idle());
    EXPECT_EQ(lastMessage().plainText(), text("part\n\n_stopped_"));
    EXPECT_EQ(conversationcache::load(cacheFile)->messages.last().plainText(),
              text("part\n\n_stopped_"));
    EXPECT_FALSE(state->lastError().has_value());
    EXPECT_TRUE(waitUntil([&] { return !exchange->isOpen(); }));
}

TEST_F(AppStateRun, aStopBeforeTheAnswerLeavesTheNoteAlone)
{
    startOpenRun({});
    state->stopStreaming();
    ASSERT_TRUE(idle());
    EXPECT_EQ(texts(), (QStringList{text("question"), text("_stopped_")}));
}

TEST_F(AppStateRun, aStopDuringAToolCallLeavesItRunning)
{
    startOpenRun("data: {\"type\":\"tool-input-start\",\"toolCallId\":\"1\",\"toolName\":\"t\"}\n");
    ASSERT_TRUE(waitUntil([&] { return !lastMessage().parts.isEmpty(); }));
    state->stopStreaming();
    ASSERT_TRUE(idle());
    ASSERT_EQ(lastMessage().parts.size(), 2);
    EXPECT_EQ(std::get<ToolCall>(lastMessage().parts[0].kind).state, ToolState::Running);
    EXPECT_EQ(std::get<QString>(lastMessage().parts[1].kind), text("_stopped_"));
}

TEST_F(AppStateRun, theNoteIsPartOfTheNextRequest)
{
    startOpenRun(deltaFrame("part"));
    ASSERT_TRUE(waitUntil([&] { return lastMessage().plainText() == text("part"); }));
    state->stopStreaming();
    ASSERT_TRUE(idle());
    streams(finishFrame);
    send("next");
    EXPECT_TRUE(server.requests().first().body.contains("question"));
    const QJsonArray sent = lastBody("/v1/chat")[QLatin1StringView("messages")].toArray();
    EXPECT_EQ(sent[1][QLatin1StringView("parts")][0][QLatin1StringView("text")].toString(),
              text("part\n\n_stopped_"));
}

TEST_F(AppStateRun, stoppingWithoutARunDoesNothing)
{
    state->stopStreaming();
    EXPECT_FALSE(state->isStreaming());
    EXPECT_TRUE(cacheBytes().isEmpty());
}

TEST_F(AppStateRun, aNewConversationDuringARunEndsItAndStaysEmpty)
{
    startOpenRun(deltaFrame("part"));
    ASSERT_TRUE(waitUntil([&] { return lastMessage().plainText() == text("part"); }));
    state->newConversation();
    ASSERT_TRUE(idle());
    EXPECT_TRUE(state->messages().isEmpty());
    EXPECT_FALSE(conversationcache::load(cacheFile).has_value());
}

TEST_F(AppStateRun, anExpiredSessionRemovesTheTurnAndKeepsTheCache)
{
    signedIn();
    streams(deltaFrame("A1") + finishFrame, {{"x-conversation-id", "c1"}});
    send("q1");
    const QByteArray cached = cacheBytes();
    server.on("/v1/chat", answer(401));
    server.on("/auth/oauth2/token", answer(400, R"({"error":"invalid_grant"})"));
    send("q2");
    EXPECT_EQ(texts(), (QStringList{text("q1"), text("A1")}));
    EXPECT_EQ(state->authStatusKind(), AuthStatus::Kind::LoggedOut);
    EXPECT_FALSE(state->didBootstrap());
    EXPECT_FALSE(state->api().accessToken().has_value());
    EXPECT_FALSE(state->lastError().has_value());
    EXPECT_EQ(state->conversationID(), text("c1"));
    EXPECT_EQ(cacheBytes(), cached);
    EXPECT_FALSE(storedToken().has_value());
}

TEST_F(AppStateRun, anotherFailureOfTheRefreshShowsInTheBanner)
{
    signedIn();
    server.on("/v1/chat", answer(401));
    server.on("/auth/oauth2/token", answer(503, "later"));
    send("hi");
    EXPECT_EQ(state->lastError(), ChatErrorState{text("Server error: later")});
    EXPECT_EQ(state->authStatusKind(), AuthStatus::Kind::LoggedIn);
    EXPECT_TRUE(storedToken().has_value());
}

TEST_F(AppStateRun, eachDeltaIsOneChangeOfOneRow)
{
    QSignalSpy changed(state->messagesModel(), &QAbstractItemModel::dataChanged);
    streams(deltaFrame("a") + deltaFrame("b") + deltaFrame("c") + finishFrame);
    send("hi");
    EXPECT_EQ(changed.count(), 3);
}

TEST_F(AppStateRun, anEqualWriteAnnouncesNothing)
{
    QSignalSpy draft(state.get(), &AppState::inputDraftChanged);
    QSignalSpy section(state.get(), &AppState::selectedSectionChanged);
    state->setInputDraft(text("a"));
    state->setInputDraft(text("a"));
    state->setSelectedSection(AppState::Section::Chat);
    EXPECT_EQ(draft.count(), 1);
    EXPECT_EQ(section.count(), 0);
}

TEST_F(AppStateRun, maySafelyGoWhileARunIsOpen)
{
    startOpenRun(deltaFrame("part"));
    ASSERT_TRUE(waitUntil([&] { return lastMessage().plainText() == text("part"); }));
    state.reset();
    EXPECT_TRUE(waitUntil([&] { return !exchange->isOpen(); }));
}
