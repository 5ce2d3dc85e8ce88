// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/deeplinks.h"

#include "chat/appstate.h"

#include <utility>

namespace velto::shell
{

void DeepLinks::open(const QList<QUrl> &links)
{
    if (!m_begun) {
        m_waiting += links;
        return;
    }
    for (const QUrl &link : links)
        m_state.handleDeepLink(link);
}

void DeepLinks::begin()
{
    m_begun = true;
    open(std::exchange(m_waiting, {}));
}

} // namespace velto::shell
