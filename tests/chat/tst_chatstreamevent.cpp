// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/chatstreamevent.h"

#include <gtest/gtest.h>

using namespace velto::chat;

namespace
{

std::optional<ChatStreamEvent> eventOf(const QByteArray &line)
{
    std::optional<StreamFrame> frame = frameFromLine(line);
    return frame ? eventFrom(std::move(*frame)) : std::nullopt;
}

void expectEvent(const QByteArray &line, const ChatStreamEvent &expected)
{
    const auto event = eventOf(line);
    ASSERT_TRUE(event.has_value()) << line.constData();
    EXPECT_EQ(*event, expected) << line.constData();
}

void expectNothing(const QByteArray &line)
{
    EXPECT_FALSE(eventOf(line).has_value()) << line.constData();
}

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

ChatMessage answer(QList<MessagePart> parts = {})
{
    return newMessage(ChatMessage::Role::Assistant, std::move(parts));
}

const ToolCall &callAt(const ChatMessage &message, qsizetype index)
{
    return std::get<ToolCall>(message.parts[index].kind);
}

} // namespace

TEST(StreamFrame, isReadWithAndWithoutThePrefix)
{
    expectEvent(R"(data: {"type":"finish"})", event::Finish{});
    expectEvent(R"({"type":"finish"})", event::Finish{});
}

TEST(StreamFrame, isAbsentForLinesThatHoldNone)
{
    for (const char *line :
         {"", "data: ", ": comment", "event: message", "data: [DONE]", "data:{\"type\":\"finish\"}",
          "data: {", "data: {}", "null", R"(data: {"delta":"x"})", R"(data: {"type":1})",
          R"(data: {"type":"text-delta","delta":1})",
          R"(data: {"type":"text-delta","delta":"x","data":"y"})"})
        EXPECT_FALSE(frameFromLine(line).has_value()) << line;
}

TEST(StreamFrame, matchesKeysToTheLetter)
{
    expectNothing(R"({"type":"tool-input-start","tool_call_id":"1","tool_name":"x"})");
}

TEST(EventMapping, textDelta)
{
    expectEvent(R"({"type":"text-delta","delta":"a b"})", event::TextDelta{text("a b")});
    expectEvent("data: {\"type\":\"text-delta\",\"delta\":\"\"}", event::TextDelta{QString()});
    expectNothing(R"({"type":"text-delta"})");
    expectNothing(R"({"type":"text-delta","delta":null})");
}

TEST(EventMapping, toolStartNeedsIdAndName)
{
    expectEvent(R"({"type":"tool-input-start","toolCallId":"1","toolName":"search"})",
                event::ToolStart{text("1"), text("search")});
    expectNothing(R"({"type":"tool-input-start","toolCallId":"1"})");
    expectNothing(R"({"type":"tool-input-start","toolName":"search"})");
}

TEST(EventMapping, toolInputIsShownAsDisplayText)
{
    expectEvent(R"({"type":"tool-input-available","toolCallId":"1","input":{"b":1,"a":"x/y"}})",
                event::ToolInput{text("1"), text("{\n    \"a\": \"x/y\",\n    \"b\": 1\n}")});
    expectEvent(R"({"type":"tool-input-available","toolCallId":"1"})",
                event::ToolInput{text("1"), {}});
    expectEvent(R"({"type":"tool-input-available","toolCallId":"1","input":null})",
                event::ToolInput{text("1"), {}});
    expectNothing(R"({"type":"tool-input-available","input":"x"})");
}

TEST(EventMapping, toolOutputIsShownAsDisplayText)
{
    expectEvent(R"({"type":"tool-output-available","toolCallId":"1","output":42})",
                event::ToolOutput{text("1"), {}});
    expectEvent(R"({"type":"tool-output-available","toolCallId":"1","output":true})",
                event::ToolOutput{text("1"), {}});
    expectEvent(R"({"type":"tool-output-available","toolCallId":"1","output":"plain"})",
                event::ToolOutput{text("1"), text("plain")});
    expectEvent(R"({"type":"tool-output-available","toolCallId":"1","output":[2,"b"]})",
                event::ToolOutput{text("1"), text("[\n    2,\n    \"b\"\n]")});
    expectNothing(R"({"type":"tool-output-available","output":"x"})");
}

TEST(EventMapping, toolErrorHasAFallbackText)
{
    expectEvent(R"({"type":"tool-output-error","toolCallId":"1","errorText":"no"})",
                event::ToolError{text("1"), text("no")});
    expectEvent(R"({"type":"tool-output-error","toolCallId":"1"})",
                event::ToolError{text("1"), text("tool error")});
    expectNothing(R"({"type":"tool-output-error","errorText":"no"})");
}

TEST(EventMapping, progressAndSuggestionNeedText)
{
    expectEvent(R"({"type":"data-agent_progress","data":{"summary":"Reading"}})",
                event::AgentProgress{text("Reading")});
    expectNothing(R"({"type":"data-agent_progress","data":{"summary":""}})");
    expectNothing(R"({"type":"data-agent_progress","data":{"suggestion":"x"}})");
    expectNothing(R"({"type":"data-agent_progress"})");
    expectEvent(R"({"type":"data-prompt_suggestion","data":{"suggestion":"More"}})",
                event::PromptSuggestion{text("More")});
    expectNothing(R"({"type":"data-prompt_suggestion","data":{"suggestion":""}})");
    expectNothing(R"({"type":"data-prompt_suggestion","data":{}})");
}

TEST(EventMapping, errorHasAFallbackText)
{
    expectEvent(R"({"type":"error","errorText":"boom"})", event::Error{text("boom")});
    expectEvent(R"({"type":"error"})", event::Error{text("stream error")});
}

TEST(EventMapping, otherTypesAreIgnored)
{
    expectNothing(R"({"type":"text-start"})");
    expectNothing(R"({"type":"Finish"})");
    expectNothing(R"({"type":"data-other","data":{"summary":"x"}})");
}

TEST(ApplyEvent, deltasGrowTheLastTextPart)
{
    ChatMessage message = answer();
    applyEvent(event::TextDelta{text("Hel")}, message);
    const QUuid id = message.parts.first().id;
    applyEvent(event::TextDelta{text("lo")}, message);
    ASSERT_EQ(message.parts.size(), 1);
    EXPECT_EQ(message.plainText(), text("Hello"));
    EXPECT_EQ(message.parts.first().id, id);
}

TEST(ApplyEvent, textNeverMergesAcrossATool)
{
    ChatMessage message = answer();
    applyEvent(event::TextDelta{text("a")}, message);
    applyEvent(event::ToolStart{text("1"), text("search")}, message);
    applyEvent(event::TextDelta{text("b")}, message);
    ASSERT_EQ(message.parts.size(), 3);
    EXPECT_EQ(message.plainText(), text("ab"));
    EXPECT_EQ(callAt(message, 1).state, ToolState::Running);
}

TEST(ApplyEvent, toolGoesThroughItsStates)
{
    ChatMessage message = answer();
    applyEvent(event::ToolStart{text("1"), text("search")}, message);
    applyEvent(event::ToolInput{text("1"), text("in")}, message);
    EXPECT_EQ(callAt(message, 0).inputJSON, text("in"));
    EXPECT_EQ(callAt(message, 0).state, ToolState::Running);
    applyEvent(event::ToolOutput{text("1"), text("out")}, message);
    EXPECT_EQ(callAt(message, 0).outputJSON, text("out"));
    EXPECT_EQ(callAt(message, 0).state, ToolState::Completed);
    applyEvent(event::ToolError{text("1"), text("no")}, message);
    EXPECT_EQ(callAt(message, 0).errorText, text("no"));
    EXPECT_EQ(callAt(message, 0).state, ToolState::Failed);
}

TEST(ApplyEvent, aRepeatedIdMakesTwoPartsAndUpdatesReachTheFirst)
{
    ChatMessage message = answer();
    applyEvent(event::ToolStart{text("1"), text("first")}, message);
    applyEvent(event::ToolStart{text("1"), text("second")}, message);
    applyEvent(event::ToolOutput{text("1"), text("out")}, message);
    ASSERT_EQ(message.parts.size(), 2);
    EXPECT_EQ(callAt(message, 0).state, ToolState::Completed);
    EXPECT_EQ(callAt(message, 1).state, ToolState::Running);
    EXPECT_TRUE(callAt(message, 1).outputJSON.isEmpty());
}

TEST(ApplyEvent, anUnknownIdChangesNothing)
{
    ChatMessage message = answer();
    applyEvent(event::ToolStart{text("1"), text("search")}, message);
    const ChatMessage before = message;
    applyEvent(event::ToolInput{text("2"), text("in")}, message);
    applyEvent(event::ToolOutput{text("2"), text("out")}, message);
    applyEvent(event::ToolError{text("2"), text("no")}, message);
    EXPECT_EQ(message, before);
}

TEST(ApplyEvent, eventsOfTheConversationLeaveTheMessageAlone)
{
    ChatMessage message = answer({textPart(text("a"))});
    const ChatMessage before = message;
    for (const ChatStreamEvent &event :
         {ChatStreamEvent(event::AgentProgress{text("p")}),
          ChatStreamEvent(event::Error{text("e")}),
          ChatStreamEvent(event::PromptSuggestion{text("s")}), ChatStreamEvent(event::Finish{})})
        applyEvent(event, message);
    EXPECT_EQ(message, before);
}

TEST(ChatMessage, plainTextSkipsTools)
{
    const ChatMessage message =
        answer({textPart(text("a")), toolPart({.callID = text("1")}), textPart(text("b"))});
    EXPECT_EQ(message.plainText(), text("ab"));
}

TEST(ChatMessage, contentVolumeCountsTextPayloadsAndToolStates)
{
    EXPECT_EQ(answer().contentVolume(), 0);
    EXPECT_EQ(answer({textPart(text("abc"))}).contentVolume(), 3);
    ToolCall call{.callID = text("1"), .name = text("search"), .inputJSON = text("in")};
    EXPECT_EQ(answer({toolPart(call)}).contentVolume(), 2 + 1 + 1);
    call.outputJSON = text("out");
    call.state = ToolState::Completed;
    EXPECT_EQ(answer({toolPart(call)}).contentVolume(), 2 + 3 + 1);
}

TEST(StoppedNote, continuesATextAndStandsAloneElsewhere)
{
    ChatMessage empty = answer();
    appendStoppedNote(empty);
    EXPECT_EQ(empty.plainText(), text("_stopped_"));

    ChatMessage written = answer({textPart(text("Some"))});
    appendStoppedNote(written);
    ASSERT_EQ(written.parts.size(), 1);
    EXPECT_EQ(written.plainText(), text("Some\n\n_stopped_"));

    ChatMessage inTool = answer({toolPart({.callID = text("1")})});
    appendStoppedNote(inTool);
    ASSERT_EQ(inTool.parts.size(), 2);
    EXPECT_EQ(callAt(inTool, 0).state, ToolState::Running);
    EXPECT_EQ(inTool.plainText(), text("_stopped_"));
}
