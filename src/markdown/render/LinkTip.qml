// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Says where the link under the pointer leads, once the pointer rests.
Rectangle {
    id: root

    required property string link
    required property point point
    /// How wide what it lies over is.
    required property real room

    border.color: Tokens.hairline
    color: Tokens.surface
    height: target.implicitHeight + Tokens.spaceSmall
    radius: Tokens.radiusSmall
    visible: false
    width: target.width + 2 * Tokens.spaceSmall
    x: Math.max(0, Math.min(point.x, room - width))
    y: point.y + Tokens.spaceLarge

    onLinkChanged: {
        visible = false;
        rest.restart();
    }

    Timer {
        id: rest

        interval: 500
        running: true
        onTriggered: root.visible = true
    }
    Text {
        id: target

        anchors.centerIn: parent
        color: Tokens.primary
        elide: Text.ElideMiddle
        font.pixelSize: Tokens.caption
        text: root.link
        textFormat: Text.PlainText
        width: Math.min(implicitWidth, root.room - 2 * Tokens.spaceSmall)
    }
}
