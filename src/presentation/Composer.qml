// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Where the user writes. Return sends, Shift-Return breaks the line; what may be sent is not
/// decided here.
FocusScope {
    id: root

    required property string draft
    required property bool canSend
    required property bool isStreaming

    readonly property int maximumLines: 8

    signal edited(string text)
    signal sendRequested
    signal stopRequested

    function focusInput(): void {
        input.forceActiveFocus(Qt.OtherFocusReason);
    }

    implicitHeight: card.height + 14
    implicitWidth: 720

    onDraftChanged: {
        if (input.text !== draft)
            input.text = draft;
    }

    Rectangle {
        id: card

        anchors.left: parent.left
        anchors.leftMargin: 14
        anchors.right: parent.right
        anchors.rightMargin: 14
        border.color: Tokens.faded(Tokens.primary, 0.08)
        color: Tokens.surface
        height: Math.max(scroller.height, 30) + 2 * 10
        radius: 22

        SoftShadow {}
        Flickable {
            id: scroller

            TextArea {
                id: input

                function showCursor(): void {
                    const top = cursorRectangle.y - topPadding;
                    const bottom = cursorRectangle.y + cursorRectangle.height + bottomPadding;
                    scroller.contentY = Math.max(bottom - scroller.height, Math.min(top, scroller.contentY));
                }

                bottomPadding: 6
                focus: true
                font.pixelSize: 14 * Tokens.textScale
                label: qsTr("Message input")
                leftPadding: 6
                placeholderText: qsTr("Message velto…")
                rightPadding: 6
                topPadding: 6
                width: scroller.width

                Keys.onPressed: event => {
                    if (event.key !== Qt.Key_Return && event.key !== Qt.Key_Enter)
                        return;
                    if (inputMethodComposing)
                        Qt.inputMethod.commit();
                    else if (event.modifiers & Qt.ShiftModifier)
                        return;
                    else
                        root.sendRequested();
                    event.accepted = true;
                }
                Component.onCompleted: text = root.draft
                onCursorRectangleChanged: showCursor()
                onTextChanged: root.edited(text)
            }
            anchors.left: parent.left
            anchors.leftMargin: 14 - 6
            anchors.right: button.left
            anchors.rightMargin: 8
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            contentHeight: input.height
            height: Math.min(input.contentHeight, root.maximumLines * metrics.lineSpacing) + 2 * 6
            y: card.height - 10 - height

            onHeightChanged: input.showCursor()

            FontMetrics {
                id: metrics

                font: input.font
            }
        }
        IconButton {
            id: button

            readonly property bool lit: root.isStreaming || root.canSend

            anchors.bottom: parent.bottom
            anchors.bottomMargin: 10
            anchors.right: parent.right
            anchors.rightMargin: 14
            enabled: lit
            fill: lit ? Tokens.accent : Tokens.faded(Tokens.secondary, 0.35)
            help: root.isStreaming ? qsTr("Stop generating (Esc)") : qsTr("Send (Enter)")
            ink: lit ? Tokens.onAccent : Tokens.faded("white", 0.6)
            label: root.isStreaming ? qsTr("Stop") : qsTr("Send")
            size: 30
            symbol: root.isStreaming ? "stop.fill" : "arrow.up"
            symbolSize: root.isStreaming ? 13 : 14

            onClicked: {
                if (root.isStreaming)
                    root.stopRequested();
                else
                    root.sendRequested();
            }

            Behavior on fill {
                ColorAnimation {
                    duration: Tokens.quick
                    easing.type: Easing.OutQuad
                }
            }
        }
    }
}
