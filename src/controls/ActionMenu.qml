// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A menu of actions. It costs nothing until it is opened, and nothing of it stays when it has
/// closed. Each entry is an object:
///   text        what it says
///   activate    called when it was chosen and the menu has gone
///   symbol      optional, the name of a mark
///   checked     optional, marks the one that holds now
///   enabled     optional, true unless said otherwise
///   destructive optional, coloured as what can't be undone
///   shortcut    optional, the key that does the same
///   separator   optional, a line instead of all this
Item {
    id: root

    /// The menu's name for assistive technology.
    required property string label
    property var entries: []
    readonly property bool shown: popup !== null
    property var popup: null
    property Item previous: null

    signal closed
    /// Left or right was pressed, -1 or 1: for menus that stand in a row.
    signal stepped(int direction)

    /// Below `item`, its left edge under the item's. A press on the item leaves it open.
    function openBelow(item: Item): void {
        open(item, 0, item.height + Tokens.spaceTiny, true);
    }
    /// At a place of `item`, such as where the pointer is.
    function openAt(item: Item, x: real, y: real): void {
        open(item, x, y, false);
    }
    function open(item: Item, x: real, y: real, staysForParent: bool): void {
        if (popup !== null)
            return popup.close();
        previous = item.Window.activeFocusItem;
        const component = Qt.createComponent("MenuPopup.qml");
        popup = component.createObject(root, {entries, label, parent: item, staysForParent, x, y});
        popup.closed.connect(finish);
        popup.stepped.connect(stepped);
        popup.open();
    }
    function close(): void {
        if (popup !== null)
            popup.close();
    }
    function finish(): void {
        const chosen = popup.chosen;
        popup.destroy();
        popup = null;
        if (previous !== null)
            previous.forceActiveFocus(Qt.PopupFocusReason);
        closed();
        if (chosen !== null)
            chosen.activate();
    }

    Component.onDestruction: close()
}
