// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// One message of the conversation, the user's or the assistant's.
Item {
    id: root

    required property MessageListModel messages
    required property int messageRow
    property AppState appState: null
    required property var messageId
    required property bool isUser
    required property string userText
    required property date createdAt
    required property int branchCount
    required property int activeBranch
    required property int partCount
    required property bool isLast
    required property bool isStreaming
    /// Nothing can be done with the message.
    required property bool isReadOnly
    /// There is time for what shows under the pointer only.
    required property bool isSettled
    /// This row is the one that is rewritten.
    required property bool isEditing

    /// The message is about to become longer than its row shows.
    signal growing
    /// Something in it has taken another size by itself.
    signal reshaped
    signal linkActivated(url link)
    signal editingRequested
    signal editingEnded
    signal edited(string text)
    signal branchRequested(int index)
    signal regenerateRequested
    signal continueRequested

    Accessible.name: isUser ? qsTr("You") : qsTr("velto")
    Accessible.role: Accessible.ListItem
    implicitHeight: content.height

    Loader {
        id: content

        sourceComponent: !root.isUser ? assistantMessage : root.isEditing ? userMessageEditor : userMessage
        width: root.width
    }
    Component {
        id: assistantMessage

        AssistantMessage {
            appState: root.appState
            hasParts: root.partCount > 0
            isLast: root.isLast
            isReadOnly: root.isReadOnly
            isSettled: root.isSettled
            isStreaming: root.isStreaming
            messageId: root.messageId
            messageRow: root.messageRow
            messages: root.messages

            onContinueRequested: root.continueRequested()
            onGrowing: root.growing()
            onLinkActivated: link => root.linkActivated(link)
            onRegenerateRequested: root.regenerateRequested()
            onReshaped: root.reshaped()
        }
    }
    Component {
        id: userMessage

        UserMessage {
            activeBranch: root.activeBranch
            branchCount: root.branchCount
            createdAt: root.createdAt
            isReadOnly: root.isReadOnly
            isSettled: root.isSettled
            isStreaming: root.isStreaming
            text: root.userText

            onBranchRequested: index => root.branchRequested(index)
            onEditRequested: root.editingRequested()
        }
    }
    Component {
        id: userMessageEditor

        Loader {
            Component.onCompleted: setSource("MessageEditing.qml", {message: root})
        }
    }
}
