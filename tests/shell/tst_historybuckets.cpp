// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/historybuckets.h"

#include <gtest/gtest.h>

namespace velto::shell
{

namespace
{

using service::ConversationSummary;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

ConversationSummary conversation(const char *id, const char *createdAt)
{
    ConversationSummary summary;
    summary.id = text(id);
    summary.createdAt = text(createdAt);
    return summary;
}

QDateTime utc(const char *moment)
{
    const auto milliseconds = internetDateTime(text(moment));
    EXPECT_TRUE(milliseconds.has_value()) << moment;
    return QDateTime::fromMSecsSinceEpoch(milliseconds.value_or(0), Qt::UTC);
}

QString bucketAt(const char *createdAt, const char *now, const QTimeZone &zone = QTimeZone::utc())
{
    const auto buckets = groupConversations({conversation("c", createdAt)}, utc(now), zone);
    EXPECT_EQ(buckets.size(), 1);
    return buckets.value(0).id;
}

struct BucketCase
{
    const char *createdAt;
    const char *bucket;
};

class Buckets : public testing::TestWithParam<BucketCase>
{};

struct TimeCase
{
    const char *text;
    qint64 milliseconds; ///< -1 where it names no moment.
};

class InternetDateTime : public testing::TestWithParam<TimeCase>
{};

constexpr const char *noon = "2026-03-18T12:00:00Z";

} // namespace

TEST_P(Buckets, dependOnTheCalendarThenOnHours)
{
    EXPECT_EQ(bucketAt(GetParam().createdAt, noon), text(GetParam().bucket));
}

INSTANTIATE_TEST_SUITE_P(
    AtNoon, Buckets,
    testing::Values(BucketCase{"2026-03-18T00:00:00Z", "today"},
                    BucketCase{"2026-03-18T23:59:59.999Z", "today"}, // still to come
                    BucketCase{"2026-03-17T23:59:59.999Z", "yesterday"},
                    BucketCase{"2026-03-17T00:00:00Z", "yesterday"},
                    BucketCase{"2026-03-16T23:59:59.999Z", "week"},
                    BucketCase{"2026-03-11T13:00:00Z", "week"}, // seven days less an hour
                    BucketCase{"2026-03-11T12:00:00.001Z", "week"},
                    BucketCase{"2026-03-11T12:00:00Z", "older"}, // seven times 24 hours
                    BucketCase{"2024-01-02T03:04:05Z", "older"},
                    BucketCase{"2026-03-19T00:00:00Z", "week"}, // the future
                    BucketCase{"2030-01-01T00:00:00Z", "week"}, BucketCase{"garbage", "today"},
                    BucketCase{"", "today"}, BucketCase{"2026-03-01", "today"}));

TEST(HistoryBuckets, minuteBeforeMidnightIsYesterdayAMinuteAfter)
{
    EXPECT_EQ(bucketAt("2026-03-17T23:59:00Z", "2026-03-18T00:01:00Z"), text("yesterday"));
    EXPECT_EQ(bucketAt("2026-03-17T23:59:00Z", "2026-03-17T23:59:59Z"), text("today"));
}

TEST(HistoryBuckets, daysAreThoseOfTheUsersTimeZone)
{
    const QTimeZone tokyo("Asia/Tokyo");
    ASSERT_TRUE(tokyo.isValid());
    // It is the 19th in Tokyo from 15:00 on.
    EXPECT_EQ(bucketAt("2026-03-18T14:59:00Z", "2026-03-18T15:01:00Z", tokyo), text("yesterday"));
    EXPECT_EQ(bucketAt("2026-03-18T14:59:00Z", "2026-03-18T15:01:00Z"), text("today"));
    EXPECT_EQ(bucketAt("2026-03-17T20:00:00Z", "2026-03-18T14:00:00Z", tokyo), text("today"));
}

TEST(HistoryBuckets, aDayOf23HoursEndsAtItsOwnMidnight)
{
    const QTimeZone berlin("Europe/Berlin");
    ASSERT_TRUE(berlin.isValid());
    // The 29th of March 2026 lasts from 23:00 to 22:00 UTC.
    EXPECT_EQ(bucketAt("2026-03-28T23:00:00Z", "2026-03-29T21:59:00Z", berlin), text("today"));
    EXPECT_EQ(bucketAt("2026-03-28T22:59:00Z", "2026-03-29T21:59:00Z", berlin), text("yesterday"));
    EXPECT_EQ(bucketAt("2026-03-28T23:00:00Z", "2026-03-29T22:00:00Z", berlin), text("yesterday"));
}

TEST(HistoryBuckets, comeInAFixedOrderWithTheirLabels)
{
    const auto buckets = groupConversations(
        {conversation("old", "2020-01-01T00:00:00Z"), conversation("w1", "2026-03-14T00:00:00Z"),
         conversation("t1", "2026-03-18T01:00:00Z"), conversation("y", "2026-03-17T10:00:00Z"),
         conversation("w2", "2026-03-15T00:00:00Z"), conversation("t2", "2026-03-18T09:00:00Z")},
        utc(noon), QTimeZone::utc());
    QStringList shape;
    for (const HistoryBucket &bucket : buckets) {
        shape.append(bucket.id + QLatin1Char('/') + bucket.label);
        for (const auto &item : bucket.items)
            shape.append(item.id);
    }
    EXPECT_EQ(shape,
              (QStringList{text("today/Today"), text("t1"), text("t2"), text("yesterday/Yesterday"),
                           text("y"), text("week/Previous 7 Days"), text("w1"), text("w2"),
                           text("older/Older"), text("old")}));
}

TEST(HistoryBuckets, emptyOnesAreLeftOut)
{
    EXPECT_TRUE(groupConversations({}, utc(noon), QTimeZone::utc()).isEmpty());
    const auto buckets = groupConversations({conversation("a", "2020-01-01T00:00:00Z")}, utc(noon),
                                            QTimeZone::utc());
    ASSERT_EQ(buckets.size(), 1);
    EXPECT_EQ(buckets[0].id, text("older"));
}

TEST(HistoryBuckets, timesWithAndWithoutAFractionFallAlike)
{
    EXPECT_EQ(bucketAt("2024-01-02T03:04:05Z", "2024-01-02T12:00:00Z"), text("today"));
    EXPECT_EQ(bucketAt("2024-01-02T03:04:05.678Z", "2024-01-02T12:00:00Z"), text("today"));
    EXPECT_EQ(bucketAt("2024-01-02T03:04:05Z", noon), bucketAt("2024-01-02T03:04:05.678Z", noon));
}

TEST(HistoryCalendar, saysWhenAConversationChangesItsBucket)
{
    const HistoryCalendar calendar(utc(noon), QTimeZone::utc());
    const auto at = [](const char *moment) { return *internetDateTime(text(moment)); };
    const qint64 midnight = at("2026-03-19T00:00:00Z");
    EXPECT_EQ(calendar.nextChange(at("2026-03-18T10:00:00Z")), midnight);
    EXPECT_EQ(calendar.nextChange(at("2026-03-11T15:00:00Z")), at("2026-03-18T15:00:00Z"));
    EXPECT_EQ(calendar.nextChange(at("2026-03-11T12:00:00Z")), midnight); // older already
    EXPECT_EQ(calendar.nextChange(at("2020-01-01T00:00:00Z")), midnight);
}

TEST_P(InternetDateTime, isReadStrictly)
{
    EXPECT_EQ(internetDateTime(text(GetParam().text)).value_or(-1), GetParam().milliseconds);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, InternetDateTime,
    testing::Values(TimeCase{"2024-01-02T03:04:05Z", 1704164645000},
                    TimeCase{"2024-01-02T03:04:05.678Z", 1704164645678},
                    TimeCase{"2024-01-02T03:04:05.6Z", 1704164645600},
                    TimeCase{"2024-01-02T03:04:05.678901Z", 1704164645678},
                    TimeCase{"2024-01-02T03:04:05+01:30", 1704159245000},
                    TimeCase{"2024-01-02T03:04:05-0130", 1704170045000},
                    TimeCase{"2024-02-29T00:00:00Z", 1709164800000},
                    TimeCase{"2023-02-29T00:00:00Z", -1}, TimeCase{"2024-01-02T24:00:00Z", -1},
                    TimeCase{"2024-01-02T03:04:05", -1}, TimeCase{"2024-01-02T03:04:05.Z", -1},
                    TimeCase{"2024-01-02 03:04:05Z", -1}, TimeCase{"2024-01-02", -1},
                    TimeCase{"2024-01-02T03:04Z", -1}, TimeCase{" 2024-01-02T03:04:05Z", -1},
                    TimeCase{"2024-01-02T03:04:05Z ", -1}, TimeCase{"+024-01-02T03:04:05Z", -1},
                    TimeCase{"2024-01-02T03:04:05+1", -1}, TimeCase{"garbage", -1},
                    TimeCase{"", -1}));

} // namespace velto::shell
