// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/message.h"
#include "service/records.h"

#include <QList>

namespace velto::chat
{

/// The messages of a conversation that the service keeps, as the chat shows them. Messages of other
/// roles than user and assistant, parts of unknown type and messages left with no parts are
/// dropped; a stored tool call shows as completed.
[[nodiscard]] QList<ChatMessage> chatMessagesFrom(const QList<service::StoredUIMessage> &stored);

} // namespace velto::chat
