// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/windowplacement.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace velto::shell
{

namespace
{

class WindowPlacementTest : public testing::Test
{
protected:
    WindowPlacementTest()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("velto"));
        QCoreApplication::setApplicationName(QStringLiteral("velto"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
        window.setMinimumSize({480, 600});
        window.resize(700, 650);
    }

    QTemporaryDir folder;
    QWindow window;
    WindowPlacement placement{window};
};

} // namespace

TEST_F(WindowPlacementTest, showsTheWindowAtItsOwnSizeTheFirstTime)
{
    placement.restore();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.size(), QSize(700, 650));
}

TEST_F(WindowPlacementTest, bringsTheSizeBack)
{
    placement.restore();
    window.resize(640, 620);
    QCoreApplication::processEvents();
    placement.save();

    QWindow next;
    next.setMinimumSize({480, 600});
    WindowPlacement again(next);
    again.restore();
    EXPECT_EQ(next.size(), QSize(640, 620));
    EXPECT_FALSE(next.windowStates().testFlag(Qt::WindowMaximized));
}

TEST_F(WindowPlacementTest, remembersTheSizeWhenTheWindowCloses)
{
    placement.restore();
    window.resize(640, 620);
    QCoreApplication::processEvents();
    window.close();
    EXPECT_EQ(QSettings().value(QStringLiteral("window/size")).toSize(), QSize(640, 620));
}

TEST_F(WindowPlacementTest, bringsAMaximisedWindowBackMaximisedAndKeepsItsSize)
{
    placement.restore();
    window.resize(640, 620);
    QCoreApplication::processEvents();
    window.showMaximized();
    QCoreApplication::processEvents();
    placement.save();
    EXPECT_TRUE(QSettings().value(QStringLiteral("window/maximized")).toBool());
    EXPECT_EQ(QSettings().value(QStringLiteral("window/size")).toSize(), QSize(640, 620));

    QWindow next;
    WindowPlacement again(next);
    again.restore();
    EXPECT_TRUE(next.windowStates().testFlag(Qt::WindowMaximized));
}

TEST_F(WindowPlacementTest, isNeverSmallerThanTheMinimumNorLargerThanTheScreen)
{
    QSettings().setValue(QStringLiteral("window/size"), QSize(10, 10));
    placement.restore();
    EXPECT_EQ(window.size(), QSize(480, 600));
    QSettings().setValue(QStringLiteral("window/size"), QSize(90000, 90000));
    placement.restore();
    EXPECT_LT(window.width(), 90000);
}

} // namespace velto::shell
