// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Tells what went wrong and offers to try again.
Item {
    id: root

    required property string message

    signal dismissed
    signal retried

    Accessible.name: qsTr("Something went wrong")
    Accessible.role: Accessible.AlertMessage
    implicitHeight: card.height + 6
    implicitWidth: 720

    Rectangle {
        id: card

        anchors.left: parent.left
        anchors.leftMargin: 14
        anchors.right: parent.right
        anchors.rightMargin: 14
        border.color: Tokens.hairline
        color: Tokens.surface
        height: Math.max(texts.height, retry.height) + 2 * Tokens.spaceMedium
        radius: Tokens.radiusMedium

        Symbol {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            color: Tokens.warning
            name: "exclamationmark.triangle.fill"
            size: 16
            x: 14
        }
        Column {
            id: texts

            anchors.left: mark.right
            anchors.leftMargin: Tokens.spaceMedium
            anchors.right: retry.left
            anchors.rightMargin: Tokens.spaceMedium
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Label {
                font.pixelSize: 12 * Tokens.textScale
                font.weight: Font.Medium
                text: qsTr("Something went wrong")
                width: parent.width
                wrapMode: Text.Wrap
            }
            Item {
                clip: true
                height: Math.min(details.contentHeight, 3 * metrics.lineSpacing)
                width: parent.width

                TextEdit {
                    id: details

                    Accessible.name: text
                    Accessible.readOnly: true
                    Accessible.role: Accessible.StaticText
                    color: Tokens.secondary
                    font.pixelSize: 11 * Tokens.textScale
                    readOnly: true
                    selectByMouse: true
                    selectedTextColor: color
                    selectionColor: Tokens.selection
                    text: root.message
                    textFormat: TextEdit.PlainText
                    width: parent.width
                    wrapMode: TextEdit.Wrap
                }
                FontMetrics {
                    id: metrics

                    font: details.font
                }
            }
        }
        ProminentButton {
            id: retry

            anchors.right: dismiss.left
            anchors.rightMargin: Tokens.spaceSmall
            anchors.verticalCenter: parent.verticalCenter
            label: qsTr("Retry")
            small: true

            onClicked: root.retried()
        }
        IconButton {
            id: dismiss

            anchors.right: parent.right
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            label: qsTr("Dismiss")
            size: 22
            symbol: "xmark"
            symbolSize: 10

            onClicked: root.dismissed()
        }
    }
}
