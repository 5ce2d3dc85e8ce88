// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/records.h"

#include <QDateTime>
#include <QTimeZone>

#include <array>

namespace velto::shell
{

/// How long ago a conversation began, in the order in which the history shows them.
enum class Bucket { Today, Yesterday, Week, Older };

inline constexpr std::array allBuckets{Bucket::Today, Bucket::Yesterday, Bucket::Week,
                                       Bucket::Older};

/// "today", "yesterday", "week" or "older".
[[nodiscard]] QString bucketId(Bucket bucket);
/// As it stands above the bucket's rows.
[[nodiscard]] QString bucketLabel(Bucket bucket);

/// Where the days of a user's calendar begin around one moment. Times are milliseconds since the
/// epoch.
class HistoryCalendar final
{
public:
    HistoryCalendar(const QDateTime &now, const QTimeZone &zone);

    /// Today and yesterday are days of the calendar; after them seven times 24 hours count. What
    /// lies in the future and isn't today belongs to the week.
    [[nodiscard]] Bucket bucketOf(qint64 moment) const;
    [[nodiscard]] qint64 now() const { return m_now; }
    /// When what began at `moment` may go to another bucket: the end of this day, or the seventh
    /// time 24 hours, if that is earlier.
    [[nodiscard]] qint64 nextChange(qint64 moment) const;

private:
    qint64 m_now;
    qint64 m_yesterday;
    qint64 m_today;
    qint64 m_tomorrow;
};

/// The moment that an internet date and time such as "2024-01-02T03:04:05Z" names, with or without
/// fractional seconds, in milliseconds since the epoch. Absent for anything else, times without a
/// zone included.
[[nodiscard]] std::optional<qint64> internetDateTime(QStringView text);

/// Conversations that began about as long ago.
struct HistoryBucket
{
    QString id;
    QString label;
    QList<service::ConversationSummary> items;

    bool operator==(const HistoryBucket &) const = default;
};

/// The buckets that aren't empty, the newest first; within one the given order stays. A
/// conversation whose time can't be read counts as one of today.
[[nodiscard]] QList<HistoryBucket>
groupConversations(const QList<service::ConversationSummary> &conversations, const QDateTime &now,
                   const QTimeZone &zone);

} // namespace velto::shell
