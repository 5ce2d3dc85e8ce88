// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A mark of the icon vocabulary; `size` is the size of the text it stands beside.
Text {
    id: root

    required property string name
    property real size: Tokens.body
    /// Colour of the letter that some marks hold.
    property color letterColor: Tokens.background

    // The font's glyphs leave a margin that letters don't have.
    readonly property real fontScale: 1.3
    readonly property string letter: Symbols.letter(name)

    color: Tokens.primary
    font.family: Symbols.family
    font.pixelSize: Math.round(size * fontScale)
    horizontalAlignment: Text.AlignHCenter
    text: Symbols.glyph(name)
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter

    Loader {
        active: root.letter !== ""
        anchors.centerIn: parent
        sourceComponent: Text {
            color: root.letterColor
            font.bold: true
            font.pixelSize: Math.round(root.size * 0.75)
            text: root.letter
            textFormat: Text.PlainText
        }
    }
}
