// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/rows/assistantparts.h"

#include "presentation/tools/toolcallvalue.h"

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
using chat::textPart;
using chat::ToolCall;
using chat::toolPart;
namespace event = chat::event;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

class AssistantPartsTest : public testing::Test
{
protected:
    AssistantPartsTest()
    {
        m_messages.append(chat::newMessage(ChatMessage::Role::User, {textPart(text("Hi"))}));
        m_messages.append(chat::newMessage(ChatMessage::Role::Assistant));
        m_parts.setMessages(&m_messages);
        m_parts.setMessageRow(1);
    }

    void apply(const chat::ChatStreamEvent &event)
    {
        m_messages.apply(event, 1);
        QCoreApplication::processEvents();
    }
    void say(const char *utf8) { apply(event::TextDelta{.text = text(utf8)}); }
    void call(const char *id) { apply(event::ToolStart{.id = text(id), .name = text(id)}); }
    [[nodiscard]] QVariant role(int row, int role) const
    {
        return m_parts.data(m_parts.index(row), role);
    }
    [[nodiscard]] QList<int> kinds() const
    {
        QList<int> kinds;
        for (int row = 0; row < m_parts.count(); ++row)
            kinds.append(role(row, AssistantParts::KindRole).toInt());
        return kinds;
    }
    [[nodiscard]] QString shown(int row) const { return m_parts.text(row).toString(); }

    MessageListModel m_messages;
    AssistantParts m_parts;
    QAbstractItemModelTester m_tester{&m_parts,
                                      QAbstractItemModelTester::FailureReportingMode::Fatal};
};

using Kinds = QList<int>;
constexpr int Text = AssistantParts::Text;
constexpr int Tools = AssistantParts::Tools;
constexpr int Video = AssistantParts::Video;

} // namespace

TEST_F(AssistantPartsTest, aMessageWithoutPartsHasNoRows)
{
    EXPECT_EQ(m_parts.count(), 0);
}

TEST_F(AssistantPartsTest, aDeltaGrowsTheLastTextAndMakesNoRow)
{
    say("One");
    ASSERT_EQ(kinds(), Kinds{Text});
    QSignalSpy grew(&m_parts, &AssistantParts::textGrew);
    QSignalSpy inserted(&m_parts, &AssistantParts::rowsInserted);
    QSignalSpy changed(&m_parts, &AssistantParts::dataChanged);
    say(" and two");
    EXPECT_EQ(shown(0), text("One and two"));
    ASSERT_EQ(grew.size(), 1);
    EXPECT_EQ(grew.first().first().toInt(), 0);
    EXPECT_TRUE(inserted.isEmpty());
    EXPECT_TRUE(changed.isEmpty());
}

TEST_F(AssistantPartsTest, toolsInARowAreOneRow)
{
    say("Let me see");
    call("1");
    call("2");
    say("So");
    call("3");
    EXPECT_EQ(kinds(), (Kinds{Text, Tools, Text, Tools}));
    EXPECT_EQ(role(1, AssistantParts::ToolsRole).toList().size(), 2);
    EXPECT_EQ(role(1, AssistantParts::SummaryRole).toString(), text("Running 2 tools…"));
    EXPECT_EQ(role(3, AssistantParts::ToolsRole).toList().size(), 1);
    EXPECT_EQ(role(3, AssistantParts::SummaryRole).toString(), QString());
}

TEST_F(AssistantPartsTest, aToolThatEndsChangesItsRowAlone)
{
    say("a");
    call("1");
    QSignalSpy changed(&m_parts, &AssistantParts::dataChanged);
    QSignalSpy inserted(&m_parts, &AssistantParts::rowsInserted);
    apply(event::ToolOutput{.id = text("1"), .outputJSON = text("done")});
    EXPECT_TRUE(inserted.isEmpty());
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed.first().first().toModelIndex().row(), 1);
    const auto tool = role(1, AssistantParts::ToolsRole).toList().first().value<ToolCallValue>();
    EXPECT_EQ(tool.state(), ToolCallState::Completed);
    EXPECT_EQ(tool.outputJSON(), text("done"));
}

TEST_F(AssistantPartsTest, everyChangeOfThePartsIsSaid)
{
    say("a");
    QSignalSpy changed(&m_parts, &AssistantParts::partsChanged);
    say("b");
    EXPECT_EQ(changed.size(), 1);
    call("1");
    EXPECT_EQ(changed.size(), 2);
}

TEST_F(AssistantPartsTest, aTextIsCutAroundItsVideo)
{
    say("See [the tide](media:clips/ti");
    EXPECT_EQ(kinds(), Kinds{Text});
    QSignalSpy changed(&m_parts, &AssistantParts::textChanged);
    say("de.webm) and");
    ASSERT_EQ(kinds(), (Kinds{Text, Video, Text}));
    EXPECT_EQ(shown(0), text("See "));
    EXPECT_GE(changed.size(), 1);
    EXPECT_EQ(role(1, AssistantParts::CaptionRole).toString(), text("the tide"));
    EXPECT_TRUE(role(1, AssistantParts::VideoURLRole)
                    .toUrl()
                    .path()
                    .endsWith(text("/v1/media/clips/tide.webm")));
    EXPECT_EQ(shown(2), text(" and"));
    say(" more");
    EXPECT_EQ(shown(2), text(" and more"));
}

TEST_F(AssistantPartsTest, segmentsStandFurtherApartThanChunks)
{
    say("a [v](media:v.mp4)");
    call("1");
    ASSERT_EQ(kinds(), (Kinds{Text, Video, Tools}));
    EXPECT_EQ(role(0, AssistantParts::GapRole).toDouble(), 0);
    EXPECT_EQ(role(1, AssistantParts::GapRole).toDouble(), 8);
    EXPECT_EQ(role(2, AssistantParts::GapRole).toDouble(), 6);
}

TEST_F(AssistantPartsTest, anotherMessageOfTheRowReplacesAll)
{
    say("old");
    QList<ChatMessage> messages = m_messages.messages();
    messages[1] =
        chat::newMessage(ChatMessage::Role::Assistant,
                         {toolPart(ToolCall{.callID = text("1")}), textPart(text("new"))});
    m_messages.setMessages(messages);
    m_parts.setMessageRow(0);
    EXPECT_EQ(shown(0), text("Hi"));
    m_parts.setMessageRow(1);
    EXPECT_EQ(kinds(), (Kinds{Tools, Text}));
    EXPECT_EQ(shown(1), text("new"));
}

} // namespace velto::presentation
