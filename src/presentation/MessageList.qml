// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// The messages of a conversation. Follows the bottom while the last one grows, until the user drags
/// the list; a new message or the jump button brings it back down.
Item {
    id: root

    required property MessageListModel messages
    property AppState appState: null
    property bool isStreaming: false
    /// Nothing can be done with the messages yet.
    property bool readOnly: false
    /// The id of the message that is rewritten, and whether the list follows what comes: the owner
    /// keeps both, and changes them when it is asked to.
    property var editingMessageID
    property bool stickToBottom: true
    property real topPadding: 28
    property real bottomPadding: 96

    readonly property alias view: list

    signal linkActivated(url link)
    signal edited(var messageId, string text)
    signal branchRequested(var messageId, int index)
    signal regenerateRequested
    signal continueRequested
    signal editingRequested(var messageId)
    signal stickingRequested(bool sticking)

    /// There is something below what shows.
    readonly property bool isAway: !stickToBottom && list.count > 0
    readonly property real rowWidth: Math.min(720, width - 2 * 28)

    function scrollToEnd(animated: bool): void {
        const start = list.contentY;
        list.forceLayout();
        list.positionViewAtEnd();
        const end = list.contentY;
        if (!animated || start === end)
            return;
        // From no further than a window away: what lies between needn't be made.
        slide.from = Math.max(end - list.height, Math.min(start, end + list.height));
        slide.to = end;
        slide.restart();
    }

    function page(share: real): void {
        slide.stop();
        const last = Math.max(list.originY, list.originY + list.contentHeight - list.height);
        list.contentY = Math.max(list.originY, Math.min(last, list.contentY + share * list.height));
    }
    function jumpToLatest(): void {
        stickingRequested(true);
        scrollToEnd(true);
    }

    // The list view is a focus scope, to which nobody can go back once a row has had the focus.
    Accessible.name: qsTr("Messages")
    Accessible.role: Accessible.List
    activeFocusOnTab: list.count > 0

    Keys.onDownPressed: page(0.1)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageDown)
            page(0.9);
        else if (event.key === Qt.Key_PageUp)
            page(-0.9);
        else if (event.key === Qt.Key_End)
            scrollToEnd(true);
        else if (event.key === Qt.Key_Home)
            list.positionViewAtBeginning();
        else
            return;
        event.accepted = true;
    }
    Keys.onUpPressed: page(-0.1)

    ListView {
        id: list

        anchors.left: parent.left
        anchors.right: parent.right
        height: follower.opened ? parent.height : 0
        boundsBehavior: Flickable.StopAtBounds
        // Rows that nobody sees wait for those that somebody does.
        cacheBuffer: follower.drawn ? 200 : 0
        clip: true
        currentIndex: -1
        keyNavigationEnabled: false
        model: root.messages
        pixelAligned: true
        reuseItems: false
        spacing: 28

        add: Transition {
            NumberAnimation {
                duration: 250
                easing.type: Easing.OutQuad
                from: 0
                property: "opacity"
                to: 1
            }
        }
        delegate: Item {
            id: row

            required property int index
            required property int activeBranch
            required property int branchCount
            required property date createdAt
            required property bool isUser
            required property var messageId
            required property int partCount
            required property string userText

            height: message.implicitHeight
            width: ListView.view.width

            MessageRow {
                id: message

                activeBranch: row.activeBranch
                anchors.horizontalCenter: parent.horizontalCenter
                appState: root.appState
                branchCount: row.branchCount
                createdAt: row.createdAt
                height: implicitHeight
                isEditing: root.editingMessageID !== undefined && root.editingMessageID === row.messageId
                isLast: row.index === list.count - 1
                isStreaming: root.isStreaming
                isUser: row.isUser
                isReadOnly: root.readOnly
                isSettled: follower.drawn
                messageId: row.messageId
                messageRow: row.index
                messages: root.messages
                partCount: row.partCount
                userText: row.userText
                width: root.rowWidth

                onBranchRequested: index => root.branchRequested(row.messageId, index)
                onContinueRequested: root.continueRequested()
                onEdited: text => {
                    root.editingRequested(undefined);
                    root.edited(row.messageId, text);
                }
                onEditingEnded: root.editingRequested(undefined)
                onEditingRequested: root.editingRequested(row.messageId)
                onGrowing: {
                    if (isLast)
                        follower.follow();
                }
                onLinkActivated: link => root.linkActivated(link)
                onRegenerateRequested: root.regenerateRequested()
                onReshaped: follower.stay()
            }
        }
        footer: Item {
            height: root.bottomPadding
            width: 1
        }
        header: Item {
            height: root.topPadding
            width: 1
        }

        onHeightChanged: follower.follow()
        onMovementStarted: slide.stop() // whoever scrolls is not pulled away
    }
    Loader {
        active: root.activeFocus
        anchors.fill: parent
        anchors.margins: 4

        Component.onCompleted: setSource("qrc:/qt/qml/Velto/Controls/FocusRing.qml", {radius: Tokens.radiusSmall})
    }
    NumberAnimation {
        id: slide

        duration: 200
        easing.type: Easing.OutQuad
        property: "contentY"
        target: list

        // Rows that were made on the way may have moved the end.
        onFinished: follower.follow()
    }
    ListFollower {
        id: follower

        messages: root.messages
        sticking: root.stickToBottom
        view: list

        Component.onCompleted: jump()
        onFollowed: slide.stop()
        onLastMessageChanged: root.jumpToLatest()
    }
    // Above the list: what lies below it doesn't hear of a press that the list has taken.
    Item {
        anchors.fill: parent

        PointHandler {
            acceptedButtons: Qt.LeftButton
            target: null

            onTranslationChanged: {
                if (active && Math.hypot(translation.x, translation.y) >= 3)
                    root.stickingRequested(false);
            }
        }
    }
    // Not before it is first wanted, so that a start needn't read buttons in.
    Loader {
        active: false
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 8
        anchors.horizontalCenter: parent.horizontalCenter

        readonly property bool wanted: root.isAway

        Component.onCompleted: setSource("JumpButton.qml", {messages: root})
        onWantedChanged: active = true
    }
}
