// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/businstance.h"

#include "support/coroutinetest.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QThread>

#include <gtest/gtest.h>

// Runs beside a session bus of its own, see with-keyring.sh.
namespace velto::platform
{
namespace
{

using namespace std::chrono_literals;
using Standing = Instance::Standing;

const QString name = QStringLiteral("ltd.orbax.velto");
const QString path = QStringLiteral("/ltd/orbax/velto");
const QString application = QStringLiteral("org.freedesktop.Application");

QDBusMessage call(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(name, path, application, method);
    message.setArguments(arguments);
    return message;
}

QUrl link(const char *text)
{
    return QUrl(QString::fromUtf8(text));
}

/// Another program on the bus.
class Peer
{
public:
    Peer()
        : connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                                   QStringLiteral("peer%1").arg(++count)))
    {}
    ~Peer() { QDBusConnection::disconnectFromBus(connection.name()); }

    bool takeName(bool replacing = false)
    {
        using Interface = QDBusConnectionInterface;
        return connection.interface()->registerService(
                   name,
                   replacing ? Interface::ReplaceExistingService : Interface::DontQueueService,
                   Interface::AllowReplacement) == Interface::ServiceRegistered;
    }
    QDBusMessage ask(const QDBusMessage &message)
    {
        QDBusPendingCallWatcher watcher(connection.asyncCall(message));
        EXPECT_TRUE(test::waitUntil([&] { return watcher.isFinished(); }));
        return watcher.reply();
    }

    QDBusConnection connection;

private:
    inline static int count = 0;
};

/// A velto that runs and answers, on a thread of its own: handing over blocks ours.
class RunningPeer final : public Peer
{
public:
    RunningPeer()
    {
        m_object.moveToThread(&m_thread);
        QObject::connect(
            &m_object, &ApplicationObject::launched, &m_object,
            [this](const Launch &launch) { launches.append(launch); }, Qt::DirectConnection);
        connection.registerObject(path, &m_object, QDBusConnection::ExportScriptableSlots);
        m_thread.start();
    }
    ~RunningPeer()
    {
        m_thread.quit();
        m_thread.wait();
    }

    QList<Launch> launches;

private:
    ApplicationObject m_object;
    QThread m_thread;
};

class InstanceTest : public testing::Test
{
protected:
    InstanceTest()
    {
        QObject::connect(&instance, &Instance::launched, &instance,
                         [this](const Launch &launch) { launches.append(launch); });
        QObject::connect(&instance, &Instance::newChatRequested, &instance,
                         [this](const QByteArray &token) { newChats.append(token); });
        QObject::connect(&instance, &Instance::quitRequested, &instance, [this] { ++quits; });
        QObject::connect(&instance, &Instance::replaced, &instance, [this] { ++replacements; });
    }
    static QString owner()
    {
        return QDBusConnection::sessionBus().interface()->serviceOwner(name).value();
    }

    BusInstance instance{100ms};
    QList<Launch> launches;
    QList<QByteArray> newChats;
    int quits = 0;
    int replacements = 0;
};

TEST_F(InstanceTest, theFirstOneTakesTheName)
{
    instance.claim();
    EXPECT_EQ(instance.standing(), Standing::Sole);
    EXPECT_EQ(owner(), QDBusConnection::sessionBus().baseService());
}

TEST_F(InstanceTest, aSoleOneHandsNothingOver)
{
    instance.claim();
    EXPECT_EQ(instance.handOver({.urls = {link("ltd.orbax.velto://new")}, .token = {}}),
              Standing::Sole);
    EXPECT_EQ(owner(), QDBusConnection::sessionBus().baseService());
}

TEST_F(InstanceTest, theDesktopActivatesItWithATokenOfEitherKind)
{
    instance.claim();
    ASSERT_EQ(instance.standing(), Standing::Sole);
    Peer peer;
    const QString x11 = QStringLiteral("desktop-startup-id");
    const QString wayland = QStringLiteral("activation-token");
    const QString activate = QStringLiteral("Activate");
    EXPECT_EQ(peer.ask(call(activate, {QVariantMap()})).type(), QDBusMessage::ReplyMessage);
    peer.ask(call(activate, {QVariantMap{{x11, QStringLiteral("a_TIME1")}}}));
    peer.ask(call(activate,
                  {QVariantMap{{x11, QStringLiteral("a_TIME1")}, {wayland, QStringLiteral("b")}}}));
    EXPECT_EQ(launches, (QList<Launch>{{{}, {}}, {{}, "a_TIME1"}, {{}, "b"}}));
}

TEST_F(InstanceTest, linksOfOneCallComeTogetherAndInOrder)
{
    instance.claim();
    ASSERT_EQ(instance.standing(), Standing::Sole);
    const QStringList links{QStringLiteral("ltd.orbax.velto://chat/b"),
                            QStringLiteral("ltd.orbax.velto://new?text=a%20b"),
                            QStringLiteral("junk")};
    Peer peer;
    EXPECT_EQ(peer.ask(call(QStringLiteral("Open"), {links, QVariantMap()})).type(),
              QDBusMessage::ReplyMessage);
    ASSERT_EQ(launches.size(), 1);
    EXPECT_EQ(launches.first().urls,
              (QList<QUrl>{link("ltd.orbax.velto://chat/b"),
                           link("ltd.orbax.velto://new?text=a%20b"), link("junk")}));
}

TEST_F(InstanceTest, knowsTheActionsNewChatAndQuit)
{
    instance.claim();
    ASSERT_EQ(instance.standing(), Standing::Sole);
    Peer peer;
    const QString method = QStringLiteral("ActivateAction");
    const QVariantMap token{{QStringLiteral("activation-token"), QStringLiteral("t")}};
    for (const char *action : {"new-chat", "quit", "self-destruct"}) {
        const QDBusMessage reply =
            peer.ask(call(method, {QString::fromLatin1(action), QVariantList(), token}));
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << action;
    }
    EXPECT_EQ(newChats, QList<QByteArray>{"t"});
    EXPECT_EQ(quits, 1);
    EXPECT_TRUE(launches.isEmpty());
}

TEST_F(InstanceTest, aLaterOneHandsOverLinksAndToken)
{
    RunningPeer running;
    ASSERT_TRUE(running.takeName());
    instance.claim();
    EXPECT_EQ(instance.standing(), Standing::Second);
    const Launch plain{.urls = {}, .token = {}};
    const Launch links{
        .urls = {link("ltd.orbax.velto://chat/a%20b"), link("ltd.orbax.velto://new")},
        .token = "token"};
    EXPECT_EQ(instance.handOver(plain), Standing::Second);
    EXPECT_EQ(instance.handOver(links), Standing::Second);
    EXPECT_EQ(running.launches, (QList<Launch>{plain, links}));
    EXPECT_EQ(owner(), running.connection.baseService());
}

TEST_F(InstanceTest, takesThePlaceOfOneThatDoesNotAnswer)
{
    Peer hung;
    ASSERT_TRUE(hung.takeName());
    ApplicationObject unreachable; // its thread is ours, which waits for its answer
    hung.connection.registerObject(path, &unreachable, QDBusConnection::ExportScriptableSlots);
    instance.claim();
    ASSERT_EQ(instance.standing(), Standing::Second);
    EXPECT_EQ(instance.handOver({}), Standing::Successor);
    EXPECT_EQ(owner(), QDBusConnection::sessionBus().baseService());
}

TEST_F(InstanceTest, goesOnWhenTheOtherHasEndedMeanwhile)
{
    auto running = std::make_unique<RunningPeer>();
    ASSERT_TRUE(running->takeName());
    instance.claim();
    ASSERT_EQ(instance.standing(), Standing::Second);
    running.reset();
    ASSERT_TRUE(test::waitUntil([] { return owner().isEmpty(); }));
    EXPECT_EQ(instance.handOver({}), Standing::Sole);
    EXPECT_EQ(owner(), QDBusConnection::sessionBus().baseService());
}

TEST_F(InstanceTest, hearsThatItHasBeenReplaced)
{
    instance.claim();
    ASSERT_EQ(instance.standing(), Standing::Sole);
    Peer successor;
    ASSERT_TRUE(successor.takeName(true));
    EXPECT_TRUE(test::waitUntil([&] { return replacements == 1; }));
    instance.release();
    EXPECT_EQ(owner(), successor.connection.baseService()) << "it was not its own any more";
}

TEST_F(InstanceTest, afterItsReleaseTheNextOneIsTheFirst)
{
    instance.claim();
    ASSERT_EQ(instance.standing(), Standing::Sole);
    instance.release();
    Peer next;
    EXPECT_TRUE(next.takeName());
    EXPECT_EQ(next.ask(call(QStringLiteral("Activate"), {QVariantMap()})).type(),
              QDBusMessage::ErrorMessage);
    EXPECT_EQ(replacements, 0);
    EXPECT_TRUE(launches.isEmpty());
}

TEST_F(InstanceTest, whatComesBeforeTheEventLoopRunsIsNotLost)
{
    instance.claim();
    ASSERT_EQ(instance.standing(), Standing::Sole);
    Peer peer;
    const QDBusPendingCall pending =
        peer.connection.asyncCall(call(QStringLiteral("Activate"), {QVariantMap()}));
    EXPECT_TRUE(launches.isEmpty());
    EXPECT_TRUE(test::waitUntil([&] { return pending.isFinished(); }));
    EXPECT_EQ(launches.size(), 1);
}

} // namespace
} // namespace velto::platform
