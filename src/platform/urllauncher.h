// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoroTask>

#include <QUrl>

#include <memory>

namespace velto::platform
{

/// Hands a URL to the program that the desktop has chosen for it. Opens whatever it is given: go
/// through `URLOpener`, which knows what may be opened.
class URLLauncher
{
public:
    virtual ~URLLauncher() = default;
    /// False when no program could be started or the one that was gave up. Main thread.
    [[nodiscard]] virtual QCoro::Task<bool> launch(QUrl url) = 0;
};

/// The launcher of the system that this was built for.
[[nodiscard]] std::unique_ptr<URLLauncher> makeSystemURLLauncher();

} // namespace velto::platform
