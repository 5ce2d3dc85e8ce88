// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/log.h"

#include <cstdio>

namespace velto::base
{

void logLine(QLatin1StringView source, const QString &text)
{
    const QByteArray line =
        '[' + QByteArray(source.data(), source.size()) + "] " + text.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}

QString tokenTail(const QString &token)
{
    return u'…' + token.right(8);
}

} // namespace velto::base
