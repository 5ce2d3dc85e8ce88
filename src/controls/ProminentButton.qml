// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// The one button of a screen or a banner that moves things on.
PressableButton {
    id: root

    property bool small: false

    bottomPadding: topPadding
    leftPadding: small ? 12 : 18
    radius: Tokens.radiusSmall
    rightPadding: leftPadding
    topPadding: small ? 5 : 9

    background: Rectangle {
        color: root.hovered ? Qt.lighter(Tokens.accent, 1.08) : Tokens.accent
        opacity: root.enabled ? 1 : 0.4
        radius: root.radius
    }
    contentItem: Text {
        color: Tokens.onAccent
        font.pixelSize: root.small ? Tokens.caption : Tokens.body
        font.weight: Font.Medium
        horizontalAlignment: Text.AlignHCenter
        text: root.label
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
    }
}
