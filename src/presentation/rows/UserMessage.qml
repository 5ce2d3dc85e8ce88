// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// The user's turn: a bubble on the trailing side, which version of it shows, and when it was
/// written.
Item {
    id: root

    required property string text
    required property date createdAt
    required property int branchCount
    required property int activeBranch
    required property bool isStreaming
    required property bool isReadOnly
    required property bool isSettled

    signal editRequested
    signal branchRequested(int index)

    readonly property real bubbleInset: 60
    readonly property real horizontalPadding: 16
    readonly property real verticalPadding: 11

    implicitHeight: below.y + below.height

    HoverHandler {
        id: pointer
    }
    Loader {
        active: !root.isReadOnly && root.isSettled
        anchors.right: bubble.left
        anchors.rightMargin: Tokens.spaceTiny
        sourceComponent: UserBubbleHoverEdit {
            onClicked: root.editRequested()
        }
    }
    Rectangle {
        id: bubble

        anchors.right: parent.right
        border.color: Tokens.faded(Tokens.primary, 0.05)
        color: Tokens.faded(Tokens.primary, 0.085)
        height: words.height + 2 * root.verticalPadding
        radius: 20
        width: words.width + 2 * root.horizontalPadding

        TextEdit {
            id: words

            readonly property real room: root.width - root.bubbleInset - 2 * root.horizontalPadding

            Accessible.name: ""
            Accessible.readOnly: true
            Accessible.role: Accessible.StaticText
            color: Tokens.primary
            font.pixelSize: Tokens.reading
            readOnly: true
            selectByMouse: true
            selectedTextColor: color
            selectionColor: Tokens.selection
            text: root.text
            textFormat: TextEdit.PlainText
            // Only a bubble is as wide as its text: finding that out lays out twice.
            width: Math.min(Math.ceil(implicitWidth), room)
            wrapMode: TextEdit.Wrap
            x: root.horizontalPadding
            y: root.verticalPadding
        }
    }
    Row {
        id: below

        anchors.right: parent.right
        anchors.rightMargin: 4
        height: Math.max(navigator.active ? 18 : 0, stamp.height)
        y: bubble.height + 4
        spacing: Tokens.spaceSmall

        Loader {
            id: navigator

            active: root.branchCount >= 2
            anchors.verticalCenter: parent.verticalCenter
            sourceComponent: BranchNavigator {
                current: root.activeBranch
                disabled: root.isStreaming || root.isReadOnly
                total: root.branchCount

                onNext: root.branchRequested(root.activeBranch + 1)
                onPrev: root.branchRequested(root.activeBranch - 1)
            }
            visible: active
        }
        TimestampLabel {
            id: stamp

            anchors.verticalCenter: parent.verticalCenter
            date: root.createdAt
            opacity: pointer.hovered ? 1 : 0.001

            Behavior on opacity {
                NumberAnimation {
                    duration: Tokens.quick
                    easing.type: Easing.OutQuad
                }
            }
        }
    }
}
