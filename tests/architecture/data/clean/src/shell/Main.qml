// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

Item {
    // Text { "red" } in a comment is no element.
    Text {
        textFormat: Text.PlainText
        text: "a { brace and #fff in words"
        color: "transparent"
    }
}
