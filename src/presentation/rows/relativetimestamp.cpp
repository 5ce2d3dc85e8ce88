// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/rows/relativetimestamp.h"

#include <QCoreApplication>
#include <QLocale>

namespace velto::presentation
{

QString relativeTimestamp(const QDateTime &date, const QDateTime &now)
{
    constexpr qint64 minute = 60'000;
    constexpr qint64 hour = 60 * minute;
    constexpr qint64 day = 24 * hour;
    const qint64 elapsed = date.msecsTo(now);
    const auto translated = [](const char *text) {
        return QCoreApplication::translate("TimestampLabel", text);
    };
    if (elapsed < minute)
        return translated("Just now");
    if (elapsed < hour)
        return translated("%1m ago").arg(elapsed / minute);
    if (elapsed < day)
        return translated("%1h ago").arg(elapsed / hour);
    return shortTimestamp(date);
}

QString shortTimestamp(const QDateTime &date)
{
    return QLocale::system().toString(date.toLocalTime(), QLocale::ShortFormat);
}

} // namespace velto::presentation
