// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// When a message was written. Says how long ago that was when it is made, and doesn't tick.
Text {
    id: root

    required property date date

    Accessible.name: Timestamps.shortForm(date)
    Accessible.role: Accessible.StaticText
    color: Tokens.tertiary
    font.pixelSize: 10 * Tokens.textScale
    text: Timestamps.relative(date)
    textFormat: Text.PlainText
}
