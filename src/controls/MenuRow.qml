// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtQuick.Templates as T
import Velto.Controls

/// One entry of a menu, or the line between two groups of them.
T.MenuItem {
    id: root

    required property var modelData
    required property bool hasMark

    readonly property var entry: modelData
    readonly property bool isSeparator: entry.separator === true
    readonly property color ink: !enabled ? Tokens.tertiary
        : highlighted ? Tokens.onAccent
        : entry.destructive === true ? Tokens.failure : Tokens.primary

    function choose(): void {
        if (enabled)
            triggered();
    }

    Accessible.checkable: entry.checked !== undefined
    Accessible.checked: entry.checked === true
    Accessible.ignored: isSeparator
    Accessible.name: text
    Accessible.role: Accessible.MenuItem
    Accessible.onPressAction: choose()
    Keys.onEnterPressed: choose()
    Keys.onReturnPressed: choose()
    enabled: !isSeparator && entry.enabled !== false
    implicitHeight: isSeparator ? 9 : Math.max(28, label.implicitHeight + 10)
    implicitWidth: (hasMark ? 32 : 12) + label.implicitWidth + (shortcut.text === "" ? 0 : 28 + shortcut.implicitWidth) + 12
    text: entry.text ?? ""

    background: Item {
        Rectangle {
            anchors.fill: parent
            color: Tokens.accent
            radius: Tokens.radiusSmall
            visible: root.highlighted && root.enabled
        }
        Rectangle {
            anchors.left: parent.left
            anchors.margins: 8
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            color: Tokens.hairline
            height: 1
            visible: root.isSeparator
        }
    }
    contentItem: Item {
        visible: !root.isSeparator

        Loader {
            active: root.entry.symbol !== undefined || root.entry.checked === true
            anchors.verticalCenter: parent.verticalCenter
            x: 10

            sourceComponent: Symbol {
                color: root.ink
                name: root.entry.symbol ?? "checkmark"
                size: 13
            }
        }
        Text {
            id: label

            anchors.left: parent.left
            anchors.leftMargin: root.hasMark ? 32 : 12
            anchors.right: shortcut.left
            anchors.verticalCenter: parent.verticalCenter
            color: root.ink
            elide: Text.ElideRight
            font.pixelSize: Tokens.body
            text: root.text
            textFormat: Text.PlainText
        }
        Text {
            id: shortcut

            anchors.right: parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            color: root.highlighted ? root.ink : Tokens.secondary
            font.pixelSize: Tokens.caption
            text: root.entry.shortcut ?? ""
            textFormat: Text.PlainText
        }
    }
}
