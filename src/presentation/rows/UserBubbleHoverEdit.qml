// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Begins to edit a message. There for the pointer and for assistive technology before it shows.
IconButton {
    help: qsTr("Edit message")
    label: qsTr("Edit message")
    opacity: hovered || visualFocus ? 1 : 0.001
    size: 22
    symbol: "pencil"
    symbolSize: 11
}
