// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/records.h"

namespace velto::shell
{

/// What a conversation is called wherever it is listed: its title, else its summary, else
/// "New chat". An empty text counts as none.
[[nodiscard]] QString displayTitle(const service::ConversationSummary &conversation);

} // namespace velto::shell
