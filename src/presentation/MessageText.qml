// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// One text part of a message: plain, selectable, growing with the stream.
TextEdit {
    id: root

    required property MessageListModel messages
    required property int messageRow
    required property int part

    signal growing

    Accessible.name: ""
    Accessible.readOnly: true
    Accessible.role: Accessible.StaticText
    color: Tokens.primary
    font.pixelSize: Tokens.reading
    readOnly: true
    selectByMouse: true
    selectedTextColor: color
    selectionColor: Tokens.selection
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap

    StreamedText {
        document: root.textDocument
        lineHeight: Tokens.readingLineHeight
        messageRow: root.messageRow
        messages: root.messages
        part: root.part

        onGrowing: root.growing()
    }
}
