// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation
import Velto.Shell

/// The main window.
Window {
    id: root

    required property AppState appState

    color: Tokens.background
    height: 760
    minimumHeight: appState.authStatus === AuthStatus.LoggedOut ? 600 : 480
    minimumWidth: 480
    title: qsTr("velto")
    width: 1000

    Component.onCompleted: placement.restore()

    WindowPlacement {
        id: placement

        window: root
    }
    MacRoot {
        anchors.fill: parent
        appState: root.appState
        focus: true
    }
}
