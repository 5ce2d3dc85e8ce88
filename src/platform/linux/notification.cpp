// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/notification.h"

#include "base/oneshot.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QVariantMap>

namespace velto::platform
{

namespace
{

constexpr QLatin1String service("org.freedesktop.Notifications");
constexpr QLatin1String path("/org/freedesktop/Notifications");
constexpr int patience = 2000; // ms

QDBusMessage message(const QString &title, const QString &text)
{
    const QString icon = QStringLiteral("ltd.orbax.velto");
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, service, QStringLiteral("Notify"));
    const QVariantMap hints{{QStringLiteral("desktop-entry"), icon}};
    constexpr uint replacesNone = 0;
    constexpr int asLongAsUsual = -1;
    // What is shown may be read as markup.
    call << QStringLiteral("velto") << replacesNone << icon << title << text.toHtmlEscaped()
         << QStringList() << hints << asLongAsUsual;
    return call;
}

} // namespace

QCoro::Task<bool> notify(QString title, QString text)
{
    base::OneShot<bool> shown;
    auto *watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(message(title, text), patience));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [shown, watcher]() mutable {
                         watcher->deleteLater();
                         shown.resolve(!watcher->isError());
                     });
    co_return co_await shown;
}

} // namespace velto::platform
