// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "keyringdaemon.h"

#include "support/coroutinetest.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <QDBusReply>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>

namespace velto::test
{
namespace
{

using Items = QList<QDBusObjectPath>;

const QString secretsPath = QStringLiteral("/org/freedesktop/secrets");
const QString prompterName = QStringLiteral("org.gnome.keyring.SystemPrompter");
const QString prompterPath = QStringLiteral("/org/gnome/keyring/Prompter");

QDBusMessage askKeyring(const QString &member, const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(
        secretsName, secretsPath, QStringLiteral("org.freedesktop.Secret.Service"), member);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message);
}

} // namespace

QDBusObjectPath defaultCollection()
{
    return askKeyring(QStringLiteral("ReadAlias"), {QStringLiteral("default")})
        .arguments()
        .first()
        .value<QDBusObjectPath>();
}

void lockKeyring()
{
    qDBusRegisterMetaType<Items>();
    askKeyring(QStringLiteral("Lock"), {QVariant::fromValue(Items{defaultCollection()})});
}

void stopKeyring()
{
    auto *bus = QDBusConnection::sessionBus().interface();
    const QDBusReply<uint> pid = bus->servicePid(secretsName);
    if (!pid.isValid())
        return;
    ASSERT_EQ(::kill(static_cast<pid_t>(pid.value()), SIGTERM), 0);
    ASSERT_TRUE(waitUntil([&] { return !bus->isServiceRegistered(secretsName).value(); }));
}

void restartKeyring()
{
    stopKeyring();
    QProcess daemon;
    daemon.setStandardOutputFile(QProcess::nullDevice());
    daemon.start(QStringLiteral("gnome-keyring-daemon"),
                 {QStringLiteral("--unlock"), QStringLiteral("--components=secrets")});
    daemon.write("velto");
    daemon.closeWriteChannel();
    ASSERT_TRUE(daemon.waitForFinished(10000));
    auto *bus = QDBusConnection::sessionBus().interface();
    ASSERT_TRUE(waitUntil([&] { return bus->isServiceRegistered(secretsName).value(); }));
}

SilentPrompter::SilentPrompter()
{
    auto bus = QDBusConnection::sessionBus();
    bus.registerObject(prompterPath, this, QDBusConnection::ExportAllSlots);
    bus.registerService(prompterName);
}

SilentPrompter::~SilentPrompter()
{
    auto bus = QDBusConnection::sessionBus();
    bus.unregisterService(prompterName);
    bus.unregisterObject(prompterPath);
}

} // namespace velto::test
