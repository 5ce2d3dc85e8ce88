// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A button beside the prominent one: what one may do instead.
PressableButton {
    id: root

    property bool small: false

    implicitHeight: text.implicitHeight + 2 * (small ? 5 : 9)
    implicitWidth: text.implicitWidth + 2 * (small ? 12 : 18)

    Rectangle {
        anchors.fill: parent
        border.color: Tokens.hairline
        color: Tokens.faded(Tokens.primary, root.hovered ? 0.1 : 0.05)
        opacity: root.enabled ? 1 : 0.4
        radius: root.radius
    }
    Text {
        id: text

        anchors.centerIn: parent
        color: Tokens.primary
        font.pixelSize: root.small ? Tokens.caption : Tokens.body
        text: root.label
        textFormat: Text.PlainText
    }
}
