// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Markdown

/// Markdown that shows where a link leads while the pointer rests on it.
Markdown {
    id: root

    height: implicitHeight

    Loader {
        active: root.hoveredLink !== ""
        sourceComponent: LinkTip {
            link: root.hoveredLink
            point: root.hoveredPoint
            room: root.width
        }
        z: 2
    }
}
