// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Presentation

/// What can be done with the answer in this row.
AssistantActionsRow {
    required property AssistantMessage answer

    currentVote: answer.vote
    isLast: answer.isLast
    isStreaming: answer.isStreaming
    messageRow: answer.messageRow
    messages: answer.messages

    onContinueRequested: answer.continueRequested()
    onFeedback: vote => answer.setVote(vote)
    onRegenerateRequested: answer.regenerateRequested()
}
