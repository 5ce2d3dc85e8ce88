// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Lies over a block of code: its copy button, which shows while the pointer is over the block.
Item {
    id: root

    required property string content
    property string language

    HoverHandler {
        id: pointer
    }
    CopyButton {
        anchors.margins: 6
        anchors.right: parent.right
        anchors.top: parent.top
        copied: root.content
        label: qsTr("Copy code")
        opacity: pointer.hovered || visualFocus ? 1 : 0.001
        outline: Tokens.hairline
        fill: Tokens.surface
        radius: 5
        size: 20
        symbolSize: 10

        Behavior on opacity {
            NumberAnimation {
                duration: Tokens.quick
                easing.type: Easing.OutQuad
            }
        }
    }
}
