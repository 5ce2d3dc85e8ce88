// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/messageparts.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace velto::presentation
{

namespace
{

using chat::ChatMessage;
using chat::MessageListModel;

class MessagePartsTest : public testing::Test
{
protected:
    MessagePartsTest()
    {
        messages.append(chat::newMessage(ChatMessage::Role::User, {chat::textPart({})}));
        messages.append(chat::newMessage(ChatMessage::Role::Assistant));
        parts.setMessages(&messages);
        parts.setMessageRow(1);
    }
    [[nodiscard]] QVariant read(int row, int role) const
    {
        return parts.data(parts.index(row), role);
    }
    void apply(const chat::ChatStreamEvent &event)
    {
        messages.apply(event, 1);
        QCoreApplication::processEvents(); // parts follow with the next turn of the loop
    }

    MessageListModel messages;
    MessageParts parts;
    QAbstractItemModelTester tester{&parts, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(MessagePartsTest, aPartThatArrivesIsOneInsertedRow)
{
    QSignalSpy inserted(&parts, &QAbstractItemModel::rowsInserted);
    QSignalSpy reset(&parts, &QAbstractItemModel::modelReset);
    apply(chat::event::TextDelta{QStringLiteral("a")});
    apply(chat::event::ToolStart{QStringLiteral("1"), QStringLiteral("clock")});
    EXPECT_EQ(parts.rowCount(), 2);
    EXPECT_EQ(inserted.count(), 2);
    EXPECT_EQ(reset.count(), 0);
    EXPECT_FALSE(read(0, MessageParts::IsToolRole).toBool());
    EXPECT_TRUE(read(1, MessageParts::IsToolRole).toBool());
    EXPECT_EQ(read(1, MessageParts::ToolNameRole).toString(), QStringLiteral("clock"));
}

TEST_F(MessagePartsTest, aDeltaAnnouncesNothing)
{
    apply(chat::event::TextDelta{QStringLiteral("a")});
    QSignalSpy changed(&parts, &QAbstractItemModel::dataChanged);
    apply(chat::event::TextDelta{QStringLiteral("b")});
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(MessagePartsTest, aToolThatEndsChangesItsRow)
{
    apply(chat::event::TextDelta{QStringLiteral("a")});
    apply(chat::event::ToolStart{QStringLiteral("1"), QStringLiteral("clock")});
    EXPECT_EQ(read(1, MessageParts::ToolStateRole).toInt(), int(MessageParts::State::Running));
    QSignalSpy changed(&parts, &QAbstractItemModel::dataChanged);
    apply(chat::event::ToolOutput{QStringLiteral("1"), QStringLiteral("12:00")});
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.first().first().toModelIndex().row(), 1);
    EXPECT_EQ(read(1, MessageParts::ToolStateRole).toInt(), int(MessageParts::State::Completed));
}

TEST_F(MessagePartsTest, partsThatGoBeforeTheyWereShownAreSafe)
{
    apply(chat::event::TextDelta{QStringLiteral("a")});
    messages.apply(chat::event::ToolStart{QStringLiteral("1"), QStringLiteral("clock")}, 1);
    messages.truncate(1);
    EXPECT_EQ(read(0, MessageParts::ToolNameRole).toString(), QString());
    QCoreApplication::processEvents();
    EXPECT_EQ(parts.rowCount(), 0);
}

TEST_F(MessagePartsTest, anotherMessageInItsPlaceStartsAfresh)
{
    apply(chat::event::TextDelta{QStringLiteral("a")});
    apply(chat::event::ToolStart{QStringLiteral("1"), QStringLiteral("clock")});
    messages.truncate(1);
    messages.append(chat::newMessage(ChatMessage::Role::Assistant));
    apply(chat::event::TextDelta{QStringLiteral("b")});
    EXPECT_EQ(parts.rowCount(), 1);
}

} // namespace velto::presentation
