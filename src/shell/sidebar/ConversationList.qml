// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation
import Velto.Shell

/// The history, in buckets. One stop of the Tab key: the arrows go from row to row, and what is
/// typed goes to the search.
FocusScope {
    id: root

    required property AppState appState
    required property HistoryModel history
    required property HistoryEditing editing

    readonly property bool isChat: appState.selectedSection === AppState.Chat
    /// A rename has just begun, and its field is to have the keyboard.
    property bool renameWantsFocus: false

    signal selected(string conversationID)
    signal menuRequested(Item item, real x, real y, string conversationID, string title)
    signal typed(string text)
    /// The keyboard was here and there is nothing left.
    signal emptied
    signal escaped
    signal steppedUp

    /// From above.
    function enter(): void {
        if (list.count > 0)
            moveTo(0);
    }
    function moveTo(row: int): void {
        list.currentIndex = Math.max(0, Math.min(list.count - 1, row));
        list.positionViewAtIndex(list.currentIndex, ListView.Contain);
        list.entry.takeFocus();
    }
    function rename(conversationID: string): void {
        renameWantsFocus = true;
        editing.beginRename(conversationID);
    }
    function showRow(conversationID: string): void {
        const row = history.rowOf(conversationID);
        if (row < 0)
            return;
        list.currentIndex = row;
        list.positionViewAtIndex(row, ListView.Contain);
    }

    Connections {
        function onConversationIDChanged(): void {
            root.showRow(root.appState.conversationID);
        }

        target: root.appState
    }
    Connections {
        function onQueryChanged(): void {
            list.currentIndex = 0;
            list.positionViewAtBeginning();
        }

        target: root.history
    }
    Label {
        color: Tokens.secondary
        font.pixelSize: Tokens.caption
        horizontalAlignment: Text.AlignHCenter
        text: root.history.placeholder
        topPadding: Tokens.spaceLarge
        visible: text !== ""
        width: parent.width
    }
    ListView {
        id: list

        readonly property ConversationEntry entry: currentItem as ConversationEntry
        readonly property int rowsPerPage: entry === null ? 1 : Math.max(1, Math.floor(height / entry.row.height) - 1)

        Accessible.name: qsTr("Conversations")
        Accessible.role: Accessible.List
        anchors.fill: parent
        boundsBehavior: Flickable.StopAtBounds
        cacheBuffer: 60
        clip: true
        highlightFollowsCurrentItem: false
        keyNavigationEnabled: false
        model: root.history
        pixelAligned: true
        visible: root.history.placeholder === ""

        delegate: ConversationEntry {
            activeID: root.isChat ? root.appState.conversationID : ""
            editing: root.editing
            isCurrent: ListView.isCurrentItem
            searchQuery: root.history.query
            width: ListView.view.width

            onIndexChanged: order.update()
            onMenuRequested: (item, x, y) => root.menuRequested(item, x, y, conversationID, title)
            onRenameEnded: takeFocus()
            onRenameStarted: {
                if (root.renameWantsFocus)
                    focusRename();
                root.renameWantsFocus = false;
            }
            onSelected: {
                list.currentIndex = index;
                root.selected(conversationID);
            }
            onShown: list.positionViewAtIndex(index, ListView.Contain)
        }

        Keys.onDeletePressed: root.editing.askToDelete(entry.conversationID)
        Keys.onDownPressed: root.moveTo(currentIndex + 1)
        Keys.onEscapePressed: root.escaped()
        Keys.onMenuPressed: entry.openMenu()
        Keys.onPressed: event => {
            event.accepted = true;
            switch (event.key) {
            case Qt.Key_Home:
                return root.moveTo(0);
            case Qt.Key_End:
                return root.moveTo(count - 1);
            case Qt.Key_PageUp:
                return root.moveTo(currentIndex - rowsPerPage);
            case Qt.Key_PageDown:
                return root.moveTo(currentIndex + rowsPerPage);
            case Qt.Key_F2:
                return root.rename(entry.conversationID);
            case Qt.Key_F10:
                if (event.modifiers === Qt.ShiftModifier)
                    return entry.openMenu();
            }
            event.accepted = !(event.modifiers & ~Qt.ShiftModifier) && event.text > " " && event.text !== "\u007f";
            if (event.accepted)
                root.typed(event.text);
        }
        Keys.onReturnPressed: root.selected(entry.conversationID)
        Keys.onEnterPressed: root.selected(entry.conversationID)
        Keys.onSpacePressed: root.selected(entry.conversationID)
        Keys.onUpPressed: currentIndex === 0 ? root.steppedUp() : root.moveTo(currentIndex - 1)
        onCountChanged: {
            if (count === 0 && activeFocus)
                root.emptied();
        }
    }
    Loader {
        active: list.entry !== null && list.entry.row.activeFocus
        anchors.fill: parent
        anchors.margins: 2
        parent: list.entry === null ? list : list.entry.row
        sourceComponent: FocusRing {
            radius: 8
        }
    }
    RowOrder {
        id: order

        view: list
    }
}
