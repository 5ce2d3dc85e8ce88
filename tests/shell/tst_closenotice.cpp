// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/closenotice.h"

#include "support/coroutinetest.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace velto::shell
{

namespace
{

class CloseNoticeTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder.path());
        QCoreApplication::setOrganizationName(QStringLiteral("velto"));
        QCoreApplication::setApplicationName(QStringLiteral("velto"));
        QSettings().clear();
        window.show();
    }

    QCoro::Task<bool> notify(QString title, QString text)
    {
        told.append(title + QLatin1Char('\n') + text);
        co_return desktopTells;
    }

    [[nodiscard]] bool isRemembered() const
    {
        return QSettings().value(QStringLiteral("window/toldThatCloseKeepsRunning")).toBool();
    }

    bool staysInSight = false;
    bool desktopTells = true;
    QStringList told;
    QWindow window;
    CloseNotice notice{
        window, [this] { return staysInSight; },
        [this](const QString &title, const QString &text) { return notify(title, text); }};
    QSignalSpy noteWanted{&notice, &CloseNotice::noteWanted};

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(CloseNoticeTest, theDesktopTellsOnceAndTheWindowCloses)
{
    window.close();
    ASSERT_TRUE(test::waitUntil([this] { return !window.isVisible(); }));
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told.first().startsWith(QStringLiteral("velto keeps running\n")))
        << qPrintable(told.first());
    EXPECT_TRUE(isRemembered());
    EXPECT_EQ(noteWanted.size(), 0);

    window.show();
    window.close();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(told.size(), 1);
}

TEST_F(CloseNoticeTest, aDesktopThatTellsNothingLeavesItToTheWindow)
{
    desktopTells = false;
    window.close();
    ASSERT_TRUE(test::waitUntil([this] { return noteWanted.size() == 1; }));
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(isRemembered()); // nobody has read it yet

    window.close(); // not again while the note is shown
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(noteWanted.size(), 1);

    notice.noteRead();
    EXPECT_TRUE(test::waitUntil([this] { return !window.isVisible(); }));
    EXPECT_TRUE(isRemembered());
}

TEST_F(CloseNoticeTest, anIconInSightSaysEnough)
{
    staysInSight = true;
    window.close();
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(told.isEmpty());
    EXPECT_FALSE(isRemembered()); // the day the icon is gone, it is still to be said
}

TEST_F(CloseNoticeTest, whoeverQuitsIsNotHeldUp)
{
    QEvent quit(QEvent::Quit);
    QCoreApplication::sendEvent(qApp, &quit);
    window.close();
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(told.isEmpty());
}

} // namespace velto::shell
