// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Presentation

/// The question of this row while it is rewritten.
UserMessageEditor {
    required property MessageRow message

    text: message.userText

    // The editor may be gone with that.
    onAccepted: text => message.edited(text)
    onCancelled: message.editingEnded()
}
