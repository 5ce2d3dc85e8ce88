// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Shell

/// A conversation's place in the history: its row, or the field in which it is renamed, and above
/// the first of a bucket the bucket's label.
FocusScope {
    id: root

    required property int index
    required property string conversationID
    required property string title
    required property string bucketLabel
    required property string searchQuery
    /// The conversation that is open before the user; empty when none is.
    required property string activeID
    required property bool isCurrent
    required property HistoryEditing editing

    readonly property bool isRenaming: conversationID !== "" && editing.renamingID === conversationID
    readonly property alias row: row

    signal selected
    signal menuRequested(Item item, real x, real y)
    signal renameStarted
    signal renameEnded
    /// The keyboard has come to it.
    signal shown

    function takeFocus(): void {
        row.forceActiveFocus(Qt.TabFocusReason);
    }
    function focusRename(): void {
        (field.item as RenameField).takeFocus();
    }
    function openMenu(): void {
        row.openMenu();
    }

    height: row.y + row.height + 1

    Loader {
        id: header

        active: root.bucketLabel !== ""
        height: active ? implicitHeight : 0
        width: root.width

        sourceComponent: BucketHeader {
            isFirst: root.index === 0
            text: root.bucketLabel
        }
    }
    ConversationRow {
        id: row

        focus: true
        isActive: root.conversationID === root.activeID
        isCurrent: root.isCurrent
        searchQuery: root.searchQuery
        title: root.title
        visible: !root.isRenaming
        width: root.width - 2 * Tokens.spaceSmall
        x: Tokens.spaceSmall
        y: header.height

        onMenuRequested: (item, x, y) => root.menuRequested(item, x, y)
        onSelected: root.selected()
        onShown: root.shown()
    }
    Loader {
        id: field

        active: root.isRenaming
        height: row.height
        width: row.width
        x: row.x
        y: row.y

        sourceComponent: RenameField {
            text: root.editing.renameBuffer

            onAccepted: {
                root.editing.commitRename();
                root.renameEnded();
            }
            onCancelled: {
                root.editing.cancelRename();
                root.renameEnded();
            }
            onEdited: text => root.editing.renameBuffer = text
        }

        onLoaded: root.renameStarted()
    }
}
