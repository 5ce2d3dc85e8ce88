// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/log.h"

#include <gtest/gtest.h>

namespace
{

using namespace velto::base;

TEST(Log, ALineHasItsSourceInBracketsAndLeavesAtOnce)
{
    testing::internal::CaptureStdout();
    logLine(QLatin1StringView("AuthClient"), QStringLiteral("refreshed — ok"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "[AuthClient] refreshed — ok\n");
}

TEST(Log, AlineMayHoldPercentSigns)
{
    testing::internal::CaptureStdout();
    logLine(QLatin1StringView("ChatStream"), QStringLiteral("100%s %n"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "[ChatStream] 100%s %n\n");
}

TEST(Log, OfATokenOnlyTheTailShows)
{
    EXPECT_EQ(tokenTail(QStringLiteral("abcdefghijklmnop")), QStringLiteral("…ijklmnop"));
    EXPECT_EQ(tokenTail(QStringLiteral("abc")), QStringLiteral("…abc"));
    EXPECT_EQ(tokenTail(QString()), QStringLiteral("…"));
}

} // namespace
