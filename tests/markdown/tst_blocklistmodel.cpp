// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/incrementalmarkdown.h"
#include "markdown/render/blocklistmodel.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace velto::markdown
{

namespace
{

/// A model that is watched, and what it said.
class BlockListModelTest : public testing::Test
{
protected:
    BlockListModelTest()
    {
        const auto note = [this](const char *what) {
            return [this, what](const QModelIndex &, int first, int last) {
                said << QStringLiteral("%1 %2-%3").arg(QLatin1String(what)).arg(first).arg(last);
            };
        };
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, &model, note("inserted"));
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &model, note("removed"));
        QObject::connect(&model, &QAbstractItemModel::dataChanged, &model,
                         [this](const QModelIndex &from, const QModelIndex &to) {
                             said << QStringLiteral("changed %1-%2").arg(from.row()).arg(to.row());
                         });
    }

    void show(const char *text)
    {
        said.clear();
        model.setBlocks(MarkdownContent(QString::fromUtf8(text)).blocks);
    }

    BlockListModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QStringList said;
};

} // namespace

TEST_F(BlockListModelTest, EqualBlocksChangeNothing)
{
    show("a\n\nb");
    show("a\n\nb");
    EXPECT_TRUE(said.isEmpty());
}

TEST_F(BlockListModelTest, AGrowingParagraphChangesItsRow)
{
    show("a\n\nb");
    show("a\n\nbc");
    EXPECT_EQ(said, QStringList({QStringLiteral("changed 1-1")}));
}

TEST_F(BlockListModelTest, NewBlocksAreInserted)
{
    show("a");
    show("a\n\nb\n\nc");
    EXPECT_EQ(said, QStringList({QStringLiteral("inserted 1-2")}));
}

TEST_F(BlockListModelTest, BlocksThatWentAreRemoved)
{
    show("a\n\nb\n\nc");
    show("a");
    EXPECT_EQ(said, QStringList({QStringLiteral("removed 1-2")}));
}

TEST_F(BlockListModelTest, WhatStaysBehindAChangeStays)
{
    show("a\n\nb\n\nz");
    show("a\n\nb\n\nnew\n\nz");
    EXPECT_EQ(said, QStringList({QStringLiteral("inserted 2-2")}));
    show("a\n\nz");
    EXPECT_EQ(said, QStringList({QStringLiteral("removed 1-2")}));
}

TEST_F(BlockListModelTest, OnlyRowsThatDifferChange)
{
    show("a\n\nb\n\nc\n\nd");
    show("a\n\nx\n\nc\n\ny");
    EXPECT_EQ(said, QStringList({QStringLiteral("changed 1-1"), QStringLiteral("changed 3-3")}));
}

TEST_F(BlockListModelTest, RowsBeforeTheFirstChangedAreNotCompared)
{
    show("a\n\nb");
    said.clear();
    model.setBlocks(MarkdownContent(QStringLiteral("x\n\nc")).blocks, 1);
    EXPECT_EQ(said, QStringList({QStringLiteral("changed 1-1")}));
}

TEST_F(BlockListModelTest, ARowSaysItsPlainText)
{
    show("a\n\n*b*");
    EXPECT_EQ(model.data(model.index(1), Qt::DisplayRole).toString().trimmed(),
              QStringLiteral("b"));
}

RC_GTEST_PROP(BlockListModelPropertyTest, EndsWithTheBlocksItWasGiven,
              (const std::vector<std::vector<std::uint8_t>> &texts))
{
    BlockListModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (const std::vector<std::uint8_t> &letters : texts) {
        QList<BlockNode> blocks;
        for (const std::uint8_t letter : letters)
            blocks.append(BlockNode{blocks::HtmlBlock{QString(QChar(u'a' + letter % 3))}});
        model.setBlocks(blocks);
        RC_ASSERT(model.blocks() == blocks);
    }
}

RC_GTEST_PROP(BlockListModelPropertyTest, FollowsATextThatGrows, ())
{
    const auto pieces = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
        "a", " ", "\n", "\n\n", "- b", "# c", "> d", "```", "|e|", "\n|-|\n", "[f]", ": g", "*"));
    BlockListModel model;
    IncrementalMarkdown markdown;
    QString text;
    for (const std::string &piece : pieces) {
        text += QString::fromStdString(piece);
        markdown.append(QString::fromStdString(piece));
        model.setBlocks(markdown.content().blocks, markdown.firstChangedBlock());
    }
    RC_ASSERT(model.blocks() == MarkdownContent(text).blocks);
}

} // namespace velto::markdown
