// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "runningservice.h"

#include "local/agent/pieces.h"
#include "local/agent/script.h"
#include "local/http/mediaendpoint.h"
#include "local/text.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <thread>
#include <vector>

using namespace velto::local;
using namespace velto::local::test;
using nlohmann::json;

namespace
{

json messagesOf(const Visitor &visitor, const std::string &id)
{
    return visitor.getJson("/v1/conversations/" + id + "/messages");
}

void expectWellFormed(const ChatAnswer &answer)
{
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.contentType, "text/event-stream");
    EXPECT_FALSE(answer.conversationId.empty());
    EXPECT_EQ(answer.malformed, "");
}

void expectFinished(const ChatAnswer &answer)
{
    expectWellFormed(answer);
    EXPECT_TRUE(answer.whole);
    ASSERT_FALSE(answer.frames.empty());
    EXPECT_EQ(answer.frames.back()["type"], "finish");
    EXPECT_EQ(answer.ofType("finish").size(), 1U);
}

// The media targets of Markdown links that begin with `opening`.
std::vector<std::string> mediaPaths(const std::string &text, const std::string &opening)
{
    const std::string middle = "](media:";
    std::vector<std::string> paths;
    for (auto at = text.find(opening); at != std::string::npos; at = text.find(opening, at + 1)) {
        const auto target = text.find(middle, at);
        if (target == std::string::npos)
            break;
        const auto path = target + middle.size();
        paths.push_back(text.substr(path, text.find(')', path) - path));
    }
    return paths;
}

bool has(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

TEST(Agent, AnswersEveryPromptAlikeAndReflectsIt)
{
    RunningService running;
    const auto first = ask(running.visitor(), "Plan the summer party");
    const auto second = ask(running.visitor(), "Plan the summer party");
    expectFinished(first);
    EXPECT_EQ(first.text(), second.text());
    EXPECT_NE(first.conversationId, second.conversationId);
    EXPECT_TRUE(has(first.text(), "> Plan the summer party"));
    EXPECT_FALSE(first.ofType("data-agent_progress").empty());
    EXPECT_FALSE(first.ofType("data-prompt_suggestion").empty());
}

TEST(Agent, ToolsHaveInputsOutputsAndAFailure)
{
    RunningService running;
    const auto answer = ask(running.visitor(), "show me your tools");
    expectFinished(answer);
    EXPECT_EQ(answer.ofType("tool-input-start").size(), 3U);
    EXPECT_EQ(answer.ofType("tool-input-available").size(), 3U);
    EXPECT_EQ(answer.ofType("tool-output-available").size(), 2U);
    ASSERT_EQ(answer.ofType("tool-output-error").size(), 1U);
    EXPECT_FALSE(answer.ofType("tool-output-error")[0]["errorText"].get<std::string>().empty());
    for (const json &frame : answer.ofType("tool-input-start")) {
        EXPECT_TRUE(frame["toolCallId"].is_string());
        EXPECT_TRUE(frame["toolName"].is_string());
    }
    for (const json &frame : answer.ofType("data-agent_progress"))
        EXPECT_FALSE(frame["data"]["summary"].get<std::string>().empty());
    ASSERT_EQ(answer.ofType("data-prompt_suggestion").size(), 1U);
    EXPECT_TRUE(answer.ofType("data-prompt_suggestion")[0]["data"]["suggestion"].is_string());
}

TEST(Agent, TableCodeAndHelpAreMarkdown)
{
    RunningService running;
    EXPECT_TRUE(has(ask(running.visitor(), "a table").text(), "| :--- |"));
    EXPECT_TRUE(has(ask(running.visitor(), "some code, please").text(), "```python\n"));
    const std::string help = ask(running.visitor(), "Help!").text();
    for (const AgentWord &entry : agentWords())
        EXPECT_TRUE(has(help, "`" + std::string(entry.word) + "`")) << entry.word;
}

TEST(Agent, ImageAndVideoReferToFilesThatExist)
{
    RunningService running;
    const std::string image = ask(running.visitor(), "image").text();
    const std::string video = ask(running.visitor(), "video").text();
    EXPECT_EQ(mediaPaths(image, "!["),
              (std::vector<std::string>{"charts/arrivals.png", "pictures/harbour.jpg"}));
    EXPECT_EQ(mediaPaths(video, "\n["), std::vector<std::string>{"clips/tide.webm"});
    for (const std::string &text : {image, video}) {
        for (const std::string &path : mediaPaths(text, "[")) {
            const auto file = running.visitor().get("/v1/media/" + path);
            EXPECT_TRUE(file && file->status == 200) << path;
        }
    }
}

TEST(Agent, MissingRefersToFilesThatDoNot)
{
    RunningService running;
    const std::string text = ask(running.visitor(), "missing").text();
    ASSERT_EQ(mediaPaths(text, "[").size(), 3U);
    for (const char *path : {"pictures/nowhere.png", "clips/nowhere.mp4"}) {
        EXPECT_TRUE(has(text, "(media:" + std::string(path) + ")"));
        const auto file = running.visitor().get("/v1/media/" + std::string(path));
        EXPECT_TRUE(file && file->status == 404) << path;
    }
}

TEST(Agent, ParallelToolsAllBeginBeforeTheFirstEnds)
{
    RunningService running;
    const auto answer = ask(running.visitor(), "parallel");
    expectFinished(answer);
    std::vector<std::string> order;
    for (const json &frame : answer.frames) {
        const auto type = frame["type"].get<std::string>();
        if (type.starts_with("tool-") && type != "tool-input-available")
            order.push_back(type);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"tool-input-start", "tool-input-start",
                                               "tool-input-start", "tool-input-start",
                                               "tool-output-available", "tool-output-available",
                                               "tool-output-error", "tool-output-available"}));
    std::set<std::string> ids;
    for (const json &frame : answer.ofType("tool-input-start"))
        ids.insert(frame["toolCallId"].get<std::string>());
    EXPECT_EQ(ids.size(), 4U);
}

TEST(Agent, LanguagesAreThoseThatHaveColoursAndOneMore)
{
    RunningService running;
    const std::string text = ask(running.visitor(), "languages").text();
    for (const char *language : {"swift", "python", "javascript", "typescript", "json", "bash",
                                 "go", "rust", "ruby", "html", "css", "yaml", "fortran"})
        EXPECT_TRUE(has(text, "\n```" + std::string(language) + "\n")) << language;
}

TEST(Agent, ShowcaseHoldsWhatAnswersCanHold)
{
    RunningService running;
    const auto answer = ask(running.visitor(), "showcase");
    expectFinished(answer);
    const std::string text = answer.text();
    for (const char *part : {"# Every kind of Markdown", "- [x] ", "\n> > ", "| :---: |",
                             "\n```rust\n", "![Boats and cargo", "[The tide,", "nowhere.png"})
        EXPECT_TRUE(has(text, part)) << part;
    EXPECT_EQ(answer.ofType("tool-input-start").size(), 7U);
    EXPECT_EQ(answer.ofType("tool-output-error").size(), 2U);
}

TEST(Agent, RichHasItsLengthItsCodeAndItsTools)
{
    RunningService running;
    const auto answer = ask(running.visitor(), "rich 100000");
    expectFinished(answer);
    const std::string text = answer.text();
    EXPECT_EQ(answer.ofType("tool-input-start").size(), 40U);
    std::size_t fences = 0;
    for (auto at = text.find("```"); at != std::string::npos; at = text.find("```", at + 3))
        ++fences;
    EXPECT_EQ(fences, 60U);
    EXPECT_EQ(text.size(), 100'000U);
    EXPECT_EQ(ask(running.visitor(), "rich 7").text().size(), 7U);
}

TEST(Agent, LongHasExactlyTheLengthAsked)
{
    RunningService running;
    const auto answer = ask(running.visitor(), "long 200000");
    expectFinished(answer);
    EXPECT_EQ(answer.text().size(), 200'000U);
    EXPECT_EQ(ask(running.visitor(), "long 7").text().size(), 7U);
    EXPECT_EQ(ask(running.visitor(), "long").text().size(), 20'000U);
}

TEST(Agent, SlowSendsTwoPiecesASecond)
{
    RunningService running;
    const auto start = std::chrono::steady_clock::now();
    const auto answer = ask(running.visitor(), "slow long 20");
    const auto spent = std::chrono::steady_clock::now() - start;
    expectFinished(answer);
    EXPECT_EQ(answer.text().size(), 20U);
    EXPECT_GE(spent, std::chrono::milliseconds(1900));
}

TEST(Agent, RateSetsTheBeat)
{
    RunningService running(50);
    const auto start = std::chrono::steady_clock::now();
    const auto answer = ask(running.visitor(), "long 100");
    const auto spent = std::chrono::steady_clock::now() - start;
    EXPECT_GE(spent, std::chrono::milliseconds(20) * answer.ofType("text-delta").size());
}

TEST(Agent, ErrorFollowsSomeTextAndEndsTheStream)
{
    RunningService running;
    const auto answer = ask(running.visitor(), "error");
    expectWellFormed(answer);
    EXPECT_TRUE(answer.whole);
    EXPECT_FALSE(answer.text().empty());
    EXPECT_EQ(answer.frames.back()["type"], "error");
    EXPECT_TRUE(answer.frames.back()["errorText"].is_string());
    EXPECT_TRUE(answer.ofType("finish").empty());
    EXPECT_EQ(messagesOf(running.visitor(), answer.conversationId).size(), 2U);
}

TEST(Agent, DropCutsTheConnection)
{
    RunningService running;
    const auto answer = ask(running.visitor(), "drop");
    expectWellFormed(answer);
    EXPECT_FALSE(answer.whole);
    EXPECT_FALSE(answer.text().empty());
    EXPECT_TRUE(answer.ofType("finish").empty());
}

TEST(Agent, WordsCombineInTheirOrder)
{
    RunningService running;
    const auto answer = ask(running.visitor(), "a table, then CODE, then an error and an image");
    const std::string text = answer.text();
    EXPECT_LT(text.find("| :--- |"), text.find("```cpp"));
    EXPECT_TRUE(has(text, "\n\nA small counter"));
    EXPECT_EQ(answer.frames.back()["type"], "error");
    EXPECT_FALSE(has(text, "media:"));
}

TEST(Agent, WordsInsideOtherWordsDoNothing)
{
    RunningService running;
    EXPECT_FALSE(has(ask(running.visitor(), "comfortable dropping").text(), "| Day |"));
}

TEST(Agent, OnlyTheLastUserTurnCounts)
{
    RunningService running;
    const auto answer = chat(running.visitor(), json::array({spokenTurn("user", "table"),
                                                             spokenTurn("assistant", "image"),
                                                             spokenTurn("user", "code")}));
    EXPECT_TRUE(has(answer.text(), "```cpp"));
    EXPECT_FALSE(has(answer.text(), "| Day |"));
}

TEST(Pieces, AreSmallAndNeverCutACharacter)
{
    const std::string text =
        "Größe “日本語” 🙂🙂🙂 and plain letters, then more of them, ü";
    Pieces pieces(text);
    std::string whole;
    for (auto piece = pieces.next(); !piece.empty(); piece = pieces.next()) {
        std::size_t characters = 0;
        for (std::size_t i = 0; i < piece.size(); i += characterLength(piece, i))
            ++characters;
        EXPECT_NE(static_cast<unsigned char>(piece.front()) & 0xc0, 0x80);
        whole += piece;
        EXPECT_LE(characters, 8U);
        EXPECT_TRUE(characters >= 3 || whole == text);
    }
    EXPECT_EQ(whole, text);
}

TEST(Chat, KeepsTextAndToolParts)
{
    RunningService running;
    const auto answer = ask(running.visitor(), "tools");
    const json messages = messagesOf(running.visitor(), answer.conversationId);
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0]["role"], "user");
    EXPECT_EQ(messages[0]["parts"], json::array({{{"type", "text"}, {"text", "tools"}}}));
    EXPECT_EQ(messages[1]["role"], "assistant");
    const json &parts = messages[1]["parts"];
    ASSERT_EQ(parts.size(), 5U);
    EXPECT_EQ(parts[0]["type"], "text");
    EXPECT_EQ(parts[1]["type"], "dynamic-tool");
    EXPECT_EQ(parts[1]["toolName"], "search_log");
    EXPECT_EQ(parts[1]["toolCallId"], "call_1");
    EXPECT_EQ(parts[1]["input"]["query"], "arrivals");
    EXPECT_EQ(parts[1]["output"]["complete"], true);
    EXPECT_TRUE(parts[2]["output"]["error"].is_string());
    EXPECT_EQ(parts[0]["text"].get<std::string>() + parts[4]["text"].get<std::string>(),
              answer.text());
}

TEST(Chat, IsListedWithATitleWhenFinishArrives)
{
    RunningService running;
    const auto answer = ask(running.visitor(), "  table of the\n week  ");
    const json rows = running.visitor().getJson("/v1/conversations?limit=50&channel=chat_ui");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0]["id"], answer.conversationId);
    EXPECT_EQ(rows[0]["channel"], "chat_ui");
    EXPECT_EQ(rows[0]["title"], "table of the week");
    EXPECT_EQ(rows[0]["messageCount"], 2);
    EXPECT_EQ(rows[0]["createdAt"], "2026-09-21T14:13:20Z");
    EXPECT_EQ(rows[0]["summary"],
              "The week ends 18 % above the last one. Tuesday is the outlier, and the fog "
              "explains it.");
}

TEST(Chat, GoesOnInItsConversationAndKeepsEarlierTools)
{
    RunningService running;
    const auto first = ask(running.visitor(), "tools");
    const auto second =
        chat(running.visitor(),
             json::array({spokenTurn("user", "tools"), spokenTurn("assistant", first.text()),
                          spokenTurn("user", "table")}),
             first.conversationId);
    expectFinished(second);
    EXPECT_EQ(second.conversationId, first.conversationId);
    const json messages = messagesOf(running.visitor(), first.conversationId);
    ASSERT_EQ(messages.size(), 4U);
    EXPECT_EQ(messages[1]["parts"].size(), 5U);
    EXPECT_EQ(messages[3]["parts"].size(), 1U);
}

TEST(Chat, ShorterHistoryAfterAnEditReplacesTheRest)
{
    RunningService running;
    const auto first = ask(running.visitor(), "tools");
    const auto id = first.conversationId;
    (void)chat(running.visitor(),
               json::array({spokenTurn("user", "tools"), spokenTurn("assistant", first.text()),
                            spokenTurn("user", "table")}),
               id);
    const auto edited = chat(running.visitor(), json::array({spokenTurn("user", "code")}), id);
    expectFinished(edited);
    const json messages = messagesOf(running.visitor(), id);
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0]["parts"][0]["text"], "code");
    EXPECT_EQ(messages[1]["parts"][0]["text"], edited.text());
}

TEST(Chat, RefusesWhatItCannotRead)
{
    RunningService running;
    const auto post = [&](const std::string &body) {
        const auto answer = running.visitor().client().Post("/v1/chat", running.visitor().bearer(),
                                                            body, "application/json");
        return answer ? answer->status : 0;
    };
    EXPECT_EQ(post(R"({"messages": []})"), 400);
    EXPECT_EQ(post(R"({})"), 400);
    EXPECT_EQ(post(R"([])"), 400);
    EXPECT_EQ(post("{"), 400);
    EXPECT_EQ(post("\xff\xfe"), 400);
    EXPECT_EQ(post(R"({"messages": [{"role": "user"}]})"), 400);
    EXPECT_EQ(post(R"({"messages": [{"role": "system", "parts": []}]})"), 400);
    EXPECT_EQ(post(R"({"messages": [{"role": "user", "parts": ["x"]}]})"), 400);
    EXPECT_EQ(post(R"({"messages": [7]})"), 400);
    EXPECT_EQ(post(std::string(100'000, '[')), 400);
    const std::string turn = R"({"role": "user", "parts": [{"type": "text", "text": "hi"}]})";
    EXPECT_EQ(post(R"({"conversation_id": 7, "messages": [)" + turn + "]}"), 400);
    EXPECT_EQ(post(R"({"conversation_id": "conv_none", "messages": [)" + turn + "]}"), 404);
    EXPECT_TRUE(running.visitor().getJson("/v1/conversations").empty());
}

TEST(Chat, DisconnectStoresThePartThatWasSent)
{
    RunningService running(200);
    const auto answer =
        chat(running.visitor(), json::array({spokenTurn("user", "long 100000")}), {}, 2000);
    EXPECT_FALSE(answer.whole);
    running.waitForLog("POST /v1/chat");
    const json messages = messagesOf(running.visitor(), answer.conversationId);
    ASSERT_EQ(messages.size(), 2U);
    const std::string stored = messages[1]["parts"][0]["text"];
    EXPECT_TRUE(stored.starts_with(answer.text()));
    EXPECT_GE(stored.size(), answer.text().size());
    EXPECT_LT(stored.size(), 50'000U);
}

TEST(Chat, DisconnectIsNoticedBetweenDeltas)
{
    RunningService running;
    const auto start = std::chrono::steady_clock::now();
    const auto answer =
        chat(running.visitor(), json::array({spokenTurn("user", "slow long 4000")}), {}, 20);
    running.waitForLog("POST /v1/chat");
    // The answer would take six minutes.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_EQ(messagesOf(running.visitor(), answer.conversationId).size(), 2U);
}

TEST(Chat, TheUsersTurnIsStoredBeforeTheAnswerStarts)
{
    RunningService running;
    std::string id;
    json during;
    json body{{"messages", json::array({spokenTurn("user", "slow long 4000")})}};
    httplib::Request request;
    request.method = "POST";
    request.path = "/v1/chat";
    request.headers = running.visitor().bearer();
    request.body = body.dump();
    request.response_handler = [&](const httplib::Response &response) {
        id = response.get_header_value("x-conversation-id");
        during = messagesOf(running.visitor(), id);
        return false;
    };
    httplib::Response response;
    httplib::Error error = httplib::Error::Success;
    (void)running.visitor().client().send(request, response, error);
    ASSERT_EQ(during.size(), 1U);
    EXPECT_EQ(during[0]["parts"][0]["text"], "slow long 4000");
}

TEST(Chat, AnAnswerWithoutAPlaceAnyMoreIsDropped)
{
    RunningService running;
    std::string id;
    httplib::Request request;
    request.method = "POST";
    request.path = "/v1/chat";
    request.headers = running.visitor().bearer();
    request.body = json{{"messages", json::array({spokenTurn("user", "slow tools")})}}.dump();
    request.response_handler = [&](const httplib::Response &response) {
        id = response.get_header_value("x-conversation-id");
        return true;
    };
    // While the first answer is being sent, the conversation takes another turn.
    request.content_receiver = [&](const char *, std::size_t, std::uint64_t, std::uint64_t) {
        expectFinished(chat(running.visitor(), json::array({spokenTurn("user", "long 9")}), id));
        return false;
    };
    httplib::Response response;
    httplib::Error error = httplib::Error::Success;
    (void)running.visitor().client().send(request, response, error);
    running.waitForLog("POST /v1/chat", 2);
    const json messages = messagesOf(running.visitor(), id);
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0]["parts"][0]["text"], "long 9");
    EXPECT_EQ(messages[1]["parts"][0]["text"].get<std::string>().size(), 9U);
}

TEST(Chat, SixtyFourStreamsRunAtOnce)
{
    RunningService running(100);
    std::atomic<int> finished = 0;
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::jthread> threads;
    for (int i = 0; i < 64; ++i)
        threads.emplace_back([&] {
            const auto answer = ask(running.visitor(), "long 1000");
            finished += answer.whole && answer.text().size() == 1000 ? 1 : 0;
        });
    threads.clear();
    EXPECT_EQ(finished, 64);
    // One takes 1.9 s: they did not wait for each other.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(running.visitor().getJson("/v1/conversations?limit=200").size(), 64U);
}

TEST(Chat, StoppingTheServiceEndsOpenStreamsAndKeepsTheirParts)
{
    RunningService running;
    std::mutex mutex;
    std::condition_variable sent;
    std::string id;
    std::jthread client([&] {
        json body{{"messages", json::array({spokenTurn("user", "slow long 4000")})}};
        httplib::Request request;
        request.method = "POST";
        request.path = "/v1/chat";
        request.headers = running.visitor().bearer();
        request.body = body.dump();
        std::string header;
        request.response_handler = [&](const httplib::Response &response) {
            header = response.get_header_value("x-conversation-id");
            return true;
        };
        request.content_receiver = [&](const char *, std::size_t, std::uint64_t, std::uint64_t) {
            const std::lock_guard guard(mutex);
            id = header;
            sent.notify_all();
            return true;
        };
        httplib::Response response;
        httplib::Error error = httplib::Error::Success;
        EXPECT_FALSE(running.visitor().client().send(request, response, error));
    });
    {
        std::unique_lock lock(mutex);
        ASSERT_TRUE(sent.wait_for(lock, std::chrono::seconds(30), [&] { return !id.empty(); }));
    }
    const auto start = std::chrono::steady_clock::now();
    running.service().stop();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
    std::string error;
    Service again({running.folder() / "data", 0, 900, 0, [] { return 1'790'000'001; }, {}});
    ASSERT_TRUE(again.start(error)) << error;
    Visitor visitor(again.port());
    visitor.signIn();
    EXPECT_EQ(messagesOf(visitor, id).size(), 2U);
}
