// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A section of the program that stands below the history.
PressableButton {
    id: root

    required property string symbol
    required property bool isCurrent

    Accessible.selectable: true
    Accessible.selected: isCurrent
    implicitHeight: text.implicitHeight + 2 * 7
    radius: 8

    Rectangle {
        anchors.fill: parent
        color: Tokens.faded(Tokens.primary, root.isCurrent ? 0.08 : root.hovered ? 0.04 : 0)
        radius: root.radius
    }
    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        color: Tokens.primary
        name: root.symbol
        size: Tokens.body
        x: Tokens.spaceSmall + (18 - width) / 2
    }
    Text {
        id: text

        anchors.left: parent.left
        anchors.leftMargin: Tokens.spaceSmall + 18 + Tokens.spaceSmall
        anchors.right: parent.right
        anchors.rightMargin: Tokens.spaceSmall
        anchors.verticalCenter: parent.verticalCenter
        color: Tokens.primary
        elide: Text.ElideRight
        font.pixelSize: Tokens.body
        text: root.label
        textFormat: Text.PlainText
    }
}
