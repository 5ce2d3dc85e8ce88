// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/desktoplauncher.h"

#include "base/oneshot.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

#include <unistd.h>

namespace velto::platform
{
namespace
{

/// One entry of $BROWSER: a command whose "%s" stands for the URL, or that takes it at its end.
QStringList browserCommand(const QString &entry, const QString &url)
{
    QStringList command = QProcess::splitCommand(entry);
    const QString placeholder = QStringLiteral("%s");
    if (command.filter(placeholder).isEmpty())
        command.append(url);
    else
        command.replaceInStrings(placeholder, url);
    return command;
}

base::OneShot<bool> start(const QStringList &command, std::chrono::milliseconds patience)
{
    base::OneShot<bool> opened;
    // Nobody owns the process: where it is the browser itself it outlives this program, and
    // destroying a QProcess would kill it.
    auto *process = new QProcess;
    process->setStandardInputFile(QProcess::nullDevice());
    // What a browser has to say may hold the URL, which must not reach our log.
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->setChildProcessModifier([] { ::setsid(); });
    QObject::connect(process, &QProcess::finished, process,
                     [opened, process](int code, QProcess::ExitStatus status) mutable {
                         process->deleteLater();
                         opened.resolve(status == QProcess::NormalExit && code == 0);
                     });
    QObject::connect(process, &QProcess::errorOccurred, process,
                     [opened, process](QProcess::ProcessError error) mutable {
                         if (error != QProcess::FailedToStart)
                             return;
                         process->deleteLater();
                         opened.resolve(false);
                     });
    QTimer::singleShot(patience, process, [opened]() mutable { opened.resolve(true); });
    process->start(command.first(), command.mid(1), QIODevice::NotOpen);
    return opened;
}

} // namespace

QList<QStringList> launchCommands(const QUrl &url)
{
    const QString text = QString::fromLatin1(url.toEncoded());
    QList<QStringList> commands;
    const QString xdgOpen = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (!xdgOpen.isEmpty())
        commands.append({xdgOpen, text});
    const QStringList browsers = qEnvironmentVariable("BROWSER").split(u':', Qt::SkipEmptyParts);
    for (const QString &entry : browsers) {
        const QStringList command = browserCommand(entry, text);
        if (!QStandardPaths::findExecutable(command.first()).isEmpty())
            commands.append(command);
    }
    return commands;
}

QCoro::Task<bool> DesktopLauncher::launch(QUrl url)
{
    const std::chrono::milliseconds patience = m_patience;
    const QList<QStringList> commands = launchCommands(url);
    for (const QStringList &command : commands) {
        const base::OneShot<bool> opened = start(command, patience);
        if (co_await opened)
            co_return true;
    }
    co_return commands.isEmpty() && QDesktopServices::openUrl(url);
}

std::unique_ptr<URLLauncher> makeSystemURLLauncher()
{
    return std::make_unique<DesktopLauncher>();
}

} // namespace velto::platform
