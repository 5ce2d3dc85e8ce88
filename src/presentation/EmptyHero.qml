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
        text: qsTr("velto")
    }
}
