// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/bustray.h"

#include "platform/linux/statusnotifieritem.h"
#include "platform/linux/traymenu.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace velto::platform
{

namespace
{

constexpr QLatin1String watcherName("org.kde.StatusNotifierWatcher");
constexpr QLatin1String watcherPath("/StatusNotifierWatcher");
constexpr QLatin1String itemPath("/StatusNotifierItem");

QDBusMessage busCall(const QString &method, const QVariantList &arguments)
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage call = QDBusMessage::createMethodCall(bus, QStringLiteral("/"), bus, method);
    call.setArguments(arguments);
    return call;
}

} // namespace

BusTray::BusTray(TrayLook look, QList<TrayEntry> menu)
    : m_bus(QDBusConnection::sessionBus())
    , m_name(
          QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid()))
{
    if (!m_bus.isConnected())
        return;
    auto *item = new StatusNotifierItem(std::move(look), &m_itemObject);
    new TrayMenu(std::move(menu), &m_menuObject);
    connect(item, &StatusNotifierItem::activated, this, &Tray::activated);
    m_bus.registerObject(itemPath, &m_itemObject, QDBusConnection::ExportAdaptors);
    m_bus.registerObject(StatusNotifierItem::menu().path(), &m_menuObject,
                         QDBusConnection::ExportAdaptors);
    constexpr uint doNotQueue = 4;
    m_bus.asyncCall(busCall(QStringLiteral("RequestName"), {m_name, doNotQueue}));
    watch();
}

BusTray::~BusTray()
{
    if (!m_bus.isConnected())
        return;
    m_bus.unregisterObject(itemPath);
    m_bus.unregisterObject(StatusNotifierItem::menu().path());
    m_bus.asyncCall(busCall(QStringLiteral("ReleaseName"), {m_name}));
}

void BusTray::watch()
{
    auto *watcher =
        new QDBusServiceWatcher(watcherName, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                setHasHost(false);
                if (!owner.isEmpty())
                    registerItem();
            });
    for (const char *signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        m_bus.connect(watcherName, watcherPath, watcherName, QLatin1String(signal), this,
                      SLOT(askForHost()));
    registerItem(); // one may be there already
}

void BusTray::registerItem()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        watcherName, watcherPath, watcherName, QStringLiteral("RegisterStatusNotifierItem"));
    call << m_name;
    call.setAutoStartService(false);
    m_bus.asyncCall(call);
    askForHost();
}

void BusTray::askForHost()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        watcherName, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    call << QString(watcherName) << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        setHasHost(reply.isValid() && reply.value().variant().toBool());
    });
}

void BusTray::setHasHost(bool hasHost)
{
    if (m_hasHost == hasHost)
        return;
    m_hasHost = hasHost;
    emit hasHostChanged();
}

std::unique_ptr<Tray> makeSystemTray(TrayLook look, QList<TrayEntry> menu)
{
    return std::make_unique<BusTray>(std::move(look), std::move(menu));
}

} // namespace velto::platform
