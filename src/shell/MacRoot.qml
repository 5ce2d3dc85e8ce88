// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation
import Velto.Shell

/// What fills the main window: the menu bar and the root screen. Signing in has the window to
/// itself; the commands keep their keys there.
FocusScope {
    id: root

    required property AppState appState

    readonly property bool hasMenuBar: appState.authStatus !== AuthStatus.LoggedOut

    Commands {
        id: commands

        appState: root.appState
    }
    AppMenuBar {
        id: menuBar
        objectName: "menuBar"

        anchors.left: parent.left
        anchors.right: parent.right
        menus: commands.menus
        visible: root.hasMenuBar
    }
    ContentView {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: root.hasMenuBar ? menuBar.bottom : parent.top
        appState: root.appState
        focus: true
    }
}
