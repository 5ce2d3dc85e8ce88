// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation
import Velto.Shell

/// What a signed-in user has before them: the sidebar, and beside it the section that was chosen.
/// A window too narrow for both shows the sidebar over the section while it is needed.
FocusScope {
    id: root

    required property AppState appState

    readonly property real leastDetail: 480
    readonly property bool hasRoom: width >= ShellSettings.columnWidth + leastDetail
    readonly property bool isColumnShown: hasRoom ? !ShellSettings.columnHidden : isPeeking
    /// The sidebar lies over the section.
    property bool isPeeking: false

    function toggleColumn(): void {
        if (hasRoom)
            ShellSettings.columnHidden = !ShellSettings.columnHidden;
        else
            isPeeking = !isPeeking;
    }
    function endPeeking(): void {
        if (!isPeeking)
            return;
        isPeeking = false;
        detail.forceActiveFocus();
    }

    onHasRoomChanged: isPeeking = false

    Connections {
        function onConversationIDChanged(): void {
            root.endPeeking();
        }
        function onFocusHistorySearchRequestChanged(): void {
            if (!root.isColumnShown)
                root.toggleColumn();
        }
        function onFocusInputRequestChanged(): void {
            root.endPeeking();
        }
        function onSelectedSectionChanged(): void {
            root.endPeeking();
        }

        target: root.appState
    }
    // In the order in which the keyboard comes to them.
    IconButton {
        help: label
        label: root.isColumnShown ? qsTr("Hide the sidebar") : qsTr("Show the sidebar")
        radius: Tokens.radiusSmall
        size: 28
        symbol: "sidebar.left"
        symbolSize: 15
        x: root.isColumnShown ? column.width - width - 6 : 6
        y: 6
        z: 3

        onClicked: root.toggleColumn()
    }
    FocusScope {
        id: column

        height: parent.height
        visible: x > -width
        width: ShellSettings.columnWidth
        x: root.isColumnShown ? 0 : -width
        z: 2

        Keys.onEscapePressed: event => {
            event.accepted = root.isPeeking;
            root.endPeeking();
        }

        Behavior on x {
            enabled: root.hasRoom

            NumberAnimation {
                duration: 200
                easing.type: Easing.InOutQuad
            }
        }

        Rectangle {
            anchors.fill: parent
            color: Tokens.sidebar
        }
        SidebarNav {
            anchors.fill: parent
            appState: root.appState
            focus: true
        }
        Rectangle {
            anchors.right: parent.right
            color: Tokens.hairline
            height: parent.height
            width: 1
        }
        ColumnEdge {
            anchors.horizontalCenter: parent.right
            height: parent.height
            visible: root.hasRoom
        }
    }
    FocusScope {
        id: detail

        anchors.bottom: parent.bottom
        anchors.left: root.hasRoom ? column.right : parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        focus: true

        SectionDetail {
            anchors.fill: parent
            appState: root.appState
            focus: true
        }
    }
    Scrim {
        anchors.fill: parent
        visible: root.isPeeking
        z: 1

        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds

            onTapped: root.endPeeking()
        }
    }
}
