// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Marks the assistant's messages; says nothing that their names don't.
Rectangle {
    color: Tokens.faded(Tokens.accent, 0.14)
    implicitHeight: 26
    implicitWidth: 26
    radius: 7

    Symbol {
        anchors.centerIn: parent
        color: Tokens.accent
        name: "sparkle"
        size: 26 * 0.55
    }
}
