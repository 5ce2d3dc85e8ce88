// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// The line that opens and closes what is below it.
PressableButton {
    id: root

    required property bool expanded
    default property alias marks: line.data

    Accessible.checkable: true
    Accessible.checked: expanded
    implicitHeight: line.implicitHeight + 2 * 2
    implicitWidth: line.x + line.implicitWidth + 4

    Rectangle {
        anchors.fill: parent
        color: Tokens.faded(Tokens.primary, 0.05)
        radius: root.radius
        visible: root.hovered
    }
    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        color: Tokens.secondary
        name: "chevron.right"
        rotation: root.expanded ? 90 : 0
        size: 10
        x: 4

        Behavior on rotation {
            NumberAnimation {
                duration: Tokens.quick
                easing.type: Easing.InOutQuad
            }
        }
    }
    Row {
        id: line

        anchors.verticalCenter: parent.verticalCenter
        spacing: 6
        x: 4 + 10 + 6
    }
}
