// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// One message: the user's in a bubble on the trailing side, the assistant's plain beside its avatar.
Item {
    id: root

    required property MessageListModel messages
    required property int messageRow
    required property bool isUser

    /// The message is about to become longer than its row shows.
    signal growing

    readonly property real bubbleInset: 60
    readonly property real bubblePadding: 16
    readonly property real avatarSpace: 38
    readonly property real textWidth: isUser ? width - bubbleInset - 2 * bubblePadding : width - avatarSpace

    Accessible.name: isUser ? qsTr("You") : qsTr("velto")
    Accessible.role: Accessible.ListItem
    implicitHeight: isUser ? parts.height + 22 : Math.max(parts.height, avatar.height)

    // A list asks for the height at once.
    Component.onCompleted: parts.forceLayout()

    Rectangle {
        anchors.fill: parts
        anchors.bottomMargin: -9
        anchors.leftMargin: -root.bubblePadding
        anchors.rightMargin: -root.bubblePadding
        anchors.topMargin: -13
        border.color: Tokens.faded(Tokens.primary, 0.05)
        color: Tokens.faded(Tokens.primary, 0.085)
        radius: 20
        visible: root.isUser
    }
    Loader {
        id: avatar

        active: !root.isUser
        sourceComponent: AssistantAvatar {}
    }
    Column {
        id: parts

        spacing: Tokens.spaceMedium
        x: root.isUser ? root.width - root.bubblePadding - width : root.avatarSpace
        // A line's extra height lies below its letters.
        y: root.isUser ? 13 : 3

        Repeater {
            model: MessageParts {
                messageRow: root.messageRow
                messages: root.messages
            }

            Loader {
                id: partLoader

                required property int index
                required property bool isTool
                required property string toolName
                required property int toolState

                sourceComponent: isTool ? tool : text

                Component {
                    id: text

                    MessageText {
                        messageRow: root.messageRow
                        messages: root.messages
                        part: partLoader.index
                        // Only a bubble is as wide as its text: finding that out lays out twice.
                        width: root.isUser ? Math.min(Math.ceil(implicitWidth), root.textWidth) : root.textWidth

                        onGrowing: root.growing()
                    }
                }
                Component {
                    id: tool

                    ToolLine {
                        toolName: partLoader.toolName
                        toolState: partLoader.toolState
                        width: root.textWidth
                    }
                }
            }
        }
    }
}
