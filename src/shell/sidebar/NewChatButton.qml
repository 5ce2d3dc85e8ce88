// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

PressableButton {
    id: root

    help: qsTr("New chat (Ctrl+N)")
    implicitHeight: text.implicitHeight + 2 * 7
    label: qsTr("New chat")
    radius: Tokens.radiusSmall + 1

    Rectangle {
        anchors.fill: parent
        color: Tokens.faded(Tokens.primary, root.hovered ? 0.1 : 0.06)
        radius: root.radius
    }
    Symbol {
        id: mark

        anchors.verticalCenter: parent.verticalCenter
        color: Tokens.primary
        name: "square.and.pencil"
        size: 14 * Tokens.textScale
        x: 10
    }
    Text {
        id: text

        anchors.left: mark.right
        anchors.leftMargin: Tokens.spaceSmall
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        color: Tokens.primary
        elide: Text.ElideRight
        font.pixelSize: Tokens.body
        font.weight: Font.Medium
        text: root.label
        textFormat: Text.PlainText
    }
}
