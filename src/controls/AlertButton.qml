// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A button of an alert. Which one has the keyboard shows at once, since Return presses it.
PressableButton {
    id: root

    required property string role

    implicitHeight: Math.max(32, text.implicitHeight + 12)

    Rectangle {
        anchors.fill: parent
        border.color: Tokens.accent
        border.width: root.activeFocus ? 2 : 0
        color: Tokens.faded(root.role === "destructive" ? Tokens.failure : Tokens.primary, root.hovered ? 0.14 : 0.08)
        radius: root.radius
    }
    Text {
        id: text

        anchors.fill: parent
        color: root.role === "destructive" ? Tokens.failure : Tokens.primary
        elide: Text.ElideRight
        font.pixelSize: Tokens.body
        font.weight: Font.Medium
        horizontalAlignment: Text.AlignHCenter
        leftPadding: Tokens.spaceSmall
        rightPadding: Tokens.spaceSmall
        text: root.label
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
    }
}
