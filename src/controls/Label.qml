// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A text that is in the accessibility tree and that is never taken for markup.
Text {
    color: Tokens.primary
    font.pixelSize: Tokens.body
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
