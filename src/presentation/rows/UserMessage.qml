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

        Component.onCompleted: setSource("UserMessageEdit.qml", {message: root})
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
    Loader {
        id: below

        active: root.isSettled
        anchors.right: parent.right
        anchors.rightMargin: 4
        height: Math.max(root.branchCount >= 2 ? 18 : 0, Math.ceil(14 * Tokens.textScale))
        y: bubble.height + 4

        Component.onCompleted: setSource("UserMessageFooter.qml", {hovered: Qt.binding(() => pointer.hovered), message: root})
    }
}
