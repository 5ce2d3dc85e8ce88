// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/conversationtitle.h"

#include <gtest/gtest.h>

namespace velto::presentation
{

namespace
{

using chat::ChatMessage;
using Conversations = std::optional<QList<service::ConversationSummary>>;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

ChatMessage message(ChatMessage::Role role, const QString &words)
{
    return chat::newMessage(role, {chat::textPart(words)});
}

Conversations history(const char *id, std::optional<QString> title)
{
    service::ConversationSummary summary;
    summary.id = text(id);
    summary.title = std::move(title);
    return QList{summary};
}

const QList<ChatMessage> asked = {
    message(ChatMessage::Role::Assistant, QStringLiteral("Hello")),
    message(ChatMessage::Role::User, QStringLiteral("  When is\nhigh water? \n")),
    message(ChatMessage::Role::User, QStringLiteral("Later"))};

} // namespace

TEST(ConversationTitle, isTheHistorysTrimmedTitle)
{
    EXPECT_EQ(conversationTitle(text("c"), history("c", text(" Tides \n")), asked), text("Tides"));
}

TEST(ConversationTitle, comesFromTheFirstUserMessageWhenTheStoredOneIsBlank)
{
    EXPECT_EQ(conversationTitle(text("c"), history("c", text(" \n ")), asked),
              text("When is high water?"));
    EXPECT_EQ(conversationTitle(text("c"), history("c", std::nullopt), asked),
              text("When is high water?"));
    EXPECT_EQ(conversationTitle(text("c"), history("d", text("Other")), asked),
              text("When is high water?"));
    EXPECT_EQ(conversationTitle(std::nullopt, history("c", text("Tides")), asked),
              text("When is high water?"));
    EXPECT_EQ(conversationTitle(text("c"), std::nullopt, asked), text("When is high water?"));
}

TEST(ConversationTitle, holdsSixtyCharactersAsReadersCountThem)
{
    const QString family = text("👩‍👩‍👧‍👦");
    const QList<ChatMessage> messages{message(ChatMessage::Role::User, family.repeated(70))};
    EXPECT_EQ(conversationTitle(std::nullopt, std::nullopt, messages), family.repeated(60));
    const QList<ChatMessage> plain{message(ChatMessage::Role::User, text("a").repeated(61))};
    EXPECT_EQ(conversationTitle(std::nullopt, std::nullopt, plain), text("a").repeated(60));
}

TEST(ConversationTitle, isAbsentWithoutAUserMessageOrWithABlankOne)
{
    EXPECT_EQ(conversationTitle(std::nullopt, std::nullopt, {}), std::nullopt);
    EXPECT_EQ(conversationTitle(std::nullopt, std::nullopt, {asked.first()}), std::nullopt);
    EXPECT_EQ(conversationTitle(std::nullopt, std::nullopt,
                                {message(ChatMessage::Role::User, text(" \n"))}),
              std::nullopt);
}

TEST(CanSendDraft, ignoresBlanksAndTabsOnly)
{
    EXPECT_FALSE(canSendDraft(text("")));
    EXPECT_FALSE(canSendDraft(text("  \t ")));
    EXPECT_FALSE(canSendDraft(text(" \u3000")));
    EXPECT_TRUE(canSendDraft(text("\n")));
    EXPECT_TRUE(canSendDraft(text(" a ")));
    EXPECT_TRUE(canSendDraft(text("😀")));
}

} // namespace velto::presentation
