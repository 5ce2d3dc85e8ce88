// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Gallery
import Velto.Markdown

/// A document, and what one may want to change about its looks.
Window {
    id: root

    required property Replay replay

    color: Tokens.background
    minimumWidth: 320
    title: replay.document
    visible: true

    Row {
        id: bar

        padding: Tokens.spaceSmall
        spacing: Tokens.spaceSmall

        CapsuleButton {
            label: root.replay.themeName
            symbol: "sparkle"

            onClicked: root.replay.nextTheme()
        }
        CapsuleButton {
            label: root.replay.dark ? qsTr("Dark") : qsTr("Light")
            symbol: "lightbulb"

            onClicked: root.replay.dark = !root.replay.dark
        }
        CapsuleButton {
            label: root.replay.running ? qsTr("Show all") : qsTr("Replay")
            symbol: root.replay.running ? "stop.fill" : "arrow.down"

            onClicked: {
                if (root.replay.running)
                    root.replay.showAll();
                else
                    root.replay.start();
            }
        }
    }
    Rectangle {
        anchors.bottom: scroll.top
        color: Tokens.hairline
        height: 1
        width: parent.width
    }
    Flickable {
        id: scroll

        property real start: root.replay.scrollTo

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: bar.bottom
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        contentHeight: view.height + 2 * Tokens.spaceLarge
        contentWidth: width
        pixelAligned: true

        // Follows a text that grows; begins where it is told, as far as there is text.
        onContentHeightChanged: {
            if (root.replay.running) {
                contentY = Math.max(0, contentHeight - height);
            } else if (start > 0) {
                contentY = Math.max(0, Math.min(start, contentHeight - height));
            }
        }
        onMovementStarted: start = 0

        MarkdownText {
            id: view

            width: Math.min(720, scroll.width - 2 * Tokens.spaceLarge)
            x: (scroll.width - width) / 2
            y: Tokens.spaceLarge

            Component.onCompleted: root.replay.view = view
        }
    }
}
