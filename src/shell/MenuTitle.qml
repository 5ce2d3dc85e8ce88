// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A title in the menu bar. Takes no focus, so that what the menu's commands are about keeps it.
Item {
    id: root

    required property string title
    required property bool isOpen

    signal pressed
    signal hoverMoved

    Accessible.name: title
    Accessible.onPressAction: pressed()
    Accessible.role: Accessible.MenuItem
    implicitWidth: label.implicitWidth + 2 * 9

    Rectangle {
        anchors.fill: parent
        anchors.margins: 3
        color: Tokens.faded(Tokens.primary, root.isOpen ? 0.12 : 0.06)
        radius: Tokens.radiusSmall - 2
        visible: root.isOpen || hover.hovered
    }
    Text {
        id: label

        anchors.centerIn: parent
        color: Tokens.secondary
        font.pixelSize: Tokens.caption
        text: root.title
        textFormat: Text.PlainText
    }
    HoverHandler {
        id: hover

        onHoveredChanged: {
            if (hovered)
                root.hoverMoved();
        }
    }
    TapHandler {
        onTapped: root.pressed()
    }
}
