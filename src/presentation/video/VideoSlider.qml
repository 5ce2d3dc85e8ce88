// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick

/// Chooses a number with the pointer, the arrow keys, Home and End.
// Colours of its own: it lies over a picture.
Item {
    id: root

    required property string label
    /// What the value is called, such as a time.
    property string help
    property real value: 0
    property real minimumValue: 0
    property real maximumValue: 1
    property real stepSize: 0.1

    readonly property real share: maximumValue > minimumValue ? Math.min(1, Math.max(0, (value - minimumValue) / (maximumValue - minimumValue))) : 0

    signal moved(real value)

    function move(value: real): void {
        moved(Math.min(maximumValue, Math.max(minimumValue, value)));
    }

    Accessible.description: help
    Accessible.focusable: true
    Accessible.name: label
    Accessible.onDecreaseAction: move(value - stepSize)
    Accessible.onIncreaseAction: move(value + stepSize)
    Accessible.role: Accessible.Slider
    Keys.onDownPressed: move(value - stepSize)
    Keys.onLeftPressed: move(value - stepSize)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
        if (event.accepted)
            move(event.key === Qt.Key_Home ? minimumValue : maximumValue);
    }
    Keys.onRightPressed: move(value + stepSize)
    Keys.onUpPressed: move(value + stepSize)
    activeFocusOnTab: true
    implicitHeight: 22
    implicitWidth: 60

    Rectangle {
        id: track

        anchors.verticalCenter: parent.verticalCenter
        color: "white"
        height: 3
        opacity: 0.35
        radius: height / 2
        width: parent.width
    }
    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        color: "white"
        height: track.height
        radius: track.radius
        width: knob.x + knob.width / 2
    }
    Rectangle {
        id: knob

        anchors.verticalCenter: parent.verticalCenter
        color: "white"
        height: width
        radius: width / 2
        width: 11
        x: root.share * (root.width - width)
    }
    Rectangle {
        anchors.centerIn: knob
        border.color: "white"
        border.width: 2
        color: "transparent"
        height: width
        radius: width / 2
        visible: root.activeFocus
        width: knob.width + 8
    }
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true

        function choose(x: real): void {
            const share = (x - knob.width / 2) / Math.max(1, width - knob.width);
            root.move(root.minimumValue + share * (root.maximumValue - root.minimumValue));
        }

        onPositionChanged: mouse => {
            if (pressed)
                choose(mouse.x);
        }
        onPressed: mouse => choose(mouse.x)
    }
}
