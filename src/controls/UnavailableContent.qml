// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Says in the middle of a screen why there is nothing else on it.
FocusScope {
    id: root

    required property string title
    required property string symbol
    property string message
    /// What the button says; without it there is none.
    property string action

    signal activated

    Column {
        anchors.centerIn: parent
        spacing: Tokens.spaceSmall
        width: Math.min(360, parent.width - 2 * Tokens.spaceLarge)

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Tokens.tertiary
            name: root.symbol
            size: 40
        }
        Label {
            font.pixelSize: 17 * Tokens.textScale
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            text: root.title
            width: parent.width
            wrapMode: Text.Wrap
        }
        Label {
            color: Tokens.secondary
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignHCenter
            maximumLineCount: 12
            text: root.message
            visible: text !== ""
            width: parent.width
            wrapMode: Text.Wrap
        }
        Item {
            height: Tokens.spaceTiny
            visible: root.action !== ""
            width: 1
        }
        ProminentButton {
            anchors.horizontalCenter: parent.horizontalCenter
            focus: true
            label: root.action
            visible: root.action !== ""

            onClicked: root.activated()
        }
    }
}
