// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/tools/assistantchunks.h"

#include <gtest/gtest.h>

namespace velto::presentation
{

namespace
{

using chat::MessagePart;
using chat::textPart;
using chat::ToolCall;
using chat::toolPart;
using chat::ToolState;

ToolCall tool(const QString &id, ToolState state = ToolState::Completed)
{
    return {.callID = id, .name = id, .state = state};
}

/// "text" for a text, and for tools their ids.
QStringList shapes(const QList<MessagePart> &parts)
{
    QStringList shapes;
    for (const AssistantChunk &chunk : assistantChunks(parts)) {
        QStringList ids;
        if (const auto *tools = std::get_if<QList<ToolCall>>(&chunk.kind)) {
            for (const ToolCall &call : *tools)
                ids.append(call.callID);
        }
        shapes.append(ids.isEmpty() ? QStringLiteral("text") : ids.join(u','));
    }
    return shapes;
}

} // namespace

TEST(AssistantChunks, keepsTheOrderAndJoinsRunsOfTools)
{
    const QList<MessagePart> parts{
        textPart(QStringLiteral("a")), toolPart(tool(QStringLiteral("1"))),
        toolPart(tool(QStringLiteral("2"))), textPart(QStringLiteral("b")),
        toolPart(tool(QStringLiteral("3")))};
    EXPECT_EQ(shapes(parts), (QStringList{QStringLiteral("text"), QStringLiteral("1,2"),
                                          QStringLiteral("text"), QStringLiteral("3")}));
}

TEST(AssistantChunks, twoTextsInARowStayTwo)
{
    EXPECT_EQ(shapes({textPart(QStringLiteral("a")), textPart(QStringLiteral("b"))}).size(), 2);
}

TEST(AssistantChunks, anEmptyTextSplitsARunOfTools)
{
    const QList<MessagePart> parts{toolPart(tool(QStringLiteral("1"))), textPart(QString()),
                                   toolPart(tool(QStringLiteral("2"))),
                                   textPart(QStringLiteral(" \n")),
                                   toolPart(tool(QStringLiteral("3")))};
    EXPECT_EQ(shapes(parts),
              (QStringList{QStringLiteral("1"), QStringLiteral("text"), QStringLiteral("2"),
                           QStringLiteral("text"), QStringLiteral("3")}));
}

TEST(AssistantChunks, noPartsNoChunks)
{
    EXPECT_TRUE(assistantChunks({}).isEmpty());
}

TEST(AssistantChunks, everyChunkHasAnIdOfItsOwn)
{
    const auto chunks =
        assistantChunks({textPart(QStringLiteral("a")), textPart(QStringLiteral("a")),
                         toolPart(tool(QStringLiteral("1")))});
    EXPECT_NE(chunks[0].id, chunks[1].id);
    EXPECT_NE(chunks[1].id, chunks[2].id);
}

TEST(ToolGroupSummary, oneRunningToolDecides)
{
    QList<ToolCall> tools{tool(QStringLiteral("1"), ToolState::Running),
                          tool(QStringLiteral("2"), ToolState::Failed), tool(QStringLiteral("3"))};
    EXPECT_EQ(toolGroupSummary(tools), QStringLiteral("Running 3 tools…"));
    tools[0].state = ToolState::Completed;
    EXPECT_EQ(toolGroupSummary(tools), QStringLiteral("3 tools (1 failed)"));
    tools[1].state = ToolState::Completed;
    EXPECT_EQ(toolGroupSummary(tools), QStringLiteral("Ran 3 tools"));
}

} // namespace velto::presentation
