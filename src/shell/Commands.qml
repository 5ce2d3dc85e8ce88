// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Presentation

/// The commands that have a key wherever the focus is.
Item {
    id: root

    required property AppState appState

    Shortcut {
        sequence: "Ctrl+N"

        onActivated: {
            root.appState.newConversation();
            root.appState.requestInputFocus();
        }
    }
    Shortcut {
        sequence: "Ctrl+L"

        onActivated: root.appState.requestInputFocus()
    }
    Shortcut {
        enabled: root.appState.isStreaming
        sequence: "Ctrl+."

        onActivated: root.appState.stopStreaming()
    }
}
