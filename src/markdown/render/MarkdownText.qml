// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Markdown

/// Markdown that shows where a link leads while the pointer rests on it.
Markdown {
    id: root

    height: implicitHeight

    onHoveredLinkChanged: {
        tip.shown = false;
        rest.restart();
    }

    Timer {
        id: rest

        interval: 500
        onTriggered: tip.shown = root.hoveredLink !== ""
    }
    Rectangle {
        id: tip

        property bool shown: false

        border.color: Tokens.hairline
        color: Tokens.surface
        height: target.implicitHeight + Tokens.spaceSmall
        radius: Tokens.radiusSmall
        visible: shown
        width: target.width + 2 * Tokens.spaceSmall
        x: Math.max(0, Math.min(root.hoveredPoint.x, root.width - width))
        y: root.hoveredPoint.y + Tokens.spaceLarge
        z: 2

        Text {
            id: target

            anchors.centerIn: parent
            color: Tokens.primary
            elide: Text.ElideMiddle
            font.pixelSize: Tokens.caption
            text: root.hoveredLink
            textFormat: Text.PlainText
            width: Math.min(implicitWidth, root.width - 2 * Tokens.spaceSmall)
        }
    }
}
