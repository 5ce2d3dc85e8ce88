// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/urlopener.h"

namespace velto::platform
{
namespace
{

bool isForTheDesktop(const QUrl &url)
{
    const QString scheme = url.scheme();
    if (scheme == u"mailto")
        return true;
    return (scheme == u"http" || scheme == u"https") && !url.host().isEmpty();
}

} // namespace

URLOpener::URLOpener(std::unique_ptr<URLLauncher> launcher)
    : m_launcher(std::move(launcher))
{}

void URLOpener::setOwnSchemeHandler(OwnSchemeHandler handler)
{
    m_ownSchemeHandler = std::move(handler);
}

QCoro::Task<bool> URLOpener::openURL(QUrl url)
{
    if (!url.isValid())
        co_return false;
    if (url.scheme() == ownScheme) {
        if (!m_ownSchemeHandler)
            co_return false;
        m_ownSchemeHandler(url);
        co_return true;
    }
    if (!isForTheDesktop(url))
        co_return false;
    co_return co_await m_launcher->launch(url);
}

} // namespace velto::platform
