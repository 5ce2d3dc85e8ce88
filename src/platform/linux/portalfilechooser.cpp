// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/portalfilechooser.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <QRandomGenerator>

#include <utility>

namespace velto::platform
{

namespace
{

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String path("/org/freedesktop/portal/desktop");
constexpr QLatin1String chooserInterface("org.freedesktop.portal.FileChooser");
constexpr QLatin1String requestInterface("org.freedesktop.portal.Request");
constexpr QLatin1String responseSignal("Response");
constexpr uint success = 0;

// Known ahead of the call, so that no answer comes before somebody listens.
QString requestPath(const QDBusConnection &bus, const QString &token)
{
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    return path + QLatin1String("/request/") + sender + u'/' + token;
}

QString newToken()
{
    return QStringLiteral("velto%1").arg(QRandomGenerator::system()->generate64(), 0, 16);
}

} // namespace

QString portalWindow(const QString &windowSystem, quintptr window)
{
    if (windowSystem != QLatin1String("xcb") || window == 0)
        return {};
    return QStringLiteral("x11:%1").arg(window, 0, 16);
}

PortalFileChooser::PortalFileChooser(std::chrono::milliseconds patience)
    : m_patience(patience)
{
    auto *watcher = new QDBusServiceWatcher(service, QDBusConnection::sessionBus(),
                                            QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this,
            [this] { finish(Cancelled{}); });
}

PortalFileChooser::~PortalFileChooser()
{
    withdraw();
    finish(Cancelled{});
}

QCoro::Task<FileChooser::Choice> PortalFileChooser::chooseFile(QString title, quintptr window)
{
    if (m_choice)
        co_return Cancelled{};
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        co_return Unavailable{};
    const base::OneShot<Choice> choice;
    m_choice = choice;
    const QString token = newToken();
    follow(requestPath(bus, token));
    call(title, window, token);
    co_return co_await choice;
}

void PortalFileChooser::call(const QString &title, quintptr window, const QString &token)
{
    QDBusMessage open =
        QDBusMessage::createMethodCall(service, path, chooserInterface, QStringLiteral("OpenFile"));
    open << portalWindow(QGuiApplication::platformName(), window) << title
         << QVariantMap{{QStringLiteral("handle_token"), token},
                        {QStringLiteral("modal"), true},
                        {QStringLiteral("multiple"), false}};
    auto *watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(open, static_cast<int>(m_patience.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, watcher, expected = m_request] {
                watcher->deleteLater();
                if (m_request != expected)
                    return; // the dialog has been answered meanwhile
                const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
                if (reply.isError()) {
                    if (reply.error().type() == QDBusError::NoReply)
                        withdraw(); // it may come up after all
                    finish(Unavailable{});
                } else {
                    follow(reply.value().path());
                }
            });
}

void PortalFileChooser::follow(const QString &request)
{
    if (m_request == request)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    const auto slot = SLOT(answered(uint, QVariantMap));
    if (!m_request.isEmpty())
        bus.disconnect(service, m_request, requestInterface, responseSignal, this, slot);
    m_request = request;
    if (!request.isEmpty())
        bus.connect(service, request, requestInterface, responseSignal, this, slot);
}

void PortalFileChooser::answered(uint response, const QVariantMap &results)
{
    const QStringList files = results.value(QStringLiteral("uris")).toStringList();
    if (response == success && !files.isEmpty())
        finish(QUrl(files.first(), QUrl::StrictMode));
    else
        finish(Cancelled{});
}

void PortalFileChooser::withdraw() const
{
    if (m_request.isEmpty())
        return;
    QDBusMessage close = QDBusMessage::createMethodCall(service, m_request, requestInterface,
                                                        QStringLiteral("Close"));
    close.setAutoStartService(false);
    QDBusConnection::sessionBus().send(close);
}

void PortalFileChooser::finish(const Choice &choice)
{
    follow({});
    if (auto waiting = std::exchange(m_choice, std::nullopt))
        waiting->resolve(choice); // may destroy this object
}

std::unique_ptr<FileChooser> makeSystemFileChooser()
{
    return std::make_unique<PortalFileChooser>();
}

} // namespace velto::platform
