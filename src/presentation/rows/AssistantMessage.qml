// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// The assistant's turn: its parts beside the avatar, and what can be done with them.
Item {
    id: root

    required property MessageListModel messages
    required property int messageRow
    required property var messageId
    required property bool hasParts
    property AppState appState: null
    required property bool isLast
    required property bool isStreaming
    required property bool isReadOnly
    required property bool isSettled

    signal growing
    signal reshaped
    signal linkActivated(url link)
    signal regenerateRequested
    signal continueRequested

    readonly property real partsX: 26 + 12
    property int voteRevision: 0
    readonly property int vote: voteRevision >= 0 ? VoteStore.vote(messageId) : VoteStore.None
    readonly property bool fades: isLast && isStreaming && hasParts

    function setVote(vote: int): void {
        VoteStore.setVote(vote, messageId);
        voteRevision += 1;
    }

    implicitHeight: hasParts ? actions.y + actions.height : Math.max(26, parts.height)

    AssistantAvatar {}
    AssistantPartsView {
        id: parts

        appState: root.appState
        messageRow: root.messageRow
        messages: root.messages
        // A line's extra height lies below its letters.
        topPadding: 3
        width: root.width - x
        x: root.partsX

        onGrowing: root.growing()
        onLinkActivated: link => root.linkActivated(link)
        onReshaped: root.reshaped()
    }
    Loader {
        id: actions

        active: root.hasParts && !root.isReadOnly && root.isSettled
        height: 22
        visible: active
        // A mark stands in the middle of its button: the first one begins where the text does.
        x: root.partsX - (22 - 11) / 2
        y: parts.height + Tokens.spaceSmall

        // By its address, as whatever the first frame doesn't show: a start doesn't read it.
        Component.onCompleted: setSource("AnswerActions.qml", {answer: root})
    }
    // The newest line of an answer that is being written fades into what is behind it.
    Loader {
        active: root.fades
        height: parts.height - y
        sourceComponent: Rectangle {
            gradient: Gradient {
                GradientStop {
                    color: Tokens.faded(Tokens.background, 0)
                    position: 0
                }
                GradientStop {
                    color: Tokens.faded(Tokens.background, 0.75)
                    position: 1
                }
            }
        }
        width: parts.width
        x: parts.x
        y: parts.height * 0.86
    }
}
