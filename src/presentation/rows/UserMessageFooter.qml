// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Below the user's turn: which version of it shows, and when it was written.
Row {
    id: root

    required property UserMessage message
    required property bool hovered

    spacing: Tokens.spaceSmall

    Loader {
        id: navigator

        active: root.message.branchCount >= 2
        anchors.verticalCenter: parent.verticalCenter
        sourceComponent: BranchNavigator {
            current: root.message.activeBranch
            disabled: root.message.isStreaming || root.message.isReadOnly
            total: root.message.branchCount

            onNext: root.message.branchRequested(root.message.activeBranch + 1)
            onPrev: root.message.branchRequested(root.message.activeBranch - 1)
        }
        visible: active
    }
    TimestampLabel {
        anchors.verticalCenter: parent.verticalCenter
        date: root.message.createdAt
        opacity: root.hovered ? 1 : 0.001

        Behavior on opacity {
            NumberAnimation {
                duration: Tokens.quick
                easing.type: Easing.OutQuad
            }
        }
    }
}
