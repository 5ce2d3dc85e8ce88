// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// The one button of a screen or a banner that moves things on.
PressableButton {
    id: root

    property bool small: false

    implicitHeight: text.implicitHeight + 2 * (small ? 5 : 9)
    implicitWidth: text.implicitWidth + 2 * (small ? 12 : 18)

    Rectangle {
        anchors.fill: parent
        color: root.hovered ? Qt.lighter(Tokens.accent, 1.08) : Tokens.accent
        opacity: root.enabled ? 1 : 0.4
        radius: root.radius
    }
    Text {
        id: text

        anchors.centerIn: parent
        color: Tokens.onAccent
        font.pixelSize: root.small ? Tokens.caption : Tokens.body
        font.weight: Font.Medium
        text: root.label
        textFormat: Text.PlainText
    }
}
