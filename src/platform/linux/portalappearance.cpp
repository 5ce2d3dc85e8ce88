// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/portalappearance.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QGuiApplication>

#include <algorithm>
#include <array>

namespace velto::platform
{

namespace
{

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String path("/org/freedesktop/portal/desktop");
constexpr QLatin1String settingsInterface("org.freedesktop.portal.Settings");
constexpr QLatin1String appearance("org.freedesktop.appearance");
constexpr QLatin1String desktopInterface("org.gnome.desktop.interface");

Looks::Scheme schemeOf(const QVariant &value)
{
    switch (value.toUInt()) {
    case 1:
        return Looks::Scheme::Dark;
    case 2:
        return Looks::Scheme::Light;
    default:
        return Looks::Scheme::NoPreference;
    }
}

// Red, green and blue from 0 to 1; anything else says that there is none.
std::optional<QColor> accentOf(const QVariant &value)
{
    if (!value.canConvert<QDBusArgument>())
        return {};
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != u"(ddd)")
        return {};
    std::array<double, 3> channels{};
    argument.beginStructure();
    for (double &channel : channels)
        argument >> channel;
    argument.endStructure();
    const bool valid = std::all_of(channels.begin(), channels.end(),
                                   [](double channel) { return channel >= 0 && channel <= 1; });
    if (!valid)
        return {};
    return QColor::fromRgbF(float(channels[0]), float(channels[1]), float(channels[2]));
}

double textFactorOf(const QVariant &value)
{
    constexpr double least = 0.5;
    constexpr double most = 3;
    if (value.typeId() != QMetaType::Double)
        return 1;
    const double factor = value.toDouble();
    return factor >= least && factor <= most ? factor : 1;
}

} // namespace

PortalAppearance::PortalAppearance(bool resolutionHasTextFactor)
    : m_resolutionHasTextFactor(resolutionHasTextFactor)
{
    request();
}

void PortalAppearance::settingChanged(const QString &group, const QString &key,
                                      const QDBusVariant &value)
{
    setLooks(with(group, key, value.variant()));
}

void PortalAppearance::request()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    qRegisterMetaType<QDBusVariant>(); // else there is no connection: the slot is found by names
    bus.connect(service, path, settingsInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage read =
        QDBusMessage::createMethodCall(service, path, settingsInterface, QStringLiteral("ReadAll"));
    read << QStringList{appearance, desktopInterface};
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusMessage reply = watcher->reply();
        if (reply.type() == QDBusMessage::ReplyMessage && reply.signature() == u"a{sa{sv}}")
            take(qdbus_cast<QMap<QString, QVariantMap>>(reply.arguments().constFirst()));
    });
}

void PortalAppearance::take(const QMap<QString, QVariantMap> &settings)
{
    const Looks before = m_looks;
    for (auto group = settings.begin(); group != settings.end(); ++group) {
        for (auto setting = group->begin(); setting != group->end(); ++setting)
            m_looks = with(group.key(), setting.key(), setting.value());
    }
    if (m_looks != before)
        emit looksChanged();
}

Looks PortalAppearance::with(const QString &group, const QString &key, const QVariant &value) const
{
    Looks looks = m_looks;
    if (group == appearance && key == u"color-scheme")
        looks.scheme = schemeOf(value);
    else if (group == appearance && key == u"accent-color")
        looks.accent = accentOf(value);
    else if (group == desktopInterface && key == u"text-scaling-factor")
        looks.textFactor = m_resolutionHasTextFactor ? 1 : textFactorOf(value);
    return looks;
}

void PortalAppearance::setLooks(const Looks &looks)
{
    if (m_looks == looks)
        return;
    m_looks = looks;
    emit looksChanged();
}

std::unique_ptr<Appearance> makeSystemAppearance()
{
    return std::make_unique<PortalAppearance>(QGuiApplication::platformName() == u"xcb");
}

} // namespace velto::platform
