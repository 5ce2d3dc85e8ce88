// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// What the agent is busy with.
Item {
    id: root

    required property string text

    implicitHeight: label.implicitHeight + 6
    implicitWidth: 720

    Spinner {
        id: spinner

        Accessible.ignored: true
        anchors.verticalCenter: label.verticalCenter
        size: 12
        x: 18
    }
    Label {
        id: label

        anchors.left: spinner.right
        anchors.leftMargin: 6
        anchors.right: parent.right
        anchors.rightMargin: 18
        color: Tokens.secondary
        elide: Text.ElideRight
        font.pixelSize: Tokens.caption
        maximumLineCount: 1
        text: root.text
    }
}
