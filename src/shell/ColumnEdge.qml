// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Shell

/// The edge of the sidebar's column, by which it is made wider or narrower.
Item {
    id: root

    width: 9

    HoverHandler {
        cursorShape: Qt.SplitHCursor
    }
    DragHandler {
        property real before: 0

        dragThreshold: 0
        target: null

        onActiveChanged: before = ShellSettings.columnWidth
        onTranslationChanged: {
            if (active)
                ShellSettings.columnWidth = before + translation.x;
        }
    }
}
