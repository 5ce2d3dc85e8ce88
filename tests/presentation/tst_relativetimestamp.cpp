// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/rows/relativetimestamp.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace velto::presentation
{

namespace
{

QString after(qint64 milliseconds)
{
    const QDateTime date(QDate(2026, 3, 2), QTime(9, 30));
    return relativeTimestamp(date, date.addMSecs(milliseconds));
}

constexpr qint64 second = 1000;

} // namespace

TEST(RelativeTimestamp, lessThanAMinuteIsJustNow)
{
    EXPECT_EQ(after(0), QStringLiteral("Just now"));
    EXPECT_EQ(after(59'999), QStringLiteral("Just now"));
}

TEST(RelativeTimestamp, theFutureIsJustNow)
{
    EXPECT_EQ(after(-1), QStringLiteral("Just now"));
    EXPECT_EQ(after(-90'000 * second), QStringLiteral("Just now"));
}

TEST(RelativeTimestamp, minutesAreRoundedTowardZero)
{
    EXPECT_EQ(after(60 * second), QStringLiteral("1m ago"));
    EXPECT_EQ(after(119'999), QStringLiteral("1m ago"));
    EXPECT_EQ(after(3'599'999), QStringLiteral("59m ago"));
}

TEST(RelativeTimestamp, hoursAreRoundedTowardZero)
{
    EXPECT_EQ(after(3600 * second), QStringLiteral("1h ago"));
    EXPECT_EQ(after(86'399'999), QStringLiteral("23h ago"));
}

TEST(RelativeTimestamp, fromADayOnItIsDateAndTime)
{
    const QDateTime date(QDate(2026, 3, 2), QTime(9, 30));
    EXPECT_EQ(after(86'400 * second), shortTimestamp(date));
    EXPECT_EQ(shortTimestamp(date), QLocale::system().toString(date, QLocale::ShortFormat));
    EXPECT_FALSE(shortTimestamp(date).isEmpty());
}

} // namespace velto::presentation
