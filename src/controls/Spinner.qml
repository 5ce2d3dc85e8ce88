// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Says that something is under way. Moves, and costs, only while it shows.
SpokeWheel {
    Accessible.name: qsTr("Loading…")
    Accessible.role: Accessible.Animation
}
