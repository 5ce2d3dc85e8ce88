// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/rows/votestore.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace velto::presentation
{

namespace
{

using enum VoteStore::FeedbackVote;
const QString key = QStringLiteral("velto.feedback.votes.v1");

class VoteStoreTest : public testing::Test
{
protected:
    [[nodiscard]] std::unique_ptr<QSettings> settings() const
    {
        return std::make_unique<QSettings>(m_folder.filePath(QStringLiteral("velto.conf")),
                                           QSettings::IniFormat);
    }
    [[nodiscard]] QVariantMap stored() const { return settings()->value(key).toMap(); }

    const QUuid m_message = QUuid::createUuid();

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(VoteStoreTest, startsWithoutVotes)
{
    EXPECT_EQ(VoteStore(settings()).vote(m_message), None);
}

TEST_F(VoteStoreTest, theOtherVoteReplaces)
{
    VoteStore store(settings());
    store.setVote(Up, m_message);
    EXPECT_EQ(store.vote(m_message), Up);
    store.setVote(Down, m_message);
    EXPECT_EQ(store.vote(m_message), Down);
    const QVariantMap expected{
        {m_message.toString(QUuid::WithoutBraces).toUpper(), QStringLiteral("down")}};
    EXPECT_EQ(stored(), expected);
}

TEST_F(VoteStoreTest, aWithdrawnVoteLeavesNoEntry)
{
    VoteStore store(settings());
    store.setVote(Up, m_message);
    store.setVote(None, m_message);
    EXPECT_EQ(store.vote(m_message), None);
    EXPECT_TRUE(stored().isEmpty());
}

TEST_F(VoteStoreTest, votesOutliveTheProcess)
{
    {
        VoteStore store(settings());
        store.setVote(Up, m_message);
    }
    EXPECT_EQ(VoteStore(settings()).vote(m_message), Up);
}

TEST_F(VoteStoreTest, theFiveHundredAndFirstVoteDropsOne)
{
    VoteStore store(settings());
    QList<QUuid> messages;
    for (qsizetype count = 0; count < VoteStore::mostVotes; ++count) {
        messages.append(QUuid::createUuid());
        store.setVote(Up, messages.last());
    }
    EXPECT_EQ(stored().size(), 500);
    store.setVote(Down, m_message);
    EXPECT_EQ(stored().size(), 500);
    messages.append(m_message);
    const auto forgotten =
        std::ranges::count(messages, None, [&](const QUuid &id) { return store.vote(id); });
    EXPECT_EQ(forgotten, 1);
}

TEST_F(VoteStoreTest, aValueThatIsNoTextEmptiesTheStore)
{
    settings()->setValue(
        key, QVariantMap{{m_message.toString(QUuid::WithoutBraces).toUpper(), QStringLiteral("up")},
                         {QStringLiteral("B"), QVariantList{1}}});
    EXPECT_EQ(VoteStore(settings()).vote(m_message), None);
}

TEST_F(VoteStoreTest, whatIsNoDictionaryIsNoVotes)
{
    settings()->setValue(key, QStringLiteral("up"));
    VoteStore store(settings());
    EXPECT_EQ(store.vote(m_message), None);
    store.setVote(Up, m_message);
    EXPECT_EQ(store.vote(m_message), Up);
}

TEST_F(VoteStoreTest, anyOtherTextIsNoVote)
{
    settings()->setValue(key, QVariantMap{{m_message.toString(QUuid::WithoutBraces).toUpper(),
                                           QStringLiteral("sideways")}});
    EXPECT_EQ(VoteStore(settings()).vote(m_message), None);
}

} // namespace velto::presentation
