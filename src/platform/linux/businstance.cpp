// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/businstance.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace velto::platform
{

namespace
{

using namespace std::chrono_literals;

constexpr QLatin1String name("ltd.orbax.velto");
constexpr QLatin1String path("/ltd/orbax/velto");
constexpr QLatin1String application("org.freedesktop.Application");
constexpr QLatin1String bus("org.freedesktop.DBus");
constexpr QLatin1String startupId("desktop-startup-id");
constexpr QLatin1String activationToken("activation-token");

// What the bus answers in a fraction of a millisecond. A bus that doesn't is as good as none.
constexpr auto busPatience = 2s;
constexpr auto startupIdVariable = "DESKTOP_STARTUP_ID";
constexpr auto activationTokenVariable = "XDG_ACTIVATION_TOKEN";

enum NameFlag : uint { AllowReplacement = 1, ReplaceExisting = 2, DoNotQueue = 4 };
enum class NameReply : uint { PrimaryOwner = 1, AlreadyOwner = 4 };

QDBusMessage callBus(const QString &method, const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(bus, QStringLiteral("/"), bus, method);
    call.setArguments(arguments);
    return QDBusConnection::sessionBus().call(call, QDBus::Block,
                                              int(std::chrono::milliseconds(busPatience).count()));
}

bool requestName(uint flags)
{
    const QDBusMessage reply =
        callBus(QStringLiteral("RequestName"), {QString(name), QVariant::fromValue(flags)});
    if (reply.type() != QDBusMessage::ReplyMessage)
        return true; // nobody can tell who else there is: go on alone
    const auto result = static_cast<NameReply>(reply.arguments().value(0).toUInt());
    return result == NameReply::PrimaryOwner || result == NameReply::AlreadyOwner;
}

/// Empty where there is none.
QString nameOwner()
{
    const QDBusMessage reply = callBus(QStringLiteral("GetNameOwner"), {QString(name)});
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toString()
                                                      : QString();
}

QByteArray tokenOf(const QVariantMap &platformData)
{
    const QString token = platformData.value(activationToken).toString();
    return (token.isEmpty() ? platformData.value(startupId).toString() : token).toUtf8();
}

QDBusMessage messageFor(const QString &owner, const Launch &launch)
{
    QVariantMap platformData;
    if (!launch.token.isEmpty()) {
        platformData.insert(startupId, QString::fromUtf8(launch.token));
        platformData.insert(activationToken, QString::fromUtf8(launch.token));
    }
    const QString method =
        launch.urls.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open");
    QDBusMessage message = QDBusMessage::createMethodCall(owner, path, application, method);
    if (!launch.urls.isEmpty())
        message << QUrl::toStringList(launch.urls, QUrl::FullyEncoded);
    message << platformData;
    return message;
}

bool tell(const QString &owner, const Launch &launch, std::chrono::milliseconds patience)
{
    const QDBusMessage reply = QDBusConnection::sessionBus().call(
        messageFor(owner, launch), QDBus::Block, int(patience.count()));
    return reply.type() == QDBusMessage::ReplyMessage;
}

} // namespace

void ApplicationObject::Activate(const QVariantMap &platformData)
{
    emit launched({.urls = {}, .token = tokenOf(platformData)});
}

void ApplicationObject::Open(const QStringList &uris, const QVariantMap &platformData)
{
    emit launched({.urls = QUrl::fromStringList(uris), .token = tokenOf(platformData)});
}

void ApplicationObject::ActivateAction(const QString &name, const QVariantList &,
                                       const QVariantMap &platformData)
{
    if (name == u"new-chat")
        emit newChatRequested(tokenOf(platformData));
    else if (name == u"quit")
        emit quitRequested();
}

BusInstance::BusInstance(std::chrono::milliseconds patience)
    : m_patience(patience)
{
    connect(&m_object, &ApplicationObject::launched, this, &Instance::launched);
    connect(&m_object, &ApplicationObject::newChatRequested, this, &Instance::newChatRequested);
    connect(&m_object, &ApplicationObject::quitRequested, this, &Instance::quitRequested);
}

BusInstance::~BusInstance()
{
    if (m_claim.valid())
        m_claim.wait();
    release();
}

void BusInstance::claim()
{
    m_claim = std::async(std::launch::async, [this] { return takeName(); });
}

Instance::Standing BusInstance::standing()
{
    if (m_claim.valid())
        m_standing = m_claim.get();
    return m_standing;
}

Instance::Standing BusInstance::takeName()
{
    QDBusConnection session = QDBusConnection::sessionBus();
    if (!session.isConnected())
        return Standing::Sole;
    // Before the name is ours: from then on anybody may call.
    session.registerObject(path, &m_object, QDBusConnection::ExportScriptableSlots);
    session.connect(bus, QString(), bus, QStringLiteral("NameLost"), this, SLOT(nameLost(QString)));
    return requestName(AllowReplacement | DoNotQueue) ? Standing::Sole : Standing::Second;
}

Instance::Standing BusInstance::handOver(const Launch &launch)
{
    while (standing() == Standing::Second) {
        const QString owner = nameOwner();
        if (!owner.isEmpty() && tell(owner, launch, m_patience))
            return Standing::Second;
        // It has ended meanwhile, or it hangs. Of several that wait for it one takes its place, and
        // the others then turn to that one.
        if (requestName(AllowReplacement | DoNotQueue))
            m_standing = Standing::Sole;
        else if (nameOwner() == owner &&
                 requestName(AllowReplacement | DoNotQueue | ReplaceExisting))
            m_standing = Standing::Successor;
    }
    return m_standing;
}

void BusInstance::release()
{
    if (std::exchange(m_released, true) || standing() == Standing::Second)
        return;
    QDBusConnection session = QDBusConnection::sessionBus();
    if (!session.isConnected())
        return;
    callBus(QStringLiteral("ReleaseName"), {QString(name)});
    session.unregisterObject(path);
}

void BusInstance::nameLost(const QString &lost)
{
    if (lost == name && !m_released) {
        m_released = true; // it is somebody else's now
        emit replaced();
    }
}

std::unique_ptr<Instance> makeSystemInstance()
{
    return std::make_unique<BusInstance>();
}

QByteArray launchToken()
{
    QByteArray token = qgetenv(activationTokenVariable);
    if (token.isEmpty())
        token = qgetenv(startupIdVariable);
    return token;
}

} // namespace velto::platform
