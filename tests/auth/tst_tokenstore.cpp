// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "auth/tokenstore.h"
#include "support/coroutinetest.h"
#include "support/memorysecretstore.h"

#include <QSemaphore>
#include <QThread>

#include <gtest/gtest.h>

namespace velto::auth
{
namespace
{

using base::KeychainError;

const QString account = QStringLiteral("refresh_token");

class TokenStoreTest : public testing::Test
{
protected:
    std::optional<QString> loaded() { return test::await(tokens.loadSecret(account)); }

    test::MemorySecretStore secrets;
    TokenStore tokens{secrets};
};

TEST_F(TokenStoreTest, savesUnderTheServiceOfVelto)
{
    ASSERT_TRUE(test::await(tokens.saveSecret(QStringLiteral("a"), account)));
    EXPECT_EQ(secrets.secret(), QStringLiteral("a"));
    ASSERT_TRUE(test::await(tokens.saveSecret(QStringLiteral("b"), account)));
    EXPECT_EQ(loaded(), QStringLiteral("b"));
}

TEST_F(TokenStoreTest, loadAfterADeleteIsAbsent)
{
    ASSERT_TRUE(test::await(tokens.saveSecret(QStringLiteral("a"), account)));
    test::await(tokens.deleteSecret(account));
    EXPECT_EQ(loaded(), std::nullopt);
    test::await(tokens.deleteSecret(account));
}

TEST_F(TokenStoreTest, loadIsAbsentWhenTheStoreFails)
{
    secrets.put(QStringLiteral("a"));
    secrets.failLoads(KeychainError{KeychainError::Locked});
    EXPECT_EQ(loaded(), std::nullopt);
}

TEST_F(TokenStoreTest, onlySavingReports)
{
    secrets.failSaves(KeychainError{77});
    const auto saved = test::await(tokens.saveSecret(QStringLiteral("a"), account));
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error(), base::Failure(KeychainError{77}));
}

TEST_F(TokenStoreTest, callsHappenInTheOrderInWhichTheyCame)
{
    auto first = tokens.saveSecret(QStringLiteral("a"), account);
    auto second = tokens.saveSecret(QStringLiteral("b"), account);
    auto gone = tokens.deleteSecret(account);
    auto third = tokens.saveSecret(QStringLiteral("c"), account);
    EXPECT_EQ(loaded(), QStringLiteral("c"));
}

/// A store whose user is asked and doesn't answer.
class StuckStore final : public platform::SecretStore
{
public:
    explicit StuckStore(bool listens)
        : m_listens(listens)
    {}
    ~StuckStore() override
    {
        release.release();
        ended.acquire();
    }
    base::Result<void> save(const QString &, const QString &, const QString &) override
    {
        caller = QThread::currentThread();
        entered.release();
        release.acquire();
        ended.release();
        return {};
    }
    base::Result<std::optional<QString>> load(const QString &, const QString &) override
    {
        return std::optional<QString>();
    }
    base::Result<void> remove(const QString &, const QString &) override { return {}; }
    void abandon() override
    {
        wasAbandoned = true;
        if (m_listens)
            release.release();
    }

    std::atomic<QThread *> caller = nullptr;
    std::atomic<bool> wasAbandoned = false;
    QSemaphore entered, release, ended;

private:
    bool m_listens;
};

TEST(TokenStoreEnd, mainThreadGoesOnWhileTheStoreWaits)
{
    StuckStore store(true);
    TokenStore tokens(store);
    auto saving = tokens.saveSecret(QStringLiteral("a"), account);
    ASSERT_TRUE(store.entered.tryAcquire(1, 20000));
    EXPECT_FALSE(saving.isReady());
    EXPECT_NE(store.caller, QThread::currentThread());
    store.release.release();
    EXPECT_TRUE(test::await(std::move(saving)));
}

TEST(TokenStoreEnd, abandonsAStoreThatWaitsForItsUser)
{
    StuckStore store(true);
    {
        TokenStore tokens(store, std::chrono::milliseconds(10));
        auto saving = tokens.saveSecret(QStringLiteral("a"), account);
        ASSERT_TRUE(store.entered.tryAcquire(1, 20000));
    }
    EXPECT_TRUE(store.wasAbandoned);
}

TEST(TokenStoreEnd, doesNotWaitForAStoreThatNeverAnswers)
{
    StuckStore store(false);
    {
        TokenStore tokens(store, std::chrono::milliseconds(10));
        auto saving = tokens.saveSecret(QStringLiteral("a"), account);
        ASSERT_TRUE(store.entered.tryAcquire(1, 20000));
    }
    EXPECT_TRUE(store.wasAbandoned);
    EXPECT_EQ(store.ended.available(), 0) << "the call must still be waiting";
}

TEST(TokenStoreEnd, finishesASaveThatIsUnderWay)
{
    test::MemorySecretStore secrets;
    {
        TokenStore tokens(secrets);
        for (int i = 0; i < 50; ++i)
            auto saving = tokens.saveSecret(QString::number(i), account);
    }
    EXPECT_EQ(secrets.secret(), QStringLiteral("49"));
}

} // namespace
} // namespace velto::auth
