// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Where the user writes, attaches files, sends and stops. What may be sent is not decided here.
FocusScope {
    id: root

    required property string draft
    required property bool canSend
    required property bool isStreaming
    required property Attachments attachments
    /// What it may take of the window at most.
    property real maximumHeight: 10000

    signal edited(string text)
    signal sendRequested
    signal stopRequested

    function focusInput(): void {
        field.input.forceActiveFocus(Qt.OtherFocusReason);
    }

    implicitHeight: card.height + 14
    implicitWidth: 720

    onIsStreamingChanged: {
        if (isStreaming)
            bounce.restart();
    }

    Rectangle {
        id: card

        anchors.left: parent.left
        anchors.leftMargin: 14
        anchors.right: parent.right
        anchors.rightMargin: 14
        border.color: files.containsDrag ? Tokens.accent : Tokens.faded(Tokens.primary, 0.08)
        border.width: files.containsDrag ? 2 : 1
        color: Tokens.surface
        height: Math.max(field.height, 30) + 2 * 10
        radius: 22

        SoftShadow {}
        IconButton {
            id: attach

            anchors.bottom: parent.bottom
            anchors.bottomMargin: 10
            anchors.left: parent.left
            anchors.leftMargin: 14
            fill: Tokens.faded(Tokens.primary, 0.06)
            help: qsTr("Attach file")
            ink: Tokens.faded(Tokens.primary, 0.7)
            label: qsTr("Attach file")
            outline: Tokens.faded(Tokens.primary, 0.06)
            size: 30
            symbol: "plus"
            symbolSize: 14

            onClicked: root.attachments.choose(root.Window.window)
        }
        DraftInput {
            id: field

            anchors.left: attach.right
            anchors.leftMargin: 8
            anchors.right: button.left
            anchors.rightMargin: 8
            attachments: root.attachments
            draft: root.draft
            height: implicitHeight
            maximumHeight: root.maximumHeight - 14 - 2 * 10
            y: card.height - 10 - height

            onEdited: text => root.edited(text)
            onSendRequested: root.sendRequested()
        }
        // What is above or below the lines that show.
        Rectangle {
            anchors.left: field.right
            anchors.leftMargin: 2
            color: Tokens.faded(Tokens.primary, 0.25)
            height: Math.max(14, field.visibleArea.heightRatio * field.height)
            radius: width / 2
            visible: field.contentHeight > field.height
            width: 4
            y: field.y + field.visibleArea.yPosition / (1 - field.visibleArea.heightRatio) * (field.height - height)
        }
        IconButton {
            id: button

            readonly property bool lit: root.isStreaming || root.canSend

            anchors.bottom: parent.bottom
            anchors.bottomMargin: 10
            anchors.right: parent.right
            anchors.rightMargin: 14
            enabled: lit
            fill: lit ? Tokens.accent : Tokens.faded(Tokens.secondary, 0.35)
            help: root.isStreaming ? qsTr("Stop generating (Esc)") : qsTr("Send (Enter)")
            ink: lit ? Tokens.onAccent : Tokens.faded("white", 0.6)
            label: root.isStreaming ? qsTr("Stop") : qsTr("Send")
            size: 30
            symbol: root.isStreaming ? "stop.fill" : "arrow.up"
            symbolSize: root.isStreaming ? 13 : 14

            transform: Scale {
                id: bouncing

                origin.x: 15
                origin.y: 15
                yScale: xScale
            }

            onClicked: {
                if (root.isStreaming)
                    root.stopRequested();
                else
                    root.sendRequested();
            }

            Behavior on fill {
                ColorAnimation {
                    duration: Tokens.quick
                    easing.type: Easing.OutQuad
                }
            }
        }
        DropArea {
            id: files

            anchors.fill: parent
            keys: ["text/uri-list"]

            onDropped: drop => {
                root.attachments.attach(drop.urls);
                drop.accept(Qt.CopyAction); // the file stays where it was
            }
            onEntered: drag => drag.accepted = root.attachments.hasFiles(drag.urls)
        }
    }
    SequentialAnimation {
        id: bounce

        NumberAnimation {
            duration: 110
            easing.type: Easing.OutQuad
            property: "xScale"
            target: bouncing
            to: 1.16
        }
        NumberAnimation {
            duration: 260
            easing.type: Easing.OutBack
            property: "xScale"
            target: bouncing
            to: 1
        }
    }
}
