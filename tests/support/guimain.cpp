// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include <QGuiApplication>
#include <QStandardPaths>

#include <gtest/gtest.h>

// For tests that need items and windows; given as a source, it stands in for the library's own.
int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const QGuiApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
