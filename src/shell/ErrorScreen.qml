// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Says why nobody is signed in, and offers to try again.
FocusScope {
    id: root

    required property string message

    signal retried

    Column {
        anchors.centerIn: parent
        spacing: 16

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Tokens.warning
            name: "exclamationmark.triangle"
            size: 28
        }
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Tokens.secondary
            horizontalAlignment: Text.AlignHCenter
            text: root.message
            width: Math.min(implicitWidth, 320)
            wrapMode: Text.Wrap
        }
        ProminentButton {
            anchors.horizontalCenter: parent.horizontalCenter
            focus: true
            label: qsTr("Try again")

            onClicked: root.retried()
        }
    }
}
