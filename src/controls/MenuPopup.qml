// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQml.Models
import QtQuick
import QtQuick.Templates as T
import Velto.Controls

/// What `ActionMenu` shows; made by it alone.
T.Menu {
    id: root

    required property var entries
    required property string label
    required property bool staysForParent
    property var chosen: null
    property real widest: 160

    readonly property bool hasMarks: entries.some(entry => entry.symbol !== undefined || entry.checked !== undefined)

    closePolicy: T.Popup.CloseOnEscape | (staysForParent ? T.Popup.CloseOnPressOutsideParent : T.Popup.CloseOnPressOutside)
    height: Math.min(implicitHeight, parent.Window.height - 2 * margins)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    implicitWidth: Math.min(widest + leftPadding + rightPadding, 420, parent.Window.width - 2 * margins)
    margins: Tokens.spaceSmall
    overlap: 0
    padding: 5
    title: label

    background: Rectangle {
        border.color: Tokens.hairline
        color: Tokens.surface
        radius: Tokens.radiusMedium

        SoftShadow {
            opacity: 0.2
        }
    }
    contentItem: ListView {
        Accessible.name: root.label
        Accessible.role: Accessible.PopupMenu
        boundsBehavior: Flickable.StopAtBounds
        clip: contentHeight > height
        currentIndex: root.currentIndex
        highlightMoveDuration: 0
        implicitHeight: contentHeight
        interactive: contentHeight > height
        model: root.contentModel
    }

    onOpened: {
        const canBeChosen = entry => entry.separator !== true && entry.enabled !== false;
        const held = entries.findIndex(entry => entry.checked === true && canBeChosen(entry));
        const first = held >= 0 ? held : entries.findIndex(canBeChosen);
        if (first < 0)
            return;
        currentIndex = first;
        itemAt(first).forceActiveFocus(Qt.PopupFocusReason);
    }

    signal stepped(int direction)

    Instantiator {
        model: root.entries

        delegate: MenuRow {
            hasMark: root.hasMarks

            Keys.onLeftPressed: root.stepped(-1)
            Keys.onRightPressed: root.stepped(1)
            onImplicitWidthChanged: root.widest = Math.max(root.widest, implicitWidth)
            onTriggered: root.chosen = entry
        }

        onObjectAdded: (index, object) => root.insertItem(index, object)
    }
}
