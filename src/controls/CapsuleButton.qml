// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A mark and one line of text in a capsule.
PressableButton {
    id: root

    required property string symbol

    bottomPadding: 7
    leftPadding: 12
    radius: height / 2
    rightPadding: 12
    topPadding: 7

    background: Rectangle {
        border.color: Tokens.hairline
        color: root.hovered ? Tokens.faded(Tokens.primary, 0.07) : Tokens.surface
        radius: root.radius
    }
    contentItem: Item {
        implicitHeight: text.implicitHeight
        implicitWidth: mark.implicitWidth + Tokens.spaceSmall + text.implicitWidth

        Symbol {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            color: Tokens.secondary
            name: root.symbol
        }
        Text {
            id: text

            anchors.left: mark.right
            anchors.leftMargin: Tokens.spaceSmall
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            color: Tokens.primary
            elide: Text.ElideRight
            font.pixelSize: Tokens.body
            maximumLineCount: 1
            text: root.label
            textFormat: Text.PlainText
        }
    }
}
