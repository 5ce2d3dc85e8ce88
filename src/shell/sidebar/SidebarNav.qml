// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation
import Velto.Shell

/// The left column: a new chat, the history with its search, and the sections below it. What is
/// searched for and renamed lives and dies with it.
FocusScope {
    id: root

    required property AppState appState

    readonly property string title: qsTr("velto")
    readonly property alias query: search.text
    readonly property alias historyCount: history.count

    function select(conversationID: string): void {
        appState.selectedSection = AppState.Chat;
        appState.startSelectConversation(conversationID);
    }

    Accessible.name: title
    Accessible.role: Accessible.Pane
    implicitWidth: 220

    HistoryModel {
        id: history

        appState: root.appState
        query: search.text
    }
    HistoryEditing {
        id: editing

        appState: root.appState
    }
    Connections {
        function onFocusHistorySearchRequestChanged(): void {
            search.takeFocus();
        }

        target: root.appState
    }
    Label {
        font.weight: Font.DemiBold
        height: newChat.y
        leftPadding: 2 * Tokens.spaceSmall
        text: root.title
        verticalAlignment: Text.AlignVCenter
    }
    NewChatButton {
        id: newChat

        anchors.left: parent.left
        anchors.margins: Tokens.spaceSmall
        anchors.right: parent.right
        y: 40

        onClicked: {
            root.appState.newConversation();
            root.appState.selectedSection = AppState.Chat;
            root.appState.requestInputFocus();
        }
    }
    HistorySearchField {
        id: search

        anchors.left: newChat.left
        anchors.right: newChat.right
        anchors.top: newChat.bottom
        anchors.topMargin: Tokens.spaceTiny
        focus: true

        onCancelled: root.appState.requestInputFocus()
        onSteppedDown: list.enter()
    }
    ConversationList {
        id: list

        anchors.bottom: line.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: search.bottom
        anchors.topMargin: Tokens.spaceSmall
        appState: root.appState
        editing: editing
        history: history

        onEmptied: search.takeFocus()
        onEscaped: root.appState.requestInputFocus()
        onSteppedUp: search.takeFocus()
        onMenuRequested: (item, x, y, conversationID, title) => {
            menu.conversationID = conversationID;
            menu.title = title;
            menu.openAt(item, x, y);
        }
        onSelected: conversationID => root.select(conversationID)
        onTyped: text => search.type(text)
    }
    Rectangle {
        id: line

        anchors.bottom: sections.top
        anchors.bottomMargin: Tokens.spaceTiny
        anchors.left: parent.left
        anchors.right: parent.right
        color: Tokens.faded(Tokens.primary, 0.08)
        height: 0.5
    }
    Column {
        id: sections

        anchors.bottom: parent.bottom
        anchors.bottomMargin: Tokens.spaceSmall
        anchors.left: newChat.left
        anchors.right: newChat.right

        Repeater {
            model: Sections.sidebar

            SectionRow {
                required property int modelData

                isCurrent: root.appState.selectedSection === modelData
                label: Sections.title(modelData)
                symbol: Sections.symbol(modelData)
                width: sections.width

                onClicked: root.appState.selectedSection = modelData
            }
        }
    }
    ConversationMenu {
        id: menu

        onDeletionRequested: editing.askToDelete(conversationID)
        onLinkRequested: Clipboard.copy(editing.link(conversationID))
        onRenameRequested: list.rename(conversationID)
    }
    Alert {
        actions: [
            {
                label: qsTr("Delete"),
                role: "destructive",
                activate: () => editing.confirmDeletion()
            },
            {
                label: qsTr("Cancel"),
                role: "cancel"
            }
        ]
        message: editing.deletionMessage
        shown: editing.isDeleting
        title: qsTr("Delete chat?")

        onDismissed: editing.cancelDeletion()
    }
}
