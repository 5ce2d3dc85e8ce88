// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/urllauncher.h"

#include <functional>

namespace velto::platform
{

/// The scheme of velto's own links.
inline constexpr QLatin1StringView ownScheme{"ltd.orbax.velto"};

/// The one way out of the program for a link, and the place that decides which links have one:
/// http, https and mailto go to the desktop, velto's own scheme to its handler, and nothing else
/// goes anywhere. Main thread.
class URLOpener final
{
public:
    using OwnSchemeHandler = std::function<void(QUrl)>;

    explicit URLOpener(std::unique_ptr<URLLauncher> launcher = makeSystemURLLauncher());

    void setOwnSchemeHandler(OwnSchemeHandler handler);

    /// True once the URL is in somebody's hands; false when it is refused or nothing could open it.
    [[nodiscard]] QCoro::Task<bool> openURL(QUrl url);

private:
    std::unique_ptr<URLLauncher> m_launcher;
    OwnSchemeHandler m_ownSchemeHandler;
};

} // namespace velto::platform
