// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A soft shadow below its parent, the same under every renderer.
Shadow {
    anchors.bottomMargin: -reach - 4
    anchors.fill: parent
    anchors.leftMargin: -reach
    anchors.rightMargin: -reach
    anchors.topMargin: -reach + 4
    opacity: 0.1
    radius: 22
    reach: 30
    z: -1
}
