// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/urllauncher.h"

#include <QList>
#include <QStringList>

#include <chrono>

namespace velto::platform
{

/// Starts "xdg-open", or a browser from $BROWSER, and looks at how it ends.
///
/// QDesktopServices would start the same programs but reports success as soon as one has started,
/// and "xdg-open" starts on any machine, also where it finds no browser. It is asked only where
/// neither of the two exists.
class DesktopLauncher final : public URLLauncher
{
public:
    /// A program that still runs after `patience` counts as successful: it is then a browser that
    /// stays in the foreground.
    explicit DesktopLauncher(std::chrono::milliseconds patience = std::chrono::seconds(5))
        : m_patience(patience)
    {}

    [[nodiscard]] QCoro::Task<bool> launch(QUrl url) override;

private:
    std::chrono::milliseconds m_patience;
};

/// The commands that may open `url` on this machine, best first, from $PATH and $BROWSER.
[[nodiscard]] QList<QStringList> launchCommands(const QUrl &url);

} // namespace velto::platform
