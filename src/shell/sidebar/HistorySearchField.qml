// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Narrows the history down. Escape empties it, and leaves it when it is empty.
FocusScope {
    id: root

    readonly property alias text: input.text

    signal cancelled
    /// To what lies below.
    signal steppedDown

    function takeFocus(): void {
        input.forceActiveFocus(Qt.ShortcutFocusReason);
    }
    /// As if the text had been typed here.
    function type(text: string): void {
        input.forceActiveFocus(Qt.OtherFocusReason);
        input.insert(input.cursorPosition, text);
    }
    function clear(): void {
        input.clear();
        input.forceActiveFocus(Qt.OtherFocusReason);
    }

    implicitHeight: input.implicitHeight + 2 * 7

    Rectangle {
        anchors.fill: parent
        border.color: Tokens.faded(Tokens.accent, input.activeFocus ? 0.5 : 0)
        color: Tokens.faded(Tokens.primary, 0.04)
        radius: Tokens.radiusSmall + 1
    }
    Symbol {
        id: mark

        anchors.verticalCenter: parent.verticalCenter
        color: Tokens.secondary
        name: "magnifyingglass"
        size: Tokens.caption
        x: 10
    }
    TextField {
        id: input

        anchors.left: mark.right
        anchors.leftMargin: 6
        anchors.right: clearButton.left
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        focus: true
        font.pixelSize: Tokens.caption
        label: placeholderText
        placeholderText: qsTr("Search chats")

        Keys.onDownPressed: root.steppedDown()
        // While an answer streams, Escape would end it.
        Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape && text !== ""
        onCancelled: text === "" ? root.cancelled() : clear()
    }
    IconButton {
        id: clearButton

        anchors.right: parent.right
        anchors.rightMargin: 3
        anchors.verticalCenter: parent.verticalCenter
        label: qsTr("Clear search")
        size: 22
        symbol: "xmark.circle.fill"
        symbolSize: Tokens.caption
        visible: input.text !== ""
        width: visible ? size : 0

        onClicked: root.clear()
    }
}
