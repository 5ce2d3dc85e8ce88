// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace velto::base
{

/// Writes "[source] text" and a line end to standard output and flushes it, so that a reader of a
/// pipe sees the line when it happens. Any thread.
void logLine(QLatin1StringView source, const QString &text);

/// How a token may appear in a log: "…" and its last 8 characters, or fewer if it is shorter.
[[nodiscard]] QString tokenTail(const QString &token);

} // namespace velto::base
