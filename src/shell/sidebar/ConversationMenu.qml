// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// What can be done with a conversation of the history. One menu serves all rows.
ActionMenu {
    id: root

    property string conversationID
    /// As the row shows it.
    property string title

    signal renameRequested
    signal linkRequested
    signal deletionRequested

    entries: [
        {
            text: qsTr("Rename"),
            symbol: "pencil",
            shortcut: "F2",
            activate: () => root.renameRequested()
        },
        {
            text: qsTr("Copy link"),
            symbol: "link",
            activate: () => root.linkRequested()
        },
        {
            text: qsTr("Copy title"),
            symbol: "doc.on.doc",
            activate: () => Clipboard.copy(root.title)
        },
        {
            text: qsTr("Delete"),
            symbol: "trash",
            shortcut: "Del",
            destructive: true,
            activate: () => root.deletionRequested()
        }
    ]
    label: qsTr("More actions")
}
