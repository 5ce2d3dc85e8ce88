// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// A surface for code with its title: what a tool was given, what it gave, what went wrong.
Column {
    id: root

    property string title
    required property string text
    property bool isError: false
    property string language

    spacing: 3

    Label {
        color: Tokens.secondary
        font.capitalization: Font.AllUppercase
        font.letterSpacing: 0.6
        font.pixelSize: 9 * Tokens.textScale
        font.weight: Font.DemiBold
        text: root.title
        visible: root.title !== ""
    }
    ToolCode {
        Accessible.focusable: true
        Accessible.name: root.title !== "" ? root.title : qsTr("Code")
        Accessible.role: Accessible.Document
        code: root.text
        height: implicitHeight
        isError: root.isError
        language: root.language
        width: root.width
    }
}
