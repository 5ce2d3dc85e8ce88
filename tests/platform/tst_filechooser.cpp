// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/portalfilechooser.h"
#include "support/coroutinetest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>

#include <gtest/gtest.h>

#include <optional>

// The portal of a desktop, played by the test on a bus of its own.
namespace velto::platform
{
namespace
{

using namespace std::chrono_literals;
using test::waitUntil;
using Choice = FileChooser::Choice;

constexpr auto serviceName = "org.freedesktop.portal.Desktop";
constexpr auto objectPath = "/org/freedesktop/portal/desktop";
constexpr auto requestInterface = "org.freedesktop.portal.Request";

class FakeRequest final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Request")

public:
    int closed = 0;

public slots:
    Q_SCRIPTABLE void Close() { ++closed; }
};

class FakePortal final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileChooser")

public:
    FakePortal()
    {
        EXPECT_TRUE(bus.registerObject(QString::fromLatin1(objectPath), this,
                                       QDBusConnection::ExportScriptableSlots));
        EXPECT_TRUE(bus.registerService(QString::fromLatin1(serviceName)));
    }
    ~FakePortal() override
    {
        bus.unregisterService(QString::fromLatin1(serviceName));
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
    }

    void respond(uint response, const QStringList &uris, const QString &at = {})
    {
        QDBusMessage signal = QDBusMessage::createSignal(at.isEmpty() ? request : at,
                                                         QString::fromLatin1(requestInterface),
                                                         QStringLiteral("Response"));
        QVariantMap results;
        if (!uris.isEmpty())
            results.insert(QStringLiteral("uris"), uris);
        signal << response << results;
        bus.send(signal);
    }

    QDBusConnection bus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal"));
    FakeRequest dialog;
    QString request;
    QString parent;
    QString title;
    QVariantMap options;
    int calls = 0;
    bool refuses = false;
    bool isSilent = false;
    bool answersBeforeItReturns = false;
    QString ownRequest; ///< What an old portal calls its object, whatever it was told.

public slots:
    Q_SCRIPTABLE QDBusObjectPath OpenFile(const QString &parentWindow, const QString &dialogTitle,
                                          const QVariantMap &dialogOptions,
                                          const QDBusMessage &message)
    {
        ++calls;
        parent = parentWindow;
        title = dialogTitle;
        options = dialogOptions;
        const QString sender = message.service().mid(1).replace(u'.', u'_');
        request = ownRequest.isEmpty()
                      ? QString::fromLatin1(objectPath) + QStringLiteral("/request/") + sender +
                            u'/' + options[QStringLiteral("handle_token")].toString()
                      : ownRequest;
        bus.registerObject(request, &dialog, QDBusConnection::ExportScriptableSlots);
        if (isSilent)
            message.setDelayedReply(true);
        else if (refuses)
            bus.send(message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no")));
        if (answersBeforeItReturns)
            respond(0, {QStringLiteral("file:///early")});
        return QDBusObjectPath(request);
    }
};

class PortalFileChooserTest : public testing::Test
{
protected:
    void choose()
    {
        choice = std::make_shared<std::optional<Choice>>();
        running =
            test::detail::store(chooser->chooseFile(QStringLiteral("Attach file"), 42), choice);
    }
    [[nodiscard]] bool isOpen()
    {
        return waitUntil([this] { return portal.calls > 0; });
    }
    [[nodiscard]] Choice chosen()
    {
        if (!waitUntil([this] { return choice->has_value(); }))
            throw std::runtime_error("watchdog: nothing was chosen");
        return **choice;
    }
    static QString text(const char *utf8) { return QString::fromUtf8(utf8); }

    FakePortal portal;
    std::unique_ptr<PortalFileChooser> chooser = std::make_unique<PortalFileChooser>();
    std::shared_ptr<std::optional<Choice>> choice;
    QCoro::Task<void> running;
};

TEST_F(PortalFileChooserTest, givesTheFileThatWasChosen)
{
    choose();
    ASSERT_TRUE(isOpen());
    portal.respond(0, {text("file:///tmp/a%20b%C3%A9.txt")});
    EXPECT_EQ(std::get<QUrl>(chosen()).toLocalFile(), text("/tmp/a bé.txt"));
}

TEST_F(PortalFileChooserTest, asksForOneFileInAModalDialog)
{
    choose();
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(portal.title, u"Attach file");
    EXPECT_EQ(portal.parent, u""); // a test has no window
    EXPECT_EQ(portal.options[text("multiple")], QVariant(false));
    EXPECT_EQ(portal.options[text("modal")], QVariant(true));
}

TEST_F(PortalFileChooserTest, cancellingChoosesNothing)
{
    for (const uint response : {1U, 2U, 7U}) {
        portal.calls = 0;
        choose();
        ASSERT_TRUE(isOpen());
        portal.respond(response, {text("file:///never")});
        EXPECT_TRUE(std::holds_alternative<FileChooser::Cancelled>(chosen())) << response;
    }
}

TEST_F(PortalFileChooserTest, successWithoutAFileChoosesNothing)
{
    choose();
    ASSERT_TRUE(isOpen());
    portal.respond(0, {});
    EXPECT_TRUE(std::holds_alternative<FileChooser::Cancelled>(chosen()));
}

TEST_F(PortalFileChooserTest, anAnswerAheadOfTheReplyIsHeard)
{
    portal.answersBeforeItReturns = true;
    choose();
    EXPECT_EQ(std::get<QUrl>(chosen()), QUrl(text("file:///early")));
    // The reply that comes now changes nothing, and the next dialog works.
    portal.answersBeforeItReturns = false;
    portal.calls = 0;
    choose();
    ASSERT_TRUE(isOpen());
    portal.respond(0, {text("file:///late")});
    EXPECT_EQ(std::get<QUrl>(chosen()), QUrl(text("file:///late")));
}

TEST_F(PortalFileChooserTest, followsAPortalThatNamesItsObjectItself)
{
    portal.ownRequest = text("/org/freedesktop/portal/desktop/request/1_2/own");
    choose();
    ASSERT_TRUE(isOpen());
    // Until the reply has come nobody listens there: such a portal is answered by a person.
    const auto listens = [this] {
        portal.respond(0, {text("file:///own")});
        return choice->has_value();
    };
    EXPECT_TRUE(waitUntil(listens));
    EXPECT_EQ(std::get<QUrl>(chosen()), QUrl(text("file:///own")));
}

TEST_F(PortalFileChooserTest, whatSomebodyElseSaysDoesNotCount)
{
    choose();
    ASSERT_TRUE(isOpen());
    QDBusConnection stranger =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, text("stranger"));
    QDBusMessage signal = QDBusMessage::createSignal(
        portal.request, QString::fromLatin1(requestInterface), text("Response"));
    signal << 0U << QVariantMap{{text("uris"), QStringList{text("file:///etc/passwd")}}};
    EXPECT_TRUE(stranger.send(signal));
    // A round trip, so that the signal has been delivered before the real answer.
    EXPECT_EQ(stranger
                  .call(QDBusMessage::createMethodCall(text("org.freedesktop.DBus"),
                                                       text("/org/freedesktop/DBus"),
                                                       text("org.freedesktop.DBus"), text("GetId")))
                  .type(),
              QDBusMessage::ReplyMessage);
    portal.respond(0, {text("file:///mine")});
    EXPECT_EQ(std::get<QUrl>(chosen()), QUrl(text("file:///mine")));
    QDBusConnection::disconnectFromBus(text("stranger"));
}

TEST_F(PortalFileChooserTest, thereIsNoSecondDialog)
{
    choose();
    ASSERT_TRUE(isOpen());
    EXPECT_TRUE(std::holds_alternative<FileChooser::Cancelled>(
        test::await(chooser->chooseFile(text("again"), 0))));
    EXPECT_EQ(portal.calls, 1);
    portal.respond(0, {text("file:///first")});
    EXPECT_EQ(std::get<QUrl>(chosen()), QUrl(text("file:///first")));
}

TEST_F(PortalFileChooserTest, aPortalWithoutFilesIsNone)
{
    portal.refuses = true;
    choose();
    EXPECT_TRUE(std::holds_alternative<FileChooser::Unavailable>(chosen()));
}

TEST_F(PortalFileChooserTest, aSilentPortalIsNoneAndIsToldToForgetIt)
{
    chooser = std::make_unique<PortalFileChooser>(50ms);
    portal.isSilent = true;
    choose();
    EXPECT_TRUE(std::holds_alternative<FileChooser::Unavailable>(chosen()));
    EXPECT_TRUE(waitUntil([this] { return portal.dialog.closed == 1; }));
}

TEST_F(PortalFileChooserTest, aPortalThatGoesAwayHasCancelled)
{
    choose();
    ASSERT_TRUE(isOpen());
    portal.bus.unregisterService(QString::fromLatin1(serviceName));
    EXPECT_TRUE(std::holds_alternative<FileChooser::Cancelled>(chosen()));
}

TEST_F(PortalFileChooserTest, goingTakesTheDialogAlong)
{
    choose();
    ASSERT_TRUE(isOpen());
    chooser.reset();
    ASSERT_TRUE(choice->has_value());
    EXPECT_TRUE(std::holds_alternative<FileChooser::Cancelled>(**choice));
    EXPECT_TRUE(waitUntil([this] { return portal.dialog.closed == 1; }));
}

TEST(PortalWindow, isNamedUnderX11Only)
{
    EXPECT_EQ(portalWindow(QStringLiteral("xcb"), 0x2a), u"x11:2a");
    EXPECT_EQ(portalWindow(QStringLiteral("xcb"), 0), u"");
    EXPECT_EQ(portalWindow(QStringLiteral("wayland"), 0x2a), u"");
}

} // namespace
} // namespace velto::platform

#include "tst_filechooser.moc"
