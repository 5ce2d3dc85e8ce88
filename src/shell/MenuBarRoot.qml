// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation
import Velto.Shell

/// The small window behind the icon in the panel: the same chat as in the main window.
Window {
    id: root

    required property AppState appState

    color: Tokens.background
    flags: Qt.Tool
    height: 580
    minimumHeight: 480
    minimumWidth: 380
    title: qsTr("Chat with velto")
    width: 420

    Component.onCompleted: appState.startBootstrap()

    ContentView {
        anchors.fill: parent
        appState: root.appState
        focus: true
        loadsProfile: false
        signedInScreen: "ChatSection.qml"

        Keys.onEscapePressed: event => {
            event.accepted = !root.appState.isStreaming;
            if (event.accepted)
                root.close();
        }
    }
}
