// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// What a tool call looks like until it is opened: its name and how it stands.
Item {
    id: root

    required property string toolName
    required property int toolState

    readonly property string stateText: {
        switch (toolState) {
        case MessageParts.Running:
            return qsTr("Running…");
        case MessageParts.Failed:
            return qsTr("Failed");
        default:
            return qsTr("Done");
        }
    }

    Accessible.name: toolName + " · " + stateText
    Accessible.role: Accessible.StaticText
    implicitHeight: name.implicitHeight

    Symbol {
        id: mark

        anchors.verticalCenter: name.verticalCenter
        color: root.toolState === MessageParts.Failed ? Tokens.warning : Tokens.secondary
        name: root.toolState === MessageParts.Failed ? "exclamationmark.triangle" : "wrench"
        size: Tokens.caption
    }
    Text {
        id: name

        anchors.left: mark.right
        anchors.leftMargin: Tokens.spaceSmall
        anchors.right: parent.right
        color: Tokens.secondary
        elide: Text.ElideRight
        font.pixelSize: Tokens.body
        maximumLineCount: 1
        text: root.Accessible.name
        textFormat: Text.PlainText
    }
}
