// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// What can be done with an answer. There for the pointer and for assistive technology before it
/// shows; an answer with a vote keeps it in sight.
Row {
    id: root

    required property MessageListModel messages
    required property int messageRow
    required property int currentVote
    required property bool isLast
    required property bool isStreaming

    signal regenerateRequested
    signal continueRequested
    signal feedback(int vote)

    readonly property bool showsMore: isLast && !isStreaming
    readonly property bool hasKeyboard: copy.visualFocus || good.visualFocus || bad.visualFocus || (more.item as MoreActions)?.hasKeyboard === true

    function toggle(vote: int): void {
        feedback(currentVote === vote ? VoteStore.None : vote);
    }

    opacity: pointer.hovered || hasKeyboard || currentVote !== VoteStore.None ? 1 : 0.001
    spacing: 4

    Behavior on opacity {
        NumberAnimation {
            duration: Tokens.quick
            easing.type: Easing.OutQuad
        }
    }

    HoverHandler {
        id: pointer
    }
    CopyButton {
        id: copy

        label: qsTr("Copy message")
        size: 22
        symbolSize: 11
        onPreparing: copied = root.messages.plainText(root.messageRow)
    }
    IconButton {
        id: good

        help: qsTr("Good response")
        label: qsTr("Good response")
        size: 22
        symbol: root.currentVote === VoteStore.Up ? "hand.thumbsup.fill" : "hand.thumbsup"
        symbolSize: 11

        onClicked: root.toggle(VoteStore.Up)
    }
    IconButton {
        id: bad

        help: qsTr("Bad response")
        label: qsTr("Bad response")
        size: 22
        symbol: root.currentVote === VoteStore.Down ? "hand.thumbsdown.fill" : "hand.thumbsdown"
        symbolSize: 11

        onClicked: root.toggle(VoteStore.Down)
    }
    Loader {
        id: more

        active: root.showsMore
        sourceComponent: MoreActions {
            onContinueRequested: root.continueRequested()
            onRegenerateRequested: root.regenerateRequested()
        }
        visible: active
    }
}
