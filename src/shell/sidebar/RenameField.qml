// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Stands in place of a row while its conversation is renamed. Return accepts, Escape cancels.
FocusScope {
    id: root

    required property string text

    signal edited(string text)
    signal accepted
    signal cancelled

    function takeFocus(): void {
        input.forceActiveFocus(Qt.OtherFocusReason);
        input.selectAll();
    }

    Rectangle {
        anchors.fill: parent
        border.color: Tokens.faded(Tokens.accent, 0.35)
        border.width: 1
        color: Tokens.faded(Tokens.primary, 0.06)
        radius: 7
    }
    TextField {
        id: input

        anchors.left: parent.left
        anchors.margins: Tokens.spaceSmall
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        focus: true
        font.pixelSize: Tokens.body
        label: qsTr("Rename chat")

        // While an answer streams, Escape would end it.
        Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape
        Component.onCompleted: text = root.text
        onAccepted: root.accepted()
        onCancelled: root.cancelled()
        onTextEdited: root.edited(text)
    }
}
