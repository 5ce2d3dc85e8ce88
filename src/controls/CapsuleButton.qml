// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A mark and one line of text in a capsule.
PressableButton {
    id: root

    required property string symbol

    implicitHeight: text.implicitHeight + 2 * 7
    implicitWidth: mark.implicitWidth + Tokens.spaceSmall + text.implicitWidth + 2 * 12
    radius: height / 2

    Rectangle {
        anchors.fill: parent
        border.color: Tokens.hairline
        color: root.hovered ? Tokens.faded(Tokens.primary, 0.07) : Tokens.surface
        radius: root.radius
    }
    Symbol {
        id: mark

        anchors.verticalCenter: parent.verticalCenter
        color: Tokens.secondary
        name: root.symbol
        x: 12
    }
    Text {
        id: text

        anchors.left: mark.right
        anchors.leftMargin: Tokens.spaceSmall
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        color: Tokens.primary
        elide: Text.ElideRight
        font.pixelSize: Tokens.body
        maximumLineCount: 1
        text: root.label
        textFormat: Text.PlainText
    }
}
