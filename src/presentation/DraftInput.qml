// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// The text that is being written: one to eight lines, then it scrolls. Return asks to send it,
/// Shift-Return breaks the line.
Flickable {
    id: root

    required property string draft
    required property Attachments attachments
    /// What the lines may take at most.
    property real maximumHeight: 10000

    readonly property int maximumLines: 8
    readonly property real padding: 6
    readonly property alias input: input

    signal edited(string text)
    signal sendRequested

    function showCursor(): void {
        const top = input.cursorRectangle.y - padding;
        const bottom = input.cursorRectangle.y + input.cursorRectangle.height + padding;
        contentY = Math.max(bottom - height, Math.min(top, contentY));
    }
    function page(direction: int, selecting: bool): void {
        const cursor = input.cursorRectangle;
        const position = input.positionAt(cursor.x, cursor.y + cursor.height / 2 + direction * height);
        if (selecting)
            input.moveCursorSelection(position);
        else
            input.cursorPosition = position;
    }
    function takeReturn(modifiers: int): bool {
        if (input.inputMethodComposing)
            Qt.inputMethod.commit();
        else if (modifiers & Qt.ShiftModifier)
            return false;
        else
            sendRequested();
        return true;
    }
    function takePaste(): bool {
        if (attachments.paste())
            return true;
        field.expectPaste(false);
        return false;
    }
    function take(event: KeyEvent): bool {
        switch (event.key) {
        case Qt.Key_Return:
        case Qt.Key_Enter:
            return takeReturn(event.modifiers);
        case Qt.Key_PageUp:
        case Qt.Key_PageDown:
            page(event.key === Qt.Key_PageUp ? -1 : 1, (event.modifiers & Qt.ShiftModifier) !== 0);
            return true;
        default:
            return event.matches(StandardKey.Paste) && takePaste();
        }
    }

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    contentHeight: input.height
    implicitHeight: Math.min(input.contentHeight, Math.ceil(maximumLines * metrics.lineSpacing), Math.max(maximumHeight - 2 * padding, metrics.lineSpacing)) + 2 * padding

    onHeightChanged: showCursor()

    TextArea {
        id: input

        bottomPadding: root.padding
        focus: true
        font.pixelSize: 14 * Tokens.textScale
        label: qsTr("Message input")
        leftPadding: root.padding
        placeholderText: qsTr("Message velto…")
        rightPadding: root.padding
        topPadding: root.padding
        width: root.width
        wrapMode: field.hasLongWords ? TextEdit.WrapAnywhere : TextEdit.Wrap

        Keys.onPressed: event => event.accepted = root.take(event)
        Component.onCompleted: field.input = input
        onCursorRectangleChanged: root.showCursor()

        PointHandler {
            acceptedButtons: Qt.MiddleButton

            onActiveChanged: {
                if (active)
                    field.expectPaste(true);
            }
        }
    }
    DraftField {
        id: field

        draft: root.draft

        onEdited: text => root.edited(text)
    }
    FontMetrics {
        id: metrics

        font: input.font
    }
}
