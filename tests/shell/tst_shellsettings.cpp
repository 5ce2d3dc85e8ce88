// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/shellsettings.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace velto::shell
{

namespace
{

class ShellSettingsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder.path());
        QCoreApplication::setOrganizationName(QStringLiteral("velto"));
        QCoreApplication::setApplicationName(QStringLiteral("velto"));
        QSettings().clear();
    }

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(ShellSettingsTest, beginAsDescribed)
{
    const ShellSettings settings;
    EXPECT_FALSE(settings.isSidebarCollapsed());
    EXPECT_FALSE(settings.isColumnHidden());
    EXPECT_EQ(settings.columnWidth(), 220);
}

TEST_F(ShellSettingsTest, surviveARestart)
{
    {
        ShellSettings settings;
        settings.setSidebarCollapsed(true);
        settings.setColumnHidden(true);
        settings.setColumnWidth(250);
    }
    EXPECT_TRUE(QSettings().value(QStringLiteral("velto.sidebar.collapsed")).toBool());
    const ShellSettings settings;
    EXPECT_TRUE(settings.isSidebarCollapsed());
    EXPECT_TRUE(settings.isColumnHidden());
    EXPECT_EQ(settings.columnWidth(), 250);
}

TEST_F(ShellSettingsTest, theCommandsFlagLeavesTheColumnAlone)
{
    ShellSettings settings;
    QSignalSpy column(&settings, &ShellSettings::columnHiddenChanged);
    settings.setSidebarCollapsed(true);
    EXPECT_EQ(column.count(), 0);
    EXPECT_FALSE(settings.isColumnHidden());
}

TEST_F(ShellSettingsTest, theColumnStaysWithinItsBounds)
{
    ShellSettings settings;
    settings.setColumnWidth(10);
    EXPECT_EQ(settings.columnWidth(), 200);
    settings.setColumnWidth(5000);
    EXPECT_EQ(settings.columnWidth(), 280);
}

TEST_F(ShellSettingsTest, junkInTheFileCountsAsNothing)
{
    for (const char *junk : {"wide", "nan", "inf", ""}) {
        QSettings().setValue(QStringLiteral("sidebar/width"), QString::fromLatin1(junk));
        EXPECT_EQ(ShellSettings().columnWidth(), 220) << junk;
    }
}

TEST_F(ShellSettingsTest, anEqualValueTellsNobody)
{
    ShellSettings settings;
    QSignalSpy changed(&settings, &ShellSettings::sidebarCollapsedChanged);
    settings.setSidebarCollapsed(false);
    settings.setSidebarCollapsed(true);
    settings.setSidebarCollapsed(true);
    EXPECT_EQ(changed.count(), 1);
}

} // namespace velto::shell
