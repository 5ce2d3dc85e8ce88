// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDateTime>
#include <QString>

namespace velto::presentation
{

/// How long ago `date` was, seen from `now`: "Just now" (also for what is yet to come), "5m ago",
/// "3h ago"; from a day on the date and the time.
[[nodiscard]] QString relativeTimestamp(const QDateTime &date, const QDateTime &now);

/// Short date and short time, as the desktop writes them.
[[nodiscard]] QString shortTimestamp(const QDateTime &date);

} // namespace velto::presentation
