// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Presentation
import Velto.Shell

/// What a signed-in user has before them.
FocusScope {
    id: root

    required property AppState appState

    Commands {
        appState: root.appState
    }
    ChatView {
        anchors.fill: parent
        appState: root.appState
        focus: true
    }
}
