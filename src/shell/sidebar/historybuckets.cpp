// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/historybuckets.h"

#include <QCoreApplication>

#include <algorithm>

namespace velto::shell
{

namespace
{

constexpr qint64 hours24 = 24LL * 60 * 60 * 1000;
constexpr qint64 week = 7 * hours24;

/// Reads a text from front to back. What it is asked for has to be there.
class Reader final
{
public:
    explicit Reader(QStringView text)
        : m_rest(text)
    {}

    [[nodiscard]] bool isGood() const { return m_good; }
    [[nodiscard]] bool isAtEnd() const { return m_rest.isEmpty(); }

    bool take(char16_t character)
    {
        const bool there = m_rest.startsWith(QChar(character));
        if (there)
            m_rest = m_rest.mid(1);
        return there;
    }
    void expect(char16_t character) { m_good = take(character) && m_good; }

    int digits(qsizetype count)
    {
        const QStringView taken = takeDigits(count);
        m_good = m_good && taken.size() == count;
        return taken.toInt();
    }
    /// Whatever number of digits behind a point, as milliseconds.
    int fraction()
    {
        const QStringView taken = takeDigits(m_rest.size());
        m_good = m_good && !taken.isEmpty();
        return taken.left(3).toString().leftJustified(3, QLatin1Char('0')).toInt();
    }

private:
    QStringView takeDigits(qsizetype most)
    {
        const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
        const QStringView candidates = m_rest.left(most);
        const auto *const end = std::find_if_not(candidates.begin(), candidates.end(), isDigit);
        const QStringView taken = m_rest.left(end - candidates.begin());
        m_rest = m_rest.mid(taken.size());
        return taken;
    }

    QStringView m_rest;
    bool m_good = true;
};

QDate readDate(Reader &reader)
{
    const int year = reader.digits(4);
    reader.expect(u'-');
    const int month = reader.digits(2);
    reader.expect(u'-');
    return {year, month, reader.digits(2)};
}

QTime readTime(Reader &reader)
{
    const int hour = reader.digits(2);
    reader.expect(u':');
    const int minute = reader.digits(2);
    reader.expect(u':');
    const int second = reader.digits(2);
    return {hour, minute, second, reader.take(u'.') ? reader.fraction() : 0};
}

/// Seconds east of Greenwich.
int readZone(Reader &reader)
{
    if (reader.take(u'Z'))
        return 0;
    const int sign = reader.take(u'-') ? -1 : 1;
    if (sign > 0)
        reader.expect(u'+');
    const int hours = reader.digits(2);
    reader.take(u':');
    return sign * (hours * 60 + reader.digits(2)) * 60;
}

} // namespace

QString bucketId(Bucket bucket)
{
    switch (bucket) {
    case Bucket::Today:
        return QStringLiteral("today");
    case Bucket::Yesterday:
        return QStringLiteral("yesterday");
    case Bucket::Week:
        return QStringLiteral("week");
    case Bucket::Older:
        return QStringLiteral("older");
    }
    Q_UNREACHABLE();
}

QString bucketLabel(Bucket bucket)
{
    const auto translated = [](const char *text) {
        return QCoreApplication::translate("SidebarNav", text);
    };
    switch (bucket) {
    case Bucket::Today:
        return translated("Today");
    case Bucket::Yesterday:
        return translated("Yesterday");
    case Bucket::Week:
        return translated("Previous 7 Days");
    case Bucket::Older:
        return translated("Older");
    }
    Q_UNREACHABLE();
}

HistoryCalendar::HistoryCalendar(const QDateTime &now, const QTimeZone &zone)
    : m_now(now.toMSecsSinceEpoch())
{
    const QDate today = now.toTimeZone(zone).date();
    const auto start = [&](int days) {
        return today.addDays(days).startOfDay(zone).toMSecsSinceEpoch();
    };
    m_yesterday = start(-1);
    m_today = start(0);
    m_tomorrow = start(1);
}

Bucket HistoryCalendar::bucketOf(qint64 moment) const
{
    if (moment >= m_today && moment < m_tomorrow)
        return Bucket::Today;
    if (moment >= m_yesterday && moment < m_today)
        return Bucket::Yesterday;
    return m_now - moment < week ? Bucket::Week : Bucket::Older;
}

qint64 HistoryCalendar::nextChange(qint64 moment) const
{
    const qint64 seventh = moment + week;
    return seventh > m_now ? std::min(seventh, m_tomorrow) : m_tomorrow;
}

std::optional<qint64> internetDateTime(QStringView text)
{
    Reader reader(text);
    const QDate date = readDate(reader);
    reader.expect(u'T');
    const QTime time = readTime(reader);
    const int offset = readZone(reader);
    if (!reader.isGood() || !reader.isAtEnd() || !date.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(date, time, Qt::UTC).toMSecsSinceEpoch() - offset * 1000LL;
}

QList<HistoryBucket> groupConversations(const QList<service::ConversationSummary> &conversations,
                                        const QDateTime &now, const QTimeZone &zone)
{
    const HistoryCalendar calendar(now, zone);
    std::array<QList<service::ConversationSummary>, allBuckets.size()> items;
    for (const auto &conversation : conversations) {
        const qint64 began =
            internetDateTime(conversation.createdAt).value_or(now.toMSecsSinceEpoch());
        items.at(static_cast<std::size_t>(calendar.bucketOf(began))).append(conversation);
    }
    QList<HistoryBucket> buckets;
    for (const Bucket bucket : allBuckets) {
        auto &own = items.at(static_cast<std::size_t>(bucket));
        if (!own.isEmpty())
            buckets.append({bucketId(bucket), bucketLabel(bucket), std::move(own)});
    }
    return buckets;
}

} // namespace velto::shell
