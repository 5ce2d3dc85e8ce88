// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Markdown
import Velto.Presentation

/// A picture of a reply: as wide as the reply, or what has become of it.
NetworkImage {
    id: root

    required property url rawURL

    readonly property real columnWidth: 720

    url: rawURL

    failure: Component {
        Item {
            Accessible.name: qsTr("Image unavailable")
            Accessible.role: Accessible.StaticText
            implicitHeight: mark.height + 2 * Tokens.spaceTiny
            implicitWidth: root.columnWidth

            Symbol {
                id: mark

                anchors.verticalCenter: parent.verticalCenter
                color: Tokens.secondary
                name: "photo"
                size: 18
            }
            Text {
                anchors.left: mark.right
                anchors.leftMargin: 6
                anchors.verticalCenter: parent.verticalCenter
                color: Tokens.secondary
                font.pixelSize: Tokens.body
                text: qsTr("Image unavailable")
                textFormat: Text.PlainText
            }
        }
    }
    placeholder: Component {
        Item {
            implicitHeight: 120
            implicitWidth: 360

            Spinner {
                anchors.centerIn: parent
            }
        }
    }
    success: Component {
        RoundedPicture {
            image: root.image
            implicitHeight: root.idealSize.height * implicitWidth / Math.max(1, root.idealSize.width)
            implicitWidth: Math.max(root.columnWidth, root.idealSize.width)
            radius: 10
        }
    }
}
