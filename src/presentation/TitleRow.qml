// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// The line above the chat: the model picker and, where there is one, the conversation's title.
/// Takes no room while it isn't shown.
Item {
    id: root

    required property AppState appState
    required property string title
    required property bool shown

    implicitHeight: shown ? row.height + 4 + 10 : 0
    opacity: shown ? 1 : 0
    visible: opacity > 0

    Behavior on opacity {
        NumberAnimation {
            duration: 280
            easing.type: Easing.OutQuad
        }
    }

    Item {
        id: row

        anchors.left: parent.left
        anchors.leftMargin: 20
        anchors.right: parent.right
        anchors.rightMargin: 20
        height: Math.max(picker.height, label.height)
        y: 4

        Loader {
            id: picker

            active: root.visible
            anchors.verticalCenter: parent.verticalCenter
            sourceComponent: ModelPicker {
                appState: root.appState
            }
        }
        Label {
            id: label

            Accessible.ignored: text === ""
            anchors.left: picker.right
            anchors.leftMargin: 12
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            color: Tokens.secondary
            elide: Text.ElideRight
            font.pixelSize: 12 * Tokens.textScale
            maximumLineCount: 1
            text: root.title
        }
    }
}
