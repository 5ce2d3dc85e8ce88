// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Markdown
import Velto.Presentation

/// One Markdown text of a reply. Shows where a link leads while the pointer rests on it.
MediaMarkdown {
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
