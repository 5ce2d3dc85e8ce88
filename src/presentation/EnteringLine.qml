// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A line between messages and composer that comes in softly and goes at once.
Loader {
    id: root

    /// It rises from the edge below while it comes.
    property bool rises: false

    visible: active

    onLoaded: entrance.restart()

    ParallelAnimation {
        id: entrance

        NumberAnimation {
            duration: Tokens.quick
            easing.type: Easing.OutQuad
            from: 0.001 // with 0 it would not be there for assistive technology
            property: "opacity"
            target: root
            to: 1
        }
        NumberAnimation {
            duration: Tokens.quick
            easing.type: Easing.OutQuad
            from: root.rises ? root.height : 0
            property: "y"
            target: shift
            to: 0
        }
    }

    transform: Translate {
        id: shift
    }
}
