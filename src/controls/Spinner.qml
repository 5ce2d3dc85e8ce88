// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Says that something is under way. Moves, and costs, only while it shows.
Item {
    id: root

    property real size: 16
    readonly property int spokes: 8
    property int step: 0

    implicitHeight: size
    implicitWidth: size

    Accessible.name: qsTr("Loading…")
    Accessible.role: Accessible.Animation

    Timer {
        interval: 100
        repeat: true
        running: root.visible
        onTriggered: root.step = (root.step + 1) % root.spokes
    }
    Repeater {
        model: root.spokes

        Rectangle {
            required property int index

            antialiasing: true
            color: Tokens.secondary
            height: root.size * 0.28
            opacity: 0.15 + 0.85 * ((index - root.step + root.spokes) % root.spokes) / root.spokes
            radius: width / 2
            width: Math.max(1.5, root.size * 0.09)
            x: (root.size - width) / 2
            y: 0

            transform: Rotation {
                angle: index * 360 / root.spokes
                origin.x: width / 2
                origin.y: root.size / 2
            }
        }
    }
}
