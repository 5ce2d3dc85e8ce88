// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Brings a list of messages back to its end.
IconButton {
    id: root

    required property MessageList messages

    readonly property bool shown: messages.isAway

    fill: Tokens.surface
    help: qsTr("Jump to latest message")
    ink: Tokens.primary
    label: qsTr("Jump to latest")
    opacity: shown ? 1 : 0
    outline: Tokens.hairline
    scale: shown ? 1 : 0.6
    size: 36
    symbol: "arrow.down"
    symbolSize: 13
    visible: opacity > 0

    onClicked: messages.jumpToLatest()

    Behavior on opacity {
        NumberAnimation {
            duration: Tokens.quick
        }
    }
    Behavior on scale {
        NumberAnimation {
            duration: Tokens.quick
            easing.type: Easing.OutQuad
        }
    }
}
