// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/chatstream.h"

#include "support/coroutinetest.h"
#include "support/scriptedserver.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace velto;
using namespace velto::chat;
using test::await;
using test::Exchange;
using test::RecordedRequest;
using test::waitUntil;

namespace
{

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// Gives out tokens by number, or fails.
class CountingRefresher final : public service::TokenRefresher
{
public:
    QCoro::Task<base::Result<service::Tokens>> refresh() override
    {
        ++calls;
        if (failure)
            co_return tl::unexpected(*failure);
        co_return service::Tokens{text("fresh"), text("Bearer"), 900, text("r")};
    }

    int calls = 0;
    std::optional<base::Failure> failure;
};

struct Outcome
{
    QList<ChatStreamEvent> events;
    std::optional<base::Failure> failure;
};

QCoro::Task<Outcome> collect(ChatEventSequence sequence)
{
    Outcome outcome;
    while (true) {
        auto next = co_await sequence.next();
        if (!next) {
            outcome.failure = next.error();
            co_return outcome;
        }
        if (!*next)
            co_return outcome;
        outcome.events.append(std::move(**next));
    }
}

class ChatStreamTest : public testing::Test
{
protected:
    ChatStreamTest() { api.setAccessToken(text("token")); }

    [[nodiscard]] ChatEventSequence start(std::stop_token stop = {})
    {
        return stream.stream(
            history, conversationID, [this](const QString &id) { ids += id; }, stop);
    }
    Outcome run() { return await(collect(start())); }

    /// Answers with those pieces, each handed to the client before the next one is sent.
    void streamPieces(const QList<QByteArray> &pieces, const test::HeaderList &headers = {})
    {
        server.on("/v1/chat", [=](const RecordedRequest &, const Exchange &exchange) {
            exchange.beginStream(200, headers);
            for (const QByteArray &piece : pieces)
                exchange.send(piece);
            exchange.close();
        });
    }
    void answerWith(int status, const QByteArray &body)
    {
        server.on("/v1/chat", test::answer(status, body));
    }
    [[nodiscard]] base::ChatHTTPError httpErrorFor(int status, const QByteArray &body)
    {
        answerWith(status, body);
        testing::internal::CaptureStdout();
        const Outcome outcome = run();
        log = QByteArray::fromStdString(testing::internal::GetCapturedStdout());
        EXPECT_TRUE(outcome.events.isEmpty());
        EXPECT_TRUE(outcome.failure.has_value());
        return outcome.failure ? std::get<base::ChatHTTPError>(*outcome.failure)
                               : base::ChatHTTPError();
    }

    test::ScriptedServer server;
    service::Transport transport;
    CountingRefresher refresher;
    service::APIClient api{transport, refresher, server.url(QStringLiteral("/prefix"))};
    ChatStream stream{api};
    QList<ChatMessage> history{newMessage(ChatMessage::Role::User, {textPart(text("hi"))})};
    std::optional<QString> conversationID;
    QStringList ids;
    QByteArray log;
};

QByteArray delta(const char *words)
{
    return "data: {\"type\":\"text-delta\",\"delta\":\"" + QByteArray(words) + "\"}\n\n";
}

const QByteArray finish = "data: {\"type\":\"finish\"}\n\n";

QString joined(const QList<ChatStreamEvent> &events)
{
    ChatMessage message = newMessage(ChatMessage::Role::Assistant);
    for (const ChatStreamEvent &event : events)
        applyEvent(event, message);
    return message.plainText();
}

} // namespace

TEST_F(ChatStreamTest, postsTheTurnsThatHaveText)
{
    const ChatMessage user = newMessage(ChatMessage::Role::User, {textPart(text("  q \n"))});
    const ChatMessage blank = newMessage(ChatMessage::Role::Assistant, {textPart(text(" \n\t"))});
    const ChatMessage onlyTool =
        newMessage(ChatMessage::Role::Assistant, {toolPart({.callID = text("1")})});
    const ChatMessage mixed =
        newMessage(ChatMessage::Role::Assistant,
                   {textPart(text("a")), toolPart({.callID = text("1")}), textPart(text("b"))});
    history = {user, blank, onlyTool, mixed};
    conversationID = text("c1");
    streamPieces({finish});
    run();

    ASSERT_EQ(server.requests().size(), 1);
    const RecordedRequest request = server.requests()[0];
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.target, "/v1/chat");
    EXPECT_EQ(request.header("Content-Type"), "application/json");
    EXPECT_EQ(request.header("Authorization"), "Bearer token");
    EXPECT_FALSE(request.header("Accept").has_value());
    EXPECT_FALSE(request.header("User-Agent").has_value());
    const auto part = [](const char *words) {
        return QJsonArray{QJsonObject{{text("type"), text("text")}, {text("text"), text(words)}}};
    };
    const QJsonObject expected{
        {text("conversation_id"), text("c1")},
        {text("messages"),
         QJsonArray{QJsonObject{{text("id"), user.id.toString(QUuid::WithoutBraces).toUpper()},
                                {text("role"), text("user")},
                                {text("parts"), part("  q \n")}},
                    QJsonObject{{text("id"), mixed.id.toString(QUuid::WithoutBraces).toUpper()},
                                {text("role"), text("assistant")},
                                {text("parts"), part("ab")}}}}};
    EXPECT_EQ(QJsonDocument::fromJson(request.body).object(), expected);
    EXPECT_FALSE(request.body.contains('\n'));
}

TEST_F(ChatStreamTest, leavesOutWhatIsAbsent)
{
    history = {newMessage(ChatMessage::Role::Assistant)};
    api.setAccessToken({});
    streamPieces({finish});
    run();
    EXPECT_EQ(server.requests()[0].body, "{\"messages\":[]}");
    EXPECT_FALSE(server.requests()[0].header("Authorization").has_value());
}

TEST_F(ChatStreamTest, yieldsEveryKindOfFrameInOrder)
{
    streamPieces({R"(data: {"type":"data-agent_progress","data":{"summary":"Looking"}}

data: {"type":"tool-input-start","toolCallId":"1","toolName":"search"}

data: {"type":"tool-input-available","toolCallId":"1","input":"in"}

data: {"type":"tool-output-available","toolCallId":"1","output":"out"}

data: {"type":"tool-output-error","toolCallId":"1","errorText":"no"}

: keep-alive

data: {"type":"text-delta","delta":"Hi"}

data: {"type":"data-prompt_suggestion","data":{"suggestion":"More"}}

data: {"type":"error","errorText":"e"}

data: {"type":"finish"}

data: [DONE]

)"});
    const Outcome outcome = run();
    EXPECT_FALSE(outcome.failure.has_value());
    const QList<ChatStreamEvent> expected{event::AgentProgress{text("Looking")},
                                          event::ToolStart{text("1"), text("search")},
                                          event::ToolInput{text("1"), text("in")},
                                          event::ToolOutput{text("1"), text("out")},
                                          event::ToolError{text("1"), text("no")},
                                          event::TextDelta{text("Hi")},
                                          event::PromptSuggestion{text("More")},
                                          event::Error{text("e")},
                                          event::Finish{}};
    EXPECT_EQ(outcome.events, expected);
}

TEST_F(ChatStreamTest, doesNotMindHowTheBytesArrive)
{
    const QByteArray whole = "data: {\"type\":\"text-delta\",\"delta\":\"Grüße €🎈\"}\r\n\r\n"
                             "{\"type\":\"text-delta\",\"delta\":\"!\"}\r"
                             "data: {\"type\":\"finish\"}";
    QList<QByteArray> bytes;
    for (const char byte : whole)
        bytes.append(QByteArray(1, byte));
    streamPieces(bytes);
    const Outcome outcome = run();
    EXPECT_EQ(joined(outcome.events), text("Grüße €🎈!"));
    EXPECT_EQ(outcome.events.size(), 3);
    EXPECT_EQ(outcome.events.last(), ChatStreamEvent(event::Finish{}));
}

TEST_F(ChatStreamTest, deliversEachPieceBeforeTheNextArrives)
{
    std::optional<Exchange> exchange;
    server.on("/v1/chat", [&](const RecordedRequest &, const Exchange &open) {
        open.beginStream();
        exchange = open;
    });
    ChatEventSequence sequence = start();
    for (const QByteArray ending : {"\n", "\r", "\r\n"}) {
        QCoro::Task<base::Result<std::optional<ChatStreamEvent>>> next = sequence.next();
        ASSERT_TRUE(waitUntil([&] { return exchange.has_value(); }));
        exchange->send("{\"type\":\"text-delta\",\"del");
        exchange->send("ta\":\"x\"}" + ending);
        EXPECT_EQ(await(std::move(next)).value(),
                  std::optional<ChatStreamEvent>(event::TextDelta{text("x")}));
    }
}

TEST_F(ChatStreamTest, closingWithoutFinishEndsTheSequence)
{
    streamPieces({delta("Hi")});
    const Outcome outcome = run();
    EXPECT_EQ(outcome.events.size(), 1);
    EXPECT_FALSE(outcome.failure.has_value());
}

TEST_F(ChatStreamTest, handsOverTheConversationIdBeforeTheFirstEvent)
{
    streamPieces({delta("Hi"), finish}, {{"X-Conversation-Id", "c9"}});
    ChatEventSequence sequence = start();
    EXPECT_TRUE(await(sequence.next()).has_value());
    EXPECT_EQ(ids, QStringList{text("c9")});
    EXPECT_EQ(await(collect(std::move(sequence))).events.size(), 1);
    EXPECT_EQ(ids.size(), 1);
}

TEST_F(ChatStreamTest, refreshesOnceAfterA401AndSendsTheSameBody)
{
    server.script("/v1/chat", {test::answer(401, "expired"),
                               [](const RecordedRequest &, const Exchange &exchange) {
                                   exchange.beginStream();
                                   exchange.send(delta("Hi") + finish);
                                   exchange.close();
                               }});
    const Outcome outcome = run();
    EXPECT_EQ(joined(outcome.events), text("Hi"));
    EXPECT_EQ(refresher.calls, 1);
    ASSERT_EQ(server.requests().size(), 2);
    EXPECT_EQ(server.requests()[0].body, server.requests()[1].body);
    EXPECT_EQ(server.requests()[1].header("Authorization"), "Bearer fresh");
    EXPECT_EQ(api.accessToken(), text("fresh"));
}

TEST_F(ChatStreamTest, aSecond401IsAFailureLikeAnyOther)
{
    EXPECT_EQ(httpErrorFor(401, "still no"), (base::ChatHTTPError{401, text("still no")}));
    EXPECT_EQ(refresher.calls, 1);
    EXPECT_EQ(server.requests().size(), 2);
}

TEST_F(ChatStreamTest, aFailedRefreshEndsTheSequenceWithItsError)
{
    refresher.failure = base::AuthError{base::AuthError::Kind::SessionExpired, {}};
    answerWith(401, {});
    const Outcome outcome = run();
    EXPECT_EQ(outcome.failure, refresher.failure);
    EXPECT_EQ(server.requests().size(), 1);
    EXPECT_EQ(api.accessToken(), text("token"));
}

TEST_F(ChatStreamTest, onlyA200OpensTheStream)
{
    EXPECT_EQ(httpErrorFor(201, finish).status, 201);
    EXPECT_EQ(httpErrorFor(204, {}), (base::ChatHTTPError{204, {}}));
    EXPECT_EQ(httpErrorFor(500, " out of order\n"),
              (base::ChatHTTPError{500, text("out of order")}));
    EXPECT_EQ(log, "[ChatStream] /v1/chat HTTP 500 — body: out of order\n");
    EXPECT_EQ(base::description(base::ChatHTTPError{500, text("x")}),
              text("Chat request failed (HTTP 500): x"));
    EXPECT_EQ(base::description(base::ChatHTTPError{500, text("<no body>")}),
              text("Chat request failed (HTTP 500): <no body>"));
}

TEST_F(ChatStreamTest, readsAnErrorBodyUpToItsBound)
{
    EXPECT_EQ(httpErrorFor(500, QByteArray(4096, 'x')).body.size(), 4096);
    EXPECT_EQ(httpErrorFor(500, QByteArray(4097, 'x')).body.size(), 4097);
    EXPECT_EQ(httpErrorFor(500, QByteArray(100'000, 'x')).body.size(), 4097);
    EXPECT_EQ(httpErrorFor(500, QByteArray(4096, 'x') + "ü").body, text("<no body>"));
    EXPECT_EQ(httpErrorFor(500, QByteArray(4095, 'x') + "ü").body.size(), 4096);
    EXPECT_EQ(httpErrorFor(500, "\xff\xfe").body, text("<no body>"));
}

TEST_F(ChatStreamTest, usesWhatCameOfAnErrorBodyThatBreaksOff)
{
    server.on("/v1/chat", [](const RecordedRequest &, const Exchange &exchange) {
        exchange.send("HTTP/1.1 500 X\r\nContent-Length: 100\r\n\r\nhalf");
        exchange.close();
    });
    const Outcome outcome = run();
    EXPECT_EQ(outcome.failure, base::Failure(base::ChatHTTPError{500, text("half")}));
}

TEST_F(ChatStreamTest, aConnectionThatIsResetBeforeTheAnswerFailsAndIsNotRetried)
{
    server.on("/v1/chat",
              [](const RecordedRequest &, const Exchange &exchange) { exchange.reset(); });
    const Outcome outcome = run();
    ASSERT_TRUE(outcome.failure.has_value());
    EXPECT_EQ(std::get<base::TransportError>(*outcome.failure).kind,
              base::TransportError::Kind::ConnectionLost);
    EXPECT_EQ(server.count("/v1/chat"), 1);
}

TEST_F(ChatStreamTest, aKeptConnectionThatIsResetIsNotRetriedEither)
{
    server.on("/v1/warm", test::answer(200, "x"));
    server.on("/v1/chat",
              [](const RecordedRequest &, const Exchange &exchange) { exchange.reset(); });
    ASSERT_TRUE(await(api.send("GET", QStringLiteral("/v1/warm"))).has_value());
    const Outcome outcome = run();
    EXPECT_TRUE(outcome.failure.has_value());
    EXPECT_EQ(server.count("/v1/chat"), 1);
}

TEST_F(ChatStreamTest, aStreamThatBreaksOffKeepsItsEventsAndFails)
{
    server.on("/v1/chat", [](const RecordedRequest &, const Exchange &exchange) {
        exchange.send("HTTP/1.1 200 X\r\nContent-Length: 1000\r\n\r\n" + delta("Hi"));
        exchange.close();
    });
    const Outcome outcome = run();
    EXPECT_EQ(joined(outcome.events), text("Hi"));
    ASSERT_TRUE(outcome.failure.has_value());
    EXPECT_EQ(std::get<base::TransportError>(*outcome.failure).kind,
              base::TransportError::Kind::ConnectionLost);
}

TEST_F(ChatStreamTest, aSilentServiceTimesOut)
{
    stream.setTimeout(std::chrono::milliseconds(50));
    server.on("/v1/chat", [](const RecordedRequest &, const Exchange &exchange) {
        exchange.beginStream();
        exchange.send(delta("Hi"));
    });
    const Outcome outcome = run();
    EXPECT_EQ(outcome.events.size(), 1);
    ASSERT_TRUE(outcome.failure.has_value());
    EXPECT_EQ(std::get<base::TransportError>(*outcome.failure).kind,
              base::TransportError::Kind::TimedOut);
}

TEST_F(ChatStreamTest, aStopBeforeTheAnswerEndsTheSequenceAndTheRequest)
{
    std::optional<Exchange> exchange;
    server.on("/v1/chat", [&](const RecordedRequest &, const Exchange &open) { exchange = open; });
    std::stop_source stop;
    QCoro::Task<Outcome> running = collect(start(stop.get_token()));
    ASSERT_TRUE(waitUntil([&] { return exchange.has_value(); }));
    stop.request_stop();
    const Outcome outcome = await(std::move(running));
    EXPECT_TRUE(outcome.events.isEmpty());
    EXPECT_FALSE(outcome.failure.has_value());
    EXPECT_TRUE(waitUntil([&] { return !exchange->isOpen(); }));
}

TEST_F(ChatStreamTest, aStopBetweenLinesAndInsideOneEndsTheSequence)
{
    for (const QByteArray tail : {"", "data: {\"type\":\"text-del"}) {
        std::optional<Exchange> exchange;
        server.on("/v1/chat", [&](const RecordedRequest &, const Exchange &open) {
            open.beginStream();
            open.send(delta("Hi") + tail);
            exchange = open;
        });
        std::stop_source stop;
        ChatEventSequence sequence = start(stop.get_token());
        ASSERT_TRUE(await(sequence.next()).value().has_value());
        QCoro::Task<Outcome> rest = collect(std::move(sequence));
        stop.request_stop();
        const Outcome outcome = await(std::move(rest));
        EXPECT_TRUE(outcome.events.isEmpty());
        EXPECT_FALSE(outcome.failure.has_value());
        EXPECT_TRUE(waitUntil([&] { return !exchange->isOpen(); }));
    }
}

TEST_F(ChatStreamTest, aStopBeforeItStartsSendsNothing)
{
    std::stop_source stop;
    stop.request_stop();
    const Outcome outcome = await(collect(start(stop.get_token())));
    EXPECT_TRUE(outcome.events.isEmpty());
    EXPECT_FALSE(outcome.failure.has_value());
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(ChatStreamTest, droppingTheSequenceEndsTheRequest)
{
    std::optional<Exchange> exchange;
    server.on("/v1/chat", [&](const RecordedRequest &, const Exchange &open) {
        open.beginStream();
        exchange = open;
    });
    {
        const ChatEventSequence sequence = start();
        ASSERT_TRUE(waitUntil([&] { return exchange.has_value(); }));
    }
    EXPECT_TRUE(waitUntil([&] { return !exchange->isOpen(); }));
}
