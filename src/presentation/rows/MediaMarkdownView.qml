// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Markdown
import Velto.Presentation

/// One Markdown text of a reply. Shows where a link leads while the pointer rests on it.
MediaMarkdown {
    id: root

    // Text that can be selected with the keyboard holds the focus, and says so.
    Accessible.focusable: true
    Accessible.name: qsTr("Answer")
    Accessible.role: Accessible.Document
    height: implicitHeight

    Loader {
        active: root.hoveredLink !== ""
        z: 2

        Component.onCompleted: setSource("AnswerLinkTip.qml", {answer: root})
    }
}
