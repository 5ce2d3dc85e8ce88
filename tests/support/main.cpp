// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include <QCoreApplication>
#include <QStandardPaths>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    // Files of a test never land in the home of whoever runs it.
    QStandardPaths::setTestModeEnabled(true);
    const QCoreApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
