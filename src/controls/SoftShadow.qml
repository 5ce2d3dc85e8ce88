// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A soft shadow below its parent, the same under every renderer.
BorderImage {
    readonly property real reach: 30

    anchors.bottomMargin: -reach - 4
    anchors.fill: parent
    anchors.leftMargin: -reach
    anchors.rightMargin: -reach
    anchors.topMargin: -reach + 4
    border {
        bottom: 46
        left: 46
        right: 46
        top: 46
    }
    opacity: 0.1
    source: Qt.resolvedUrl("images/shadow.png")
    z: -1
}
