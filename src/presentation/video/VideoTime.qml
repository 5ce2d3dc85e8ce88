// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Seconds as minutes, or hours, that don't move the rest while they run.
// Colours of its own: it lies over a picture.
Label {
    required property real seconds

    readonly property int whole: Math.max(0, Math.floor(seconds))
    readonly property int hours: Math.floor(whole / 3600)
    readonly property int minutes: Math.floor(whole / 60) % 60

    function padded(number: int): string {
        return number < 10 ? "0" + number : number;
    }

    color: "white"
    font.pixelSize: Tokens.caption
    text: hours > 0 ? hours + ":" + padded(minutes) + ":" + padded(whole % 60) : minutes + ":" + padded(whole % 60)
}
