// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/displaytitle.h"

#include <QCoreApplication>

namespace velto::shell
{

QString displayTitle(const service::ConversationSummary &conversation)
{
    for (const auto &text : {conversation.title, conversation.summary}) {
        if (text && !text->isEmpty())
            return *text;
    }
    return QCoreApplication::translate("SidebarNav", "New chat");
}

} // namespace velto::shell
