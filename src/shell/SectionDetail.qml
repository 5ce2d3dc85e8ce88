// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Presentation
import Velto.Shell

/// The screen of the section that was chosen, made afresh at every change: what a screen keeps to
/// itself doesn't survive leaving it.
FocusScope {
    id: root

    required property AppState appState

    function choose(): void {
        const section = appState.selectedSection;
        if (section === AppState.Chat)
            screen.setSource("ChatSection.qml", {appState});
        else
            screen.setSource("SectionPlaceholder.qml", {section});
    }

    Component.onCompleted: choose()

    Connections {
        function onSelectedSectionChanged(): void {
            root.choose();
        }

        target: root.appState
    }
    Loader {
        id: screen

        anchors.fill: parent
        focus: true

        onLoaded: item.focus = true
    }
}
