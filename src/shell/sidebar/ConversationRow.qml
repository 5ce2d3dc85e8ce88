// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Shell

/// One conversation of the history. A long one makes and drops such rows while it is searched, so
/// they are made of little.
Item {
    id: root

    required property string title
    required property string searchQuery
    required property bool isActive
    /// The one row that the Tab key comes to.
    required property bool isCurrent

    readonly property bool hovering: area.containsMouse || more.hovered

    signal selected
    signal menuRequested(Item item, real x, real y)
    signal shown

    function openMenu(): void {
        menuRequested(more, 0, more.height + Tokens.spaceTiny);
    }

    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.name: title
    Accessible.role: Accessible.ListItem
    Accessible.selectable: true
    Accessible.selected: isActive
    // While it has the keyboard, it must remain a place that can have it.
    activeFocusOnTab: isCurrent || activeFocus
    implicitHeight: Math.max(more.height, words.implicitHeight) + 2 * 3

    Accessible.onPressAction: selected()
    onActiveFocusChanged: {
        if (activeFocus)
            shown();
    }

    Rectangle {
        anchors.fill: parent
        color: Tokens.faded(Tokens.primary, root.isActive ? 0.08 : root.hovering ? 0.04 : 0)
        radius: 8
    }
    TitleText {
        id: words

        anchors.left: parent.left
        anchors.leftMargin: Tokens.spaceSmall
        anchors.right: more.left
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        color: Tokens.faded(Tokens.primary, root.isActive ? 1 : 0.82)
        markColor: Tokens.accent
        pixelSize: Tokens.body
        query: root.searchQuery
        text: root.title
    }
    MouseArea {
        id: area

        acceptedButtons: Qt.LeftButton | Qt.RightButton
        anchors.fill: parent
        hoverEnabled: true

        onClicked: event => {
            if (event.button === Qt.LeftButton)
                root.selected();
            else
                root.menuRequested(root, event.x, event.y);
        }
    }
    Pressable {
        id: more

        Accessible.name: qsTr("More actions")
        Accessible.role: Accessible.Button
        activeFocusOnTab: false
        anchors.right: parent.right
        anchors.rightMargin: 3
        anchors.verticalCenter: parent.verticalCenter
        height: 22
        // Not quite gone: the pointer and a screen reader still find it.
        opacity: root.hovering || root.isActive || activeFocus || root.activeFocus ? 1 : 0.001
        width: 22

        Accessible.onPressAction: clicked()
        onClicked: root.openMenu()

        Behavior on opacity {
            NumberAnimation {
                duration: 120
                easing.type: Easing.OutQuad
            }
        }

        Loader {
            active: more.opacity > 0.001
            anchors.fill: parent
            sourceComponent: MoreMark {
                isLit: more.hovered || more.down
            }
        }
    }
}
