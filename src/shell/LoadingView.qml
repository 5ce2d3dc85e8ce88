// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Waits for the session. Messages that are there already can be read meanwhile, below the spinner.
Item {
    id: root

    required property MessageListModel messages
    required property bool showsMessages

    readonly property bool hasMessages: showsMessages && messages.count > 0

    Column {
        id: status

        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 12
        y: root.hasMessages ? 36 : (root.height - height) / 2

        Spinner {
            Accessible.ignored: true
            anchors.horizontalCenter: parent.horizontalCenter
            size: 28
        }
        Label {
            color: Tokens.secondary
            font.pixelSize: 13 * Tokens.textScale
            text: qsTr("Loading…")
        }
    }
    Loader {
        active: root.hasMessages
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: status.bottom
        anchors.topMargin: Tokens.spaceMedium
        sourceComponent: MessageList {
            messages: root.messages
            readOnly: true
        }
    }
}
