// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Stands where the messages will be.
Item {
    Label {
        anchors.centerIn: parent
        color: Tokens.faded(Tokens.primary, 0.9)
        font.letterSpacing: -1
        font.pixelSize: 44 * Tokens.textScale
        font.weight: Font.Medium
        fontSizeMode: Text.Fit
        height: Math.min(implicitHeight, parent.height - 2 * 24)
        horizontalAlignment: Text.AlignHCenter
        minimumPixelSize: 12
        text: qsTr("velto")
        verticalAlignment: Text.AlignVCenter
        width: parent.width - 2 * 28
    }
}
