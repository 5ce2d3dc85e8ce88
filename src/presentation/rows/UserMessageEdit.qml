// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Presentation

/// Begins to edit the question of this row.
UserBubbleHoverEdit {
    required property UserMessage message

    onClicked: message.editRequested()
}
