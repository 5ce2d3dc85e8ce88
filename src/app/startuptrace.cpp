// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "startuptrace.h"

#include <QFile>
#include <QQuickWindow>

#include <cstdio>
#include <ctime>
#include <unistd.h>

namespace velto::app
{

namespace
{

constexpr qint64 startTimeField = 22; // of /proc/<pid>/stat, in ticks since the machine started

qint64 millisecondsSinceBoot()
{
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return qint64(now.tv_sec) * 1000 + now.tv_nsec / 1'000'000;
}

qint64 processStart()
{
    QFile file(QStringLiteral("/proc/self/stat"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    // The program's name, the second field, may hold blanks; it ends with the last bracket.
    const QByteArray line = file.readAll();
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    return fields.value(startTimeField - 3).toLongLong() * 1000 / sysconf(_SC_CLK_TCK);
}

} // namespace

void traceFirstFrame(QQuickWindow &window)
{
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window,
        [] {
            std::printf("[app] first frame after %lld ms\n",
                        static_cast<long long>(millisecondsSinceBoot() - processStart()));
            std::fflush(stdout);
        },
        static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
}

} // namespace velto::app
