// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// What all buttons share: the answer to a press, the focus ring, what assistive technology hears.
/// The label is its name, so that a button of nothing but a mark has one too.
Pressable {
    id: root

    required property string label
    /// Longer than the label; shown when the pointer rests.
    property string help
    property real radius: Tokens.radiusSmall

    Accessible.description: help
    Accessible.name: label
    Accessible.onPressAction: {
        if (enabled)
            clicked();
    }
    Accessible.role: Accessible.Button
    opacity: down ? 0.7 : 1
    scale: down ? 0.97 : 1

    Behavior on scale {
        NumberAnimation {
            duration: Tokens.quick
            easing.type: Easing.OutQuad
        }
    }

    Loader {
        active: root.visualFocus
        anchors.fill: parent
        sourceComponent: FocusRing {
            radius: root.radius + 3
        }
    }
}
