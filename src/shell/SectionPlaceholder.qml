// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Shell

/// Stands where a section's screen will be.
FocusScope {
    id: root

    required property int section

    UnavailableContent {
        anchors.fill: parent
        focus: true
        symbol: Sections.symbol(root.section)
        title: Sections.title(root.section)
    }
}
