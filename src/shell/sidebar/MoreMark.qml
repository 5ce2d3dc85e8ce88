// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// The button of a row that opens its menu, as it shows.
Rectangle {
    id: root

    required property bool isLit

    color: Tokens.faded(Tokens.primary, isLit ? 0.08 : 0)
    radius: Tokens.radiusSmall

    Symbol {
        anchors.centerIn: parent
        color: Tokens.secondary
        name: "ellipsis"
    }
}
