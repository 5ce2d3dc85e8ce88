// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/portalcolorscheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace velto::platform
{

namespace
{

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String path("/org/freedesktop/portal/desktop");
constexpr QLatin1String settingsInterface("org.freedesktop.portal.Settings");
constexpr QLatin1String appearance("org.freedesktop.appearance");
constexpr QLatin1String colorScheme("color-scheme");

} // namespace

PortalColorScheme::PortalColorScheme()
{
    request();
}

void PortalColorScheme::settingChanged(const QString &group, const QString &key,
                                       const QDBusVariant &value)
{
    if (group == appearance && key == colorScheme)
        take(value.variant());
}

void PortalColorScheme::request()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(service, path, settingsInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage read =
        QDBusMessage::createMethodCall(service, path, settingsInterface, QStringLiteral("Read"));
    read << QString(appearance) << QString(colorScheme);
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid())
            take(reply.value().variant());
    });
}

void PortalColorScheme::take(const QVariant &value)
{
    QVariant inner = value;
    // Older portals wrap the value twice.
    while (inner.canConvert<QDBusVariant>())
        inner = inner.value<QDBusVariant>().variant();
    const uint number = inner.toUInt();
    const Preference preference = number == 1   ? Preference::Dark
                                  : number == 2 ? Preference::Light
                                                : Preference::NoPreference;
    if (m_preference == preference)
        return;
    m_preference = preference;
    emit preferenceChanged();
}

std::unique_ptr<ColorScheme> makeSystemColorScheme()
{
    return std::make_unique<PortalColorScheme>();
}

} // namespace velto::platform
