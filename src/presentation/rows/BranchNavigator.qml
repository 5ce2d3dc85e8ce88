// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Which version of a message shows, and the way to the others.
Item {
    id: root

    required property int current
    required property int total
    property bool disabled: false

    signal prev
    signal next

    Accessible.name: qsTr("Version %1 of %2").arg(current + 1).arg(total)
    Accessible.role: Accessible.Grouping
    enabled: !disabled
    implicitHeight: 18
    implicitWidth: line.implicitWidth
    opacity: disabled ? 0.4 : 1

    Row {
        id: line

        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        IconButton {
            enabled: root.current >= 1
            label: qsTr("Previous version")
            opacity: enabled ? 1 : 0.4
            size: 18
            symbol: "chevron.left"
            symbolSize: 10

            onClicked: root.prev()
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            color: Tokens.secondary
            font.pixelSize: 11 * Tokens.textScale
            text: "%1 / %2".arg(root.current + 1).arg(root.total)
            textFormat: Text.PlainText
        }
        IconButton {
            enabled: root.current < root.total - 1
            label: qsTr("Next version")
            opacity: enabled ? 1 : 0.4
            size: 18
            symbol: "chevron.right"
            symbolSize: 10

            onClicked: root.next()
        }
    }
}
