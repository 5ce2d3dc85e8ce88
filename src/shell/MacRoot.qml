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

    /// What is shown over the window from elsewhere; each has a `toggle` function.
    property var searchPalette: null
    property var spotlight: null

    function loadMenus(): void {
        menus.setSource("WindowMenus.qml", {root});
    }

    anchors.fill: parent

    // Commands and menus are read in once a frame has shown what is behind them.
    Loader {
        id: menus

        anchors.left: parent.left
        anchors.right: parent.right
        height: Math.round(28 * Tokens.textScale)
    }
    Connections {
        function onFrameSwapped(): void {
            Qt.callLater(root.loadMenus); // no part of that frame
        }

        enabled: menus.status === Loader.Null
        target: root.Window.window
    }
    ContentView {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: root.hasMenuBar ? menus.bottom : parent.top
        appState: root.appState
        focus: true
    }
}
