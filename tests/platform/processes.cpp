// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "processes.h"

#include <QDir>
#include <QFile>
#include <QStringList>

namespace velto::test
{
namespace
{

/// State, parent and so on; empty when there is no such process.
QList<QByteArray> statusOf(const QString &process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QFile::ReadOnly))
        return {};
    const QByteArray line = file.readAll();
    return line.mid(line.lastIndexOf(')') + 2).split(' ');
}

} // namespace

QList<qint64> childrenOf(qint64 parent)
{
    QList<qint64> found;
    const QStringList all =
        QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs);
    for (const QString &process : all) {
        const QList<QByteArray> status = statusOf(process);
        if (status.size() > 1 && status.at(1).toLongLong() == parent)
            found.append(process.toLongLong());
    }
    return found;
}

bool isRunning(qint64 process)
{
    const QList<QByteArray> status = statusOf(QString::number(process));
    return !status.isEmpty() && status.first() != "Z" && status.first() != "X";
}

} // namespace velto::test
