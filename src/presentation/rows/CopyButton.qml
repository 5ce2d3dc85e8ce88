// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Puts a text on the clipboard and says for a moment that it did.
IconButton {
    id: root

    property string copied
    property bool copiedFlash: false

    /// Whoever doesn't keep the text sets it now.
    signal preparing

    help: qsTr("Copy")
    symbol: copiedFlash ? "checkmark" : "doc.on.doc"

    onClicked: {
        preparing();
        Clipboard.copy(copied);
        copiedFlash = true;
        flash.start();
    }

    Timer {
        id: flash

        interval: 1200
        onTriggered: root.copiedFlash = false
    }
}
