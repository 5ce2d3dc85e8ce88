// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Shows where the keyboard is. Lies around its parent.
Rectangle {
    anchors.fill: parent
    anchors.margins: -3
    border.color: Tokens.faded(Tokens.accent, 0.8)
    border.width: 2
    color: "transparent"
}
