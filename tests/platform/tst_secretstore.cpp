// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "keyringdaemon.h"
#include "platform/linux/helpersecretstore.h"
#include "support/coroutinetest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>

namespace velto::platform
{
namespace
{

using base::KeychainError;

const QString service = QStringLiteral("ltd.orbax.velto");
const QString account = QStringLiteral("refresh_token");

using Items = QList<QDBusObjectPath>;

/// The entries with exactly velto's attributes, as another client of the keyring sees them.
Items entries()
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        test::secretsName, test::defaultCollection().path(),
        QStringLiteral("org.freedesktop.Secret.Collection"), QStringLiteral("SearchItems"));
    const QMap<QString, QString> attributes{{QStringLiteral("service"), service},
                                            {QStringLiteral("account"), account}};
    message.setArguments({QVariant::fromValue(attributes)});
    return qdbus_cast<Items>(QDBusConnection::sessionBus().call(message).arguments().first());
}

QVariant property(const QDBusObjectPath &item, const QString &name)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        test::secretsName, item.path(), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    message.setArguments({QStringLiteral("org.freedesktop.Secret.Item"), name});
    return QDBusConnection::sessionBus()
        .call(message)
        .arguments()
        .first()
        .value<QDBusVariant>()
        .variant();
}

/// What `makeSystemSecretStore` gives to a program that has the helper beside it.
std::unique_ptr<SecretStore> systemStore()
{
    return std::make_unique<HelperSecretStore>(QStringLiteral(VELTO_KEYRING_HELPER));
}

/// Runs a blocking call in a thread of its own while the test's event loop plays the desktop.
template<typename Call>
auto inThread(Call call)
{
    std::optional<decltype(call())> result;
    std::atomic<bool> done = false;
    std::unique_ptr<QThread> thread(QThread::create([&] {
        result = call();
        done = true;
    }));
    thread->start();
    const bool inTime = test::waitUntil([&] { return done.load(); });
    if (!inTime)
        qFatal("watchdog: the call did not return");
    thread->wait();
    return *result;
}

class SecretStoreTest : public testing::Test
{
protected:
    void SetUp() override
    {
        // Never against the keyring of whoever runs this.
        ASSERT_EQ(qgetenv("VELTO_TEST_KEYRING"), "unlocked") << "run through ctest";
        qDBusRegisterMetaType<QMap<QString, QString>>();
        test::restartKeyring();
        ASSERT_TRUE(store->remove(service, account));
    }

    QString saved() const
    {
        const auto loaded = store->load(service, account);
        return loaded && *loaded ? **loaded : QStringLiteral("<nothing>");
    }

    std::unique_ptr<SecretStore> store = systemStore();
};

TEST_F(SecretStoreTest, loadsWhatWasSaved)
{
    const QString token = QStringLiteral("rt-Zürich-東京-🔑");
    ASSERT_TRUE(store->save(service, account, token));
    EXPECT_EQ(saved(), token);
}

TEST_F(SecretStoreTest, keepsTextOfEveryKind)
{
    const QStringList texts{
        QString(),
        QStringLiteral("a") + QChar(0) + QStringLiteral("b"),
        QChar(0xfeff) + QStringLiteral("after a byte order mark"),
        QStringLiteral("two\nlines\r\n"),
        QStringLiteral("👩‍👩‍👧‍👦 \u202eright to left"),
        QString(200000, u'京'),
    };
    for (const QString &text : texts) {
        ASSERT_TRUE(store->save(service, account, text)) << text.size();
        const auto loaded = store->load(service, account);
        ASSERT_TRUE(loaded && *loaded) << text.size();
        EXPECT_TRUE(**loaded == text) << text.size();
    }
}

TEST_F(SecretStoreTest, refusesMegabytesAndKeepsWhatThereWas)
{
    ASSERT_TRUE(store->save(service, account, QStringLiteral("token")));
    const auto refused = store->save(service, account, QString(3 << 20, u'x'));
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(), base::Failure(KeychainError{KeychainError::Unknown}));
    EXPECT_EQ(saved(), u"token");
}

TEST_F(SecretStoreTest, savedEntryBearsItsAttributesAndLabel)
{
    ASSERT_TRUE(store->save(service, account, QStringLiteral("token")));
    ASSERT_EQ(entries().size(), 1);
    const auto attributes = qdbus_cast<QMap<QString, QString>>(
        property(entries().first(), QStringLiteral("Attributes")));
    EXPECT_EQ(attributes.value(QStringLiteral("service")), u"ltd.orbax.velto");
    EXPECT_EQ(attributes.value(QStringLiteral("account")), u"refresh_token");
    EXPECT_EQ(attributes.value(QStringLiteral("xdg:schema")), u"ltd.orbax.velto");
    EXPECT_EQ(property(entries().first(), QStringLiteral("Label")).toString(), u"velto sign-in");
}

TEST_F(SecretStoreTest, savingTwiceLeavesOneEntryWithTheSecondValue)
{
    ASSERT_TRUE(store->save(service, account, QStringLiteral("first")));
    const Items before = entries();
    ASSERT_TRUE(store->save(service, account, QStringLiteral("second")));
    EXPECT_EQ(saved(), u"second");
    ASSERT_EQ(entries().size(), 1);
    EXPECT_EQ(entries().first().path(), before.first().path());
}

TEST_F(SecretStoreTest, updateKeepsTheAttributesOfTheEntry)
{
    ASSERT_TRUE(store->save(service, account, QStringLiteral("first")));
    const QVariant created = property(entries().first(), QStringLiteral("Created"));
    ASSERT_TRUE(store->save(service, account, QStringLiteral("second")));
    EXPECT_EQ(property(entries().first(), QStringLiteral("Created")), created);
    EXPECT_EQ(property(entries().first(), QStringLiteral("Label")).toString(), u"velto sign-in");
}

TEST_F(SecretStoreTest, accountsAndServicesAreApart)
{
    const QString otherAccount = QStringLiteral("other");
    const QString otherService = QStringLiteral("ltd.orbax.other");
    ASSERT_TRUE(store->save(service, account, QStringLiteral("a")));
    ASSERT_TRUE(store->save(service, otherAccount, QStringLiteral("b")));
    ASSERT_TRUE(store->save(otherService, account, QStringLiteral("c")));
    EXPECT_EQ(saved(), u"a");
    EXPECT_EQ(**store->load(service, otherAccount), u"b");
    ASSERT_TRUE(store->remove(service, otherAccount));
    EXPECT_EQ(saved(), u"a");
    EXPECT_EQ(**store->load(otherService, account), u"c");
    ASSERT_TRUE(store->remove(otherService, account));
}

TEST_F(SecretStoreTest, missingEntryIsNoFailure)
{
    const auto loaded = store->load(service, account);
    ASSERT_TRUE(loaded);
    EXPECT_FALSE(loaded->has_value());
}

TEST_F(SecretStoreTest, removesTheEntry)
{
    ASSERT_TRUE(store->save(service, account, QStringLiteral("token")));
    ASSERT_TRUE(store->remove(service, account));
    const auto loaded = store->load(service, account);
    ASSERT_TRUE(loaded);
    EXPECT_FALSE(loaded->has_value());
    EXPECT_TRUE(entries().isEmpty());
}

TEST_F(SecretStoreTest, removingAMissingEntryDoesNothing)
{
    EXPECT_TRUE(store->remove(service, account));
    EXPECT_TRUE(store->remove(service, account));
}

TEST_F(SecretStoreTest, lockedKeyringThatNobodyCanUnlockFailsEveryCall)
{
    ASSERT_TRUE(store->save(service, account, QStringLiteral("token")));
    test::lockKeyring();
    const base::Failure locked(KeychainError{KeychainError::Locked});

    const auto update =
        inThread([&] { return store->save(service, account, QStringLiteral("x")); });
    ASSERT_FALSE(update);
    EXPECT_EQ(update.error(), locked);
    const auto loaded = inThread([&] { return store->load(service, account); });
    ASSERT_FALSE(loaded) << "a locked entry must not look like a missing one";
    EXPECT_EQ(loaded.error(), locked);
    const auto removed = inThread([&] { return store->remove(service, account); });
    ASSERT_FALSE(removed);
    EXPECT_EQ(removed.error(), locked);

    test::restartKeyring();
    EXPECT_EQ(saved(), u"token");
}

TEST_F(SecretStoreTest, newEntryInALockedKeyringFails)
{
    test::lockKeyring();
    const auto created =
        inThread([&] { return store->save(service, account, QStringLiteral("x")); });
    ASSERT_FALSE(created);
    EXPECT_EQ(created.error(), base::Failure(KeychainError{KeychainError::Locked}));
    EXPECT_TRUE(base::description(created.error()).contains(u"locked"));
}

/// A call that has the desktop ask its user, who doesn't answer.
class UnansweredPrompt : public SecretStoreTest
{
protected:
    void SetUp() override
    {
        SecretStoreTest::SetUp();
        ASSERT_TRUE(store->save(service, account, QStringLiteral("token")));
        test::lockKeyring();
        prompter = std::make_unique<test::SilentPrompter>();
        thread.reset(QThread::create([this] {
            loaded = store->load(service, account);
            done = true;
        }));
        thread->start();
        ASSERT_TRUE(test::waitUntil([&] { return prompter->wasAsked; }));
        EXPECT_FALSE(done) << "the call must wait for the user";
    }
    void TearDown() override
    {
        if (!done)
            qFatal("watchdog: the call did not return");
        thread->wait();
    }

    std::unique_ptr<test::SilentPrompter> prompter;
    std::unique_ptr<QThread> thread;
    std::optional<base::Result<std::optional<QString>>> loaded;
    std::atomic<bool> done = false;
};

TEST_F(UnansweredPrompt, endsWhenTheStoreIsAbandoned)
{
    store->abandon();
    ASSERT_TRUE(test::waitUntil([&] { return done.load(); }));
    EXPECT_EQ(loaded->error(), base::Failure(KeychainError{KeychainError::Locked}));
}

TEST_F(UnansweredPrompt, endsWhenTheServiceGoes)
{
    test::stopKeyring();
    ASSERT_TRUE(test::waitUntil([&] { return done.load(); }));
    EXPECT_EQ(loaded->error(), base::Failure(KeychainError{KeychainError::Locked}));
}

TEST_F(UnansweredPrompt, endsWhenThePrompterGoes)
{
    prompter.reset();
    ASSERT_TRUE(test::waitUntil([&] { return done.load(); }));
    EXPECT_EQ(loaded->error(), base::Failure(KeychainError{KeychainError::Locked}));
}

TEST_F(SecretStoreTest, abandonedStoreFailsEveryCall)
{
    ASSERT_TRUE(store->save(service, account, QStringLiteral("token")));
    store->abandon();
    EXPECT_FALSE(store->load(service, account));
    EXPECT_FALSE(store->save(service, account, QStringLiteral("late")));
    EXPECT_FALSE(store->remove(service, account));
    store = systemStore();
    EXPECT_EQ(saved(), u"token");
}

TEST_F(SecretStoreTest, findsAKeyringThatWasRestarted)
{
    ASSERT_TRUE(store->save(service, account, QStringLiteral("token")));
    test::stopKeyring();
    const auto absent = store->load(service, account);
    ASSERT_FALSE(absent);
    EXPECT_EQ(absent.error(), base::Failure(KeychainError{KeychainError::NoService}));
    test::restartKeyring();
    EXPECT_EQ(saved(), u"token");
}

TEST_F(SecretStoreTest, manyThreadsAtOnce)
{
    ASSERT_TRUE(store->save(service, account, QStringLiteral("token")));
    std::atomic<int> right = 0;
    QList<QThread *> threads;
    for (int i = 0; i < 8; ++i) {
        threads.append(QThread::create([&] {
            if (saved() == u"token")
                ++right;
        }));
        threads.last()->start();
    }
    for (QThread *thread : threads) {
        thread->wait();
        delete thread;
    }
    EXPECT_EQ(right, 8);
}

} // namespace
} // namespace velto::platform
