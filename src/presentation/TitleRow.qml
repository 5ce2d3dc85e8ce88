// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// The conversation's title on one quiet line; takes no room without one.
Item {
    id: root

    required property string title

    implicitHeight: title === "" ? 0 : label.implicitHeight + 14
    visible: title !== ""

    Label {
        id: label

        anchors.left: parent.left
        anchors.margins: 20
        anchors.right: parent.right
        color: Tokens.secondary
        elide: Text.ElideRight
        font.pixelSize: 12 * Tokens.textScale
        maximumLineCount: 1
        text: root.title
        y: 4
    }
}
