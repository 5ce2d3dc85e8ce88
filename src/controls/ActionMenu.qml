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

    /// Below `item`, its left edge under the item's.
    function openBelow(item: Item): void {
        openAt(item, 0, item.height + Tokens.spaceTiny);
    }
    /// At a place of `item`, such as where the pointer is.
    function openAt(item: Item, x: real, y: real): void {
        if (popup !== null)
            return popup.close();
        previous = item.Window.activeFocusItem;
        const component = Qt.createComponent("MenuPopup.qml");
        popup = component.createObject(root, {entries, label, parent: item, x, y});
        popup.closed.connect(finish);
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
