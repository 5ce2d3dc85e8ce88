// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Offers the next prompt; pressing sends it.
Item {
    id: root

    required property string suggestion

    signal accepted

    implicitHeight: button.implicitHeight + 6
    implicitWidth: 720

    CapsuleButton {
        id: button

        label: root.suggestion
        symbol: "lightbulb"
        width: Math.min(implicitWidth, root.width - 2 * 18)
        x: 18

        onClicked: root.accepted()
    }
}
