// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/portalappearance.h"

#include "support/coroutinetest.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVirtualObject>

#include <gtest/gtest.h>

#include <limits>

namespace velto::platform
{

/// Three doubles, as the portal gives a colour.
struct Channels
{
    double red = 0;
    double green = 0;
    double blue = 0;
};

static QDBusArgument &operator<<(QDBusArgument &argument, const Channels &channels)
{
    argument.beginStructure();
    argument << channels.red << channels.green << channels.blue;
    argument.endStructure();
    return argument;
}

static const QDBusArgument &operator>>(const QDBusArgument &argument, Channels &channels)
{
    argument.beginStructure();
    argument >> channels.red >> channels.green >> channels.blue;
    argument.endStructure();
    return argument;
}

namespace
{

using Settings = QMap<QString, QVariantMap>;

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString desktopGroup = QStringLiteral("org.gnome.desktop.interface");
const QString schemeKey = QStringLiteral("color-scheme");
const QString accentKey = QStringLiteral("accent-color");
const QString factorKey = QStringLiteral("text-scaling-factor");

/// The desktop portal, on a connection of its own.
class Portal final : public QDBusVirtualObject
{
public:
    Portal()
        : m_connection(
              QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal")))
    {
        qDBusRegisterMetaType<Settings>();
        qDBusRegisterMetaType<Channels>();
        m_connection.registerVirtualObject(path, this);
        m_connection.interface()->registerService(service);
    }
    ~Portal() override { QDBusConnection::disconnectFromBus(m_connection.name()); }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        ++calls;
        if (message.member() != u"ReadAll")
            return false;
        return connection.send(isBroken ? message.createErrorReply(QDBusError::Failed, QString())
                                        : message.createReply(QVariant::fromValue(settings)));
    }
    [[nodiscard]] QString introspect(const QString &) const override { return {}; }

    void change(const QString &group, const QString &key, const QVariant &value)
    {
        QDBusMessage signal =
            QDBusMessage::createSignal(path, settingsInterface, QStringLiteral("SettingChanged"));
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        m_connection.send(signal);
    }

    Settings settings;
    bool isBroken = false;
    int calls = 0;

private:
    QDBusConnection m_connection;
};

QVariant channels(double red, double green, double blue)
{
    return QVariant::fromValue(Channels{.red = red, .green = green, .blue = blue});
}

class AppearanceTest : public testing::Test
{
protected:
    void start(bool resolutionHasTextFactor = false)
    {
        appearance = std::make_unique<PortalAppearance>(resolutionHasTextFactor);
        QObject::connect(appearance.get(), &Appearance::looksChanged, appearance.get(),
                         [this] { ++changes; });
    }
    /// Until the looks are `expected`.
    [[nodiscard]] bool become(const Looks &expected)
    {
        return test::waitUntil([&] { return appearance->looks() == expected; });
    }

    Portal portal;
    std::unique_ptr<PortalAppearance> appearance;
    int changes = 0;
};

TEST_F(AppearanceTest, isPlainUntilTheDesktopHasAnswered)
{
    portal.settings[appearanceGroup] = {{schemeKey, 1u}};
    start();
    EXPECT_EQ(appearance->looks(), Looks());
    EXPECT_TRUE(become({.scheme = Looks::Scheme::Dark, .accent = {}, .textFactor = 1}));
}

TEST_F(AppearanceTest, readsAllOfItInOneCall)
{
    portal.settings[appearanceGroup] = {{schemeKey, 2u}, {accentKey, channels(0, 0.5, 1)}};
    portal.settings[desktopGroup] = {{factorKey, 1.25}, {QStringLiteral("clock"), true}};
    start();
    EXPECT_TRUE(become({.scheme = Looks::Scheme::Light,
                        .accent = QColor::fromRgbF(0, 0.5, 1),
                        .textFactor = 1.25}));
    EXPECT_EQ(portal.calls, 1);
    EXPECT_EQ(changes, 1);
}

TEST_F(AppearanceTest, followsChangesWhileItRuns)
{
    portal.settings[appearanceGroup] = {{schemeKey, 1u}};
    start();
    ASSERT_TRUE(become({.scheme = Looks::Scheme::Dark, .accent = {}, .textFactor = 1}));
    portal.change(appearanceGroup, schemeKey, 2u);
    EXPECT_TRUE(become({.scheme = Looks::Scheme::Light, .accent = {}, .textFactor = 1}));
    portal.change(appearanceGroup, schemeKey, 0u);
    portal.change(appearanceGroup, accentKey, channels(1, 0, 0));
    portal.change(desktopGroup, factorKey, 2.0);
    EXPECT_TRUE(become({.scheme = Looks::Scheme::NoPreference,
                        .accent = QColor::fromRgbF(1, 0, 0),
                        .textFactor = 2}));
    portal.change(appearanceGroup, accentKey, channels(-1, -1, -1));
    EXPECT_TRUE(become({.scheme = Looks::Scheme::NoPreference, .accent = {}, .textFactor = 2}));
}

TEST_F(AppearanceTest, junkCountsAsNothingSaid)
{
    start();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const QList<QVariant> accents{channels(0, 0, 1.01), channels(notANumber, 0, 0), 7u,
                                  QStringLiteral("red"), QVariantList{0.5, 0.5, 0.5}};
    for (const QVariant &accent : accents) {
        portal.change(appearanceGroup, accentKey, channels(0, 1, 0));
        EXPECT_TRUE(become({.scheme = {}, .accent = QColor::fromRgbF(0, 1, 0), .textFactor = 1}));
        portal.change(appearanceGroup, accentKey, accent);
        EXPECT_TRUE(become(Looks()));
    }
    const QList<QVariant> factors{0.0, -1.0, 100.0, notANumber, QStringLiteral("2"), 2u};
    for (const QVariant &factor : factors) {
        portal.change(desktopGroup, factorKey, 1.5);
        EXPECT_TRUE(become({.scheme = {}, .accent = {}, .textFactor = 1.5}));
        portal.change(desktopGroup, factorKey, factor);
        EXPECT_TRUE(become(Looks()));
    }
    const QList<QVariant> schemes{3u, QStringLiteral("dark"), -1};
    for (const QVariant &scheme : schemes) {
        portal.change(appearanceGroup, schemeKey, 1u);
        EXPECT_TRUE(become({.scheme = Looks::Scheme::Dark, .accent = {}, .textFactor = 1}));
        portal.change(appearanceGroup, schemeKey, scheme);
        EXPECT_TRUE(become(Looks()));
    }
}

TEST_F(AppearanceTest, textOfTheRightSizeIsNotMadeLargerAgain)
{
    portal.settings[appearanceGroup] = {{schemeKey, 1u}};
    portal.settings[desktopGroup] = {{factorKey, 1.5}};
    start(true);
    EXPECT_TRUE(become({.scheme = Looks::Scheme::Dark, .accent = {}, .textFactor = 1}));
}

TEST_F(AppearanceTest, settingsOfOthersChangeNothing)
{
    start();
    portal.change(QStringLiteral("org.example"), schemeKey, 1u);
    portal.change(appearanceGroup, QStringLiteral("contrast"), 1u);
    portal.change(appearanceGroup, schemeKey, 0u);
    portal.change(appearanceGroup, schemeKey, 2u); // behind the others
    EXPECT_TRUE(become({.scheme = Looks::Scheme::Light, .accent = {}, .textFactor = 1}));
    EXPECT_EQ(changes, 1);
}

TEST_F(AppearanceTest, aPortalThatFailsIsAsGoodAsNone)
{
    portal.isBroken = true;
    start();
    EXPECT_TRUE(test::waitUntil([&] { return portal.calls == 1; }));
    portal.change(appearanceGroup, schemeKey, 1u);
    EXPECT_TRUE(become({.scheme = Looks::Scheme::Dark, .accent = {}, .textFactor = 1}));
}

} // namespace
} // namespace velto::platform

Q_DECLARE_METATYPE(velto::platform::Channels)
