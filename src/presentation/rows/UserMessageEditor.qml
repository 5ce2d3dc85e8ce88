// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// The user's turn while it is rewritten.
Column {
    id: root

    required property string text

    readonly property int maximumLines: 10

    signal cancelled
    signal accepted(string text)

    function send(): void {
        if (sendButton.enabled)
            accepted(input.text);
    }

    spacing: Tokens.spaceSmall

    Rectangle {
        anchors.right: parent.right
        border.color: Tokens.accent
        color: "transparent"
        height: scroller.height
        radius: 18
        width: Math.min(560, root.width)

        Flickable {
            id: scroller

            boundsBehavior: Flickable.StopAtBounds
            clip: true
            contentHeight: input.height
            height: Math.min(input.contentHeight, Math.ceil(root.maximumLines * metrics.lineSpacing)) + 2 * 10
            width: parent.width

            TextArea {
                id: input

                function showCursor(): void {
                    const top = cursorRectangle.y - topPadding;
                    const bottom = cursorRectangle.y + cursorRectangle.height + bottomPadding;
                    scroller.contentY = Math.max(bottom - scroller.height, Math.min(top, scroller.contentY));
                }

                bottomPadding: 10
                font.pixelSize: 14 * Tokens.textScale
                label: qsTr("Edit message")
                leftPadding: 14
                rightPadding: 14
                topPadding: 10
                width: scroller.width

                Keys.onPressed: event => {
                    const isReturn = event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
                    if (event.key === Qt.Key_Escape)
                        root.cancelled();
                    else if (isReturn && event.modifiers & Qt.ControlModifier)
                        root.send();
                    else
                        return;
                    event.accepted = true;
                }
                Component.onCompleted: {
                    text = root.text;
                    cursorPosition = length;
                    forceActiveFocus(Qt.OtherFocusReason);
                }
                onCursorRectangleChanged: showCursor()
            }
            FontMetrics {
                id: metrics

                font: input.font
            }
        }
    }
    Row {
        anchors.right: parent.right
        spacing: Tokens.spaceSmall

        PlainButton {
            label: qsTr("Cancel")
            small: true

            onClicked: root.cancelled()
        }
        ProminentButton {
            id: sendButton

            enabled: input.text.trim() !== ""
            help: qsTr("Send (Ctrl+Enter)")
            label: qsTr("Send")
            small: true

            onClicked: root.send()
        }
    }
}
