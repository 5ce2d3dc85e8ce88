// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/branching.h"

#include <gtest/gtest.h>

using namespace velto::chat;

namespace
{

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

ChatMessage user(const char *words)
{
    return newMessage(ChatMessage::Role::User, {textPart(text(words))});
}

ChatMessage assistant(const char *words)
{
    return newMessage(ChatMessage::Role::Assistant, {textPart(text(words))});
}

QStringList texts(const QList<ChatMessage> &messages)
{
    QStringList texts;
    for (const ChatMessage &message : messages)
        texts.append(message.plainText());
    return texts;
}

/// What an answer that has come to its end looks like.
void answerWith(QList<ChatMessage> &messages, const char *words)
{
    messages.last().parts = {textPart(text(words))};
}

class Branching : public testing::Test
{
protected:
    /// Edits the first turn and lets the answer be `answer`.
    void edit(const char *words, const char *answer)
    {
        messages = edited(messages, first(), text(words)).value();
        answerWith(messages, answer);
    }
    [[nodiscard]] QUuid first() const { return messages[0].id; }

    QList<ChatMessage> messages{user("q1"), assistant("a1"), user("q2"), assistant("a2")};
};

} // namespace

TEST_F(Branching, theFirstEditLeavesTwoVersionsAndAFurtherOneThree)
{
    const QList<ChatMessage> before = messages;
    edit("other", "b1");
    ASSERT_EQ(messages[0].branches->size(), 2);
    EXPECT_EQ(messages[0].activeBranchIndex, 1);
    EXPECT_EQ(messages[0].branches->at(0).userParts, before[0].parts);
    EXPECT_EQ(messages[0].branches->at(0).tail, before.sliced(1));
    edit("third", "c1");
    ASSERT_EQ(messages[0].branches->size(), 3);
    EXPECT_EQ(messages[0].activeBranchIndex, 2);
    EXPECT_EQ(texts(messages[0].branches->at(1).tail), QStringList{text("b1")});
    EXPECT_EQ(texts(messages), (QStringList{text("third"), text("c1")}));
}

TEST_F(Branching, anEditKeepsTheMessageItselfAndAllBeforeIt)
{
    const QList<ChatMessage> before = messages;
    messages = edited(messages, messages[2].id, text(" \n other \t")).value();
    ASSERT_EQ(messages.size(), 4);
    EXPECT_EQ(messages.first(2), before.first(2));
    EXPECT_EQ(messages[2].id, before[2].id);
    EXPECT_EQ(messages[2].createdAt, before[2].createdAt);
    EXPECT_EQ(messages[2].plainText(), text("other"));
    EXPECT_EQ(messages[2].parts.size(), 1);
    EXPECT_EQ(messages[3].role, ChatMessage::Role::Assistant);
    EXPECT_TRUE(messages[3].parts.isEmpty());
    EXPECT_NE(messages[3].id, before[3].id);
}

TEST_F(Branching, theNewVersionHoldsItsPlaceholderUntilItIsLeft)
{
    edit("other", "b1");
    const ChatBranch &active = messages[0].branches->at(1);
    EXPECT_EQ(active.userParts, messages[0].parts);
    ASSERT_EQ(active.tail.size(), 1);
    EXPECT_TRUE(active.tail[0].parts.isEmpty());
    EXPECT_EQ(active.tail[0].id, messages[1].id);
}

TEST_F(Branching, anEditThatCantBeDoneGivesNothing)
{
    for (const char *blank : {"", "  ", "\n \t\n"})
        EXPECT_FALSE(edited(messages, first(), text(blank)).has_value());
    EXPECT_FALSE(edited(messages, QUuid::createUuid(), text("x")).has_value());
    EXPECT_FALSE(edited(messages, messages[1].id, text("x")).has_value());
    EXPECT_FALSE(edited({}, first(), text("x")).has_value());
}

TEST_F(Branching, anEditUnderAnIndexOutsidePreservesNothing)
{
    edit("other", "b1");
    const QList<ChatBranch> before = *messages[0].branches;
    for (const int index : {-1, 2, 7}) {
        QList<ChatMessage> odd = messages;
        odd[0].activeBranchIndex = index;
        odd = edited(odd, first(), text("x")).value();
        EXPECT_EQ(odd[0].branches->first(2), before);
        EXPECT_EQ(odd[0].branches->size(), 3);
        EXPECT_EQ(odd[0].activeBranchIndex, 2);
    }
}

TEST_F(Branching, aListOfNoVersionsCountsAsNone)
{
    messages[0].branches = QList<ChatBranch>();
    const QList<ChatMessage> before = messages;
    edit("other", "b1");
    ASSERT_EQ(messages[0].branches->size(), 2);
    EXPECT_EQ(messages[0].branches->at(0).tail, before.sliced(1));
}

TEST_F(Branching, switchingThereAndBackShowsTheAnswerThatWasLeft)
{
    const QList<ChatMessage> original = messages;
    edit("other", "b1");
    const QList<ChatMessage> left = messages;
    messages = switched(messages, first(), 0).value();
    EXPECT_EQ(texts(messages), texts(original));
    EXPECT_EQ(messages.sliced(1), original.sliced(1));
    EXPECT_EQ(messages[0].activeBranchIndex, 0);
    messages = switched(messages, first(), 1).value();
    EXPECT_EQ(messages[0].parts, left[0].parts);
    EXPECT_EQ(messages.sliced(1), left.sliced(1));
}

TEST_F(Branching, leavingAVersionKeepsTheTurnAsItStandsInTheList)
{
    edit("other", "b1");
    messages[0].parts = {textPart(text("changed"))};
    const QList<MessagePart> parts = messages[0].parts;
    messages = switched(messages, first(), 0).value();
    EXPECT_EQ(messages[0].branches->at(1).userParts, parts);
}

TEST_F(Branching, whatIsSaidInAVersionStaysInIt)
{
    edit("other", "b1");
    messages = switched(messages, first(), 0).value();
    messages = continued(messages, text("Continue")).value();
    answerWith(messages, "more");
    messages = switched(messages, first(), 1).value();
    EXPECT_EQ(texts(messages), (QStringList{text("other"), text("b1")}));
    messages = switched(messages, first(), 0).value();
    EXPECT_EQ(texts(messages), (QStringList{text("q1"), text("a1"), text("q2"), text("a2"),
                                            text("Continue"), text("more")}));
}

TEST_F(Branching, versionsNestByValue)
{
    messages = edited(messages, messages[2].id, text("q2b")).value();
    answerWith(messages, "a2b");
    const QUuid inner = messages[2].id;
    edit("outer", "b1");
    messages = switched(messages, first(), 0).value();
    EXPECT_EQ(messages[2].activeBranchIndex, 1);
    messages = switched(messages, inner, 0).value();
    EXPECT_EQ(texts(messages), (QStringList{text("q1"), text("a1"), text("q2"), text("a2")}));
    messages = switched(messages, first(), 1).value();
    messages = switched(messages, first(), 0).value();
    EXPECT_EQ(messages[2].activeBranchIndex, 0);
    EXPECT_EQ(messages[2].branches->size(), 2);
}

TEST_F(Branching, aSwitchThatCantBeDoneGivesNothing)
{
    EXPECT_FALSE(switched(messages, first(), 0).has_value()); // never edited
    edit("other", "b1");
    for (const int index : {-1, 1, 2, 100}) // 1 is on screen
        EXPECT_FALSE(switched(messages, first(), index).has_value()) << index;
    EXPECT_FALSE(switched(messages, messages[1].id, 0).has_value());
    EXPECT_FALSE(switched(messages, QUuid::createUuid(), 0).has_value());
}

TEST_F(Branching, aSwitchUnderAnIndexOutsidePreservesNothing)
{
    edit("other", "b1");
    messages[0].activeBranchIndex = 5;
    const QList<ChatBranch> before = *messages[0].branches;
    messages = switched(messages, first(), 0).value();
    EXPECT_EQ(*messages[0].branches, before);
    EXPECT_EQ(messages[0].activeBranchIndex, 0);
}

TEST_F(Branching, aVersionThatLostItsPlaceholderShowsWithNoAnswer)
{
    messages = edited(messages, first(), text("other")).value();
    messages.removeLast();
    messages = switched(messages, first(), 0).value();
    messages = switched(messages, first(), 1).value();
    EXPECT_EQ(texts(messages), QStringList{text("other")});
}

TEST_F(Branching, regeneratingMakesNoVersion)
{
    const QList<ChatMessage> before = messages;
    messages = regenerated(messages).value();
    EXPECT_EQ(messages.first(3), before.first(3));
    ASSERT_EQ(messages.size(), 4);
    EXPECT_TRUE(messages[3].parts.isEmpty());
    EXPECT_NE(messages[3].id, before[3].id);
}

TEST_F(Branching, regeneratingKeepsTheVersionsOfATurnAsTheyAre)
{
    edit("other", "b1");
    const ChatMessage turn = messages[0];
    messages = regenerated(messages).value();
    EXPECT_EQ(messages[0], turn);
    EXPECT_EQ(messages.size(), 2);
}

TEST_F(Branching, regeneratingDropsAllAnswersAfterTheLastTurn)
{
    messages.append(assistant("stored twice"));
    messages = regenerated(messages).value();
    EXPECT_EQ(texts(messages), (QStringList{text("q1"), text("a1"), text("q2"), QString()}));
}

TEST_F(Branching, regeneratingAddsThePlaceholderThatAFailureRemoved)
{
    messages = regenerated({messages[0]}).value();
    EXPECT_EQ(texts(messages), (QStringList{text("q1"), QString()}));
}

TEST_F(Branching, regeneratingNeedsATurn)
{
    EXPECT_FALSE(regenerated({}).has_value());
    EXPECT_FALSE(regenerated({assistant("a")}).has_value());
}

TEST_F(Branching, continuingIsATurnOfItsOwn)
{
    const QList<ChatMessage> before = messages;
    messages = continued(messages, text("Go on")).value();
    ASSERT_EQ(messages.size(), 6);
    EXPECT_EQ(messages.first(4), before);
    EXPECT_EQ(messages[4].role, ChatMessage::Role::User);
    EXPECT_EQ(messages[4].parts.size(), 1);
    EXPECT_EQ(messages[4].plainText(), text("Go on"));
    EXPECT_FALSE(messages[4].branches.has_value());
    EXPECT_EQ(messages[5].role, ChatMessage::Role::Assistant);
    EXPECT_TRUE(messages[5].parts.isEmpty());
}

TEST_F(Branching, continuingNeedsAnAnswerAtTheEnd)
{
    EXPECT_FALSE(continued({}, text("Go on")).has_value());
    EXPECT_FALSE(continued(messages.first(3), text("Go on")).has_value());
}
