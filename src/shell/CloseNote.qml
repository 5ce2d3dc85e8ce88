// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Says, where the desktop has no way to, that velto goes on without its window.
Alert {
    id: root

    signal read

    actions: [
        {
            label: qsTr("Close window"),
            role: "cancel"
        }
    ]
    shown: false

    Component.onCompleted: shown = true
    onDismissed: shown = false
    // Only now is the popup gone from the window, too.
    onPopupChanged: {
        if (popup === null)
            read();
    }
}
