// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/storedmessages.h"

#include "base/json.h"

#include <gtest/gtest.h>

using namespace velto::chat;
using velto::service::StoredUIMessage;

namespace
{

QList<ChatMessage> converted(const QByteArray &json)
{
    const auto stored =
        velto::base::json::decode<QList<StoredUIMessage>>(json, velto::base::json::Keys::Plain);
    EXPECT_TRUE(stored.has_value());
    return chatMessagesFrom(stored.value_or(QList<StoredUIMessage>()));
}

} // namespace

TEST(StoredMessages, keepUserAndAssistantInOrder)
{
    const auto messages = converted(R"([
        {"id":"1","role":"user","parts":[{"type":"text","text":"q"}]},
        {"id":"2","role":"assistant","parts":[{"type":"text","text":"a"}]}])");
    ASSERT_EQ(messages.size(), 2);
    EXPECT_EQ(messages[0].role, ChatMessage::Role::User);
    EXPECT_EQ(messages[0].plainText(), QStringLiteral("q"));
    EXPECT_FALSE(messages[0].branches.has_value());
    EXPECT_EQ(messages[1].role, ChatMessage::Role::Assistant);
}

TEST(StoredMessages, dropOtherRolesAndMessagesLeftWithNothing)
{
    EXPECT_TRUE(converted(R"([
        {"id":"1","role":"system","parts":[{"type":"text","text":"s"}]},
        {"id":"2","role":"User","parts":[{"type":"text","text":"s"}]},
        {"id":"3","role":"assistant","parts":[{"type":"step-start"},{"type":"reasoning","text":"r"}]},
        {"id":"4","role":"assistant","parts":[{"type":"text","text":""},{"type":"text"}]},
        {"id":"5","role":"user","parts":[]}])")
                    .isEmpty());
}

TEST(StoredMessages, aToolShowsAsCompletedWithDisplayTexts)
{
    const auto messages = converted(R"([{"id":"1","role":"assistant","parts":[
        {"type":"dynamic-tool","toolName":"search","toolCallId":"c","input":{"q":1},"output":"done"},
        {"type":"dynamic-tool","output":7}]}])");
    ASSERT_EQ(messages.size(), 1);
    const auto &full = std::get<ToolCall>(messages[0].parts[0].kind);
    EXPECT_EQ(full, (ToolCall{QStringLiteral("c"),
                              QStringLiteral("search"),
                              QStringLiteral("{\n    \"q\": 1\n}"),
                              QStringLiteral("done"),
                              {},
                              ToolState::Completed}));
    const auto &bare = std::get<ToolCall>(messages[0].parts[1].kind);
    EXPECT_EQ(bare.name, QStringLiteral("tool"));
    EXPECT_FALSE(QUuid(bare.callID).isNull());
    EXPECT_TRUE(bare.inputJSON.isEmpty());
    EXPECT_TRUE(bare.outputJSON.isEmpty());
    EXPECT_EQ(bare.state, ToolState::Completed);
}
