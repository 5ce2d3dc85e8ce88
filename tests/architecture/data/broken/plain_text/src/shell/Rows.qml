// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtQuick.Controls as C

Column {
    Text {
        text: "one"
        Item {
            property int textFormat: Text.PlainText
        }
    }
    Text {
        textFormat: Text.StyledText
    }
    TextEdit { text: "textFormat: TextEdit.PlainText" }
    C.Label {
        // textFormat: Text.PlainText
    }
    component Area: TextArea {
        textFormat: TextEdit.MarkdownText
    }
    TextArea {
        textFormat: TextEdit.PlainText
    }
}
