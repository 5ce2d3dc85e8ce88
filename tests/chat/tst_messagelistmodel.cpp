// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/messagelistmodel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace velto::chat;

namespace
{

ChatMessage message(ChatMessage::Role role, const char *text)
{
    return newMessage(role, {textPart(QString::fromUtf8(text))});
}

class MessageListModelTest : public testing::Test
{
protected:
    MessageListModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy inserted{&model, &QAbstractItemModel::rowsInserted};
    QSignalSpy removed{&model, &QAbstractItemModel::rowsRemoved};
    QSignalSpy changed{&model, &QAbstractItemModel::dataChanged};
    QSignalSpy reset{&model, &QAbstractItemModel::modelReset};
};

} // namespace

TEST_F(MessageListModelTest, showsWhatItHolds)
{
    model.append(message(ChatMessage::Role::User, "hi"));
    model.append(newMessage(ChatMessage::Role::Assistant));
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_TRUE(model.index(0).data(MessageListModel::IsUserRole).toBool());
    EXPECT_FALSE(model.index(1).data(MessageListModel::IsUserRole).toBool());
    EXPECT_EQ(model.index(0).data(MessageListModel::ContentVolumeRole).toDouble(), 2);
    EXPECT_EQ(model.index(0).data(MessageListModel::PartCountRole).toInt(), 1);
    EXPECT_EQ(model.index(0).data(MessageListModel::MessageIdRole).toUuid(), model.at(0).id);
    EXPECT_EQ(model.index(0).data(MessageListModel::CreatedAtRole).toDateTime(),
              model.at(0).createdAt);
    EXPECT_FALSE(model.index(2).data(MessageListModel::IsUserRole).isValid());
}

TEST_F(MessageListModelTest, aDeltaTouchesOneRowInPlace)
{
    model.append(message(ChatMessage::Role::User, "hi"));
    model.append(message(ChatMessage::Role::Assistant, "a"));
    changed.clear();
    model.apply(event::TextDelta{QStringLiteral("b")}, 1);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex().row(), 1);
    EXPECT_EQ(changed[0][1].toModelIndex().row(), 1);
    EXPECT_EQ(changed[0][2].value<QList<int>>(), QList<int>{MessageListModel::ContentVolumeRole});
    EXPECT_EQ(reset.count(), 0);
    EXPECT_EQ(model.at(1).plainText(), QStringLiteral("ab"));
}

TEST_F(MessageListModelTest, aNewPartIsAnnounced)
{
    model.append(newMessage(ChatMessage::Role::Assistant));
    changed.clear();
    model.apply(event::TextDelta{QStringLiteral("b")}, 0);
    EXPECT_TRUE(changed[0][2].value<QList<int>>().contains(
        static_cast<int>(MessageListModel::PartCountRole)));
}

TEST_F(MessageListModelTest, keepsRowsWhoseMessagesStay)
{
    for (const char *text : {"a", "b", "c"})
        model.append(message(ChatMessage::Role::User, text));
    inserted.clear();
    QList<ChatMessage> next = model.messages();
    next.removeLast();
    next.append(message(ChatMessage::Role::Assistant, "d"));
    model.setMessages(next);
    EXPECT_EQ(model.messages(), next);
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed[0][1].toInt(), 2);
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 2);
    EXPECT_EQ(reset.count(), 0);
}

TEST_F(MessageListModelTest, announcesARowWhoseContentChanged)
{
    model.append(message(ChatMessage::Role::User, "a"));
    QList<ChatMessage> next = model.messages();
    next[0].parts = {textPart(QStringLiteral("edited"))};
    changed.clear();
    model.setMessages(next);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(model.at(0).plainText(), QStringLiteral("edited"));
}

TEST_F(MessageListModelTest, tellsOfTheVersionsOfATurn)
{
    model.append(message(ChatMessage::Role::User, "a"));
    const auto role = [this](int role) { return model.index(0).data(role).toInt(); };
    EXPECT_EQ(role(MessageListModel::BranchCountRole), 0);
    EXPECT_EQ(role(MessageListModel::ActiveBranchRole), 0);
    QList<ChatMessage> next = model.messages();
    next[0].branches = {ChatBranch{QUuid::createUuid(), {}, {}},
                        ChatBranch{QUuid::createUuid(), {}, {}}};
    next[0].activeBranchIndex = 1;
    changed.clear();
    model.setMessages(next);
    EXPECT_EQ(role(MessageListModel::BranchCountRole), 2);
    EXPECT_EQ(role(MessageListModel::ActiveBranchRole), 1);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][2].value<QList<int>>(),
              (QList<int>{MessageListModel::BranchCountRole, MessageListModel::ActiveBranchRole}));
}

TEST_F(MessageListModelTest, takesOverWhatNoViewShowsInSilence)
{
    model.append(message(ChatMessage::Role::User, "a"));
    QList<ChatMessage> next = model.messages();
    next[0].branches = {ChatBranch{QUuid::createUuid(), {}, {}},
                        ChatBranch{QUuid::createUuid(), {}, {}}};
    model.setMessages(next);
    (*next[0].branches)[0].tail.append(message(ChatMessage::Role::Assistant, "kept"));
    changed.clear();
    model.setMessages(next);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(model.messages(), next);
}

TEST_F(MessageListModelTest, countFollows)
{
    QSignalSpy count(&model, &MessageListModel::countChanged);
    model.append(message(ChatMessage::Role::User, "a"));
    model.truncate(0);
    model.truncate(0);
    model.truncate(-1);
    EXPECT_EQ(count.count(), 2);
    EXPECT_EQ(model.count(), 0);
}

TEST_F(MessageListModelTest, theStoppedNoteNeedsARow)
{
    model.append(newMessage(ChatMessage::Role::Assistant));
    model.appendStoppedNote(1);
    model.appendStoppedNote(-1);
    EXPECT_TRUE(model.at(0).parts.isEmpty());
    model.appendStoppedNote(0);
    EXPECT_EQ(model.at(0).plainText(), QStringLiteral("_stopped_"));
}
