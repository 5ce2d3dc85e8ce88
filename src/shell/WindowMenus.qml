// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Shell

/// The commands of the main window, and the bar of menus that shows them.
Item {
    id: menus

    required property MacRoot root

    Commands {
        id: commands

        appState: menus.root.appState
        searchPalette: menus.root.searchPalette
        spotlight: menus.root.spotlight
    }
    AppMenuBar {
        objectName: "menuBar"

        anchors.fill: parent
        menus: commands.menus
        visible: menus.root.hasMenuBar
    }
}
