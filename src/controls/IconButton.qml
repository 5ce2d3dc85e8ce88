// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A round or square button that shows one mark.
PressableButton {
    id: root

    required property string symbol
    property real symbolSize: Tokens.body
    property real size: 30
    property color fill: "transparent"
    property color outline: "transparent"
    property color ink: Tokens.secondary

    implicitHeight: size
    implicitWidth: size
    radius: size / 2

    Rectangle {
        anchors.fill: parent
        border.color: root.outline
        border.width: root.outline.a > 0 ? 1 : 0
        color: root.fill
        radius: root.radius
    }
    Rectangle {
        anchors.fill: parent
        color: Tokens.faded(Tokens.primary, 0.07)
        radius: root.radius
        visible: root.hovered
    }
    Symbol {
        anchors.centerIn: parent
        color: root.ink
        name: root.symbol
        size: root.symbolSize
    }
}
