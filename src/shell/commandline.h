// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace velto::shell
{

/// What velto was asked for when it was started.
struct CommandLine
{
    bool showsHelp = false;
    bool showsVersion = false;
    /// Started by the session bus, which says afterwards what for: no window until then.
    bool isService = false;
    bool tracesStartup = false;
    bool tracesFrames = false;
    /// velto's own links, in order. Whether they lead anywhere is found out when they are opened.
    QList<QUrl> links = {};
    /// The first argument that isn't understood; null when all are.
    QString unknown = {};

    bool operator==(const CommandLine &) const = default;
};

/// `arguments` without the program's name.
[[nodiscard]] CommandLine parseCommandLine(const QStringList &arguments);

/// What --help prints.
[[nodiscard]] QString usage();

} // namespace velto::shell
