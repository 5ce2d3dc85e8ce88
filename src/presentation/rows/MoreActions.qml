// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// How the last answer may become another or longer.
Row {
    id: root

    readonly property bool hasKeyboard: regenerate.visualFocus || proceed.visualFocus

    signal regenerateRequested
    signal continueRequested

    spacing: 4

    IconButton {
        id: regenerate

        help: qsTr("Regenerate")
        label: qsTr("Regenerate response")
        size: 22
        symbol: "arrow.clockwise"
        symbolSize: 11

        onClicked: root.regenerateRequested()
    }
    IconButton {
        id: proceed

        help: qsTr("Continue")
        label: qsTr("Continue generating")
        size: 22
        symbol: "arrow.forward.to.line"
        symbolSize: 11

        onClicked: root.continueRequested()
    }
}
