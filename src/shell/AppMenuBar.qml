// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// The titles of the menus in a line. F10 opens the first one; the arrows go from one to the next.
Item {
    id: root

    /// A title and its commands each; null is a line between two groups.
    required property var menus

    property int openIndex: -1
    readonly property bool isOpen: menu.shown && menu.popup.opened

    function entries(commands: var): var {
        return commands.map(command => command === null ? {separator: true} : {
            text: command.text,
            shortcut: command.nativeText,
            enabled: command.enabled,
            activate: () => command.activated()
        });
    }
    function toggle(index: int): void {
        const wasOpen = openIndex === index;
        menu.close();
        if (wasOpen)
            return;
        openIndex = index;
        menu.entries = entries(menus[index].commands);
        menu.label = menus[index].title;
        menu.openBelow(titles.itemAt(index));
    }

    Accessible.name: qsTr("Menu")
    Accessible.role: Accessible.MenuBar
    implicitHeight: Math.round(28 * Tokens.textScale)

    Row {
        height: parent.height
        leftPadding: Tokens.spaceSmall

        Repeater {
            id: titles

            model: root.menus

            MenuTitle {
                required property int index
                required property var modelData

                height: parent.height
                isOpen: root.openIndex === index
                title: modelData.title

                onHoverMoved: {
                    if (root.openIndex >= 0 && !isOpen)
                        root.toggle(index);
                }
                onPressed: root.toggle(index)
            }
        }
    }
    ActionMenu {
        id: menu

        label: ""

        onClosed: root.openIndex = -1
        onStepped: direction => root.toggle((root.openIndex + direction + root.menus.length) % root.menus.length)
    }
    Shortcut {
        sequence: "F10"

        onActivated: root.toggle(0)
    }
}
