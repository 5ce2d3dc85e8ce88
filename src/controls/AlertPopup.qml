// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtQuick.Templates as T
import Velto.Controls

/// What `Alert` shows; made by it alone.
T.Popup {
    id: root

    required property var actions
    required property string title
    required property string message

    readonly property bool isDestructive: actions.some(action => action.role === "destructive")

    signal answered(var action)

    function cancel(): void {
        answered(actions.find(action => action.role === "cancel"));
    }

    closePolicy: T.Popup.NoAutoClose
    dim: true
    focus: true
    height: Math.min(implicitHeight, (parent?.height ?? 0) - 2 * margins)
    implicitHeight: contentItem.implicitHeight + 2 * padding
    margins: Tokens.spaceMedium
    modal: true
    padding: Tokens.spaceLarge
    parent: T.Overlay.overlay
    width: Math.min(340, (parent?.width ?? 0) - 2 * margins)
    x: Math.round(((parent?.width ?? 0) - width) / 2)
    y: Math.round(((parent?.height ?? 0) - height) / 2)

    background: Rectangle {
        border.color: Tokens.hairline
        color: Tokens.surface
        radius: Tokens.radiusMedium + 2

        SoftShadow {
            opacity: 0.25
        }
    }
    contentItem: FocusScope {
        Accessible.description: root.message
        Accessible.name: root.title
        Accessible.role: Accessible.AlertMessage
        focus: true
        implicitHeight: words.height + Tokens.spaceLarge + buttons.implicitHeight

        Keys.onEscapePressed: root.cancel()

        Flickable {
            id: words

            boundsBehavior: Flickable.StopAtBounds
            clip: contentHeight > height
            contentHeight: texts.implicitHeight
            height: Math.min(contentHeight, root.parent === null ? contentHeight : root.parent.height * 0.6)
            width: parent.width

            Column {
                id: texts

                spacing: Tokens.spaceSmall
                width: parent.width

                Label {
                    font.pixelSize: Tokens.reading
                    font.weight: Font.DemiBold
                    horizontalAlignment: Text.AlignHCenter
                    text: root.title
                    width: parent.width
                    wrapMode: Text.Wrap
                }
                Label {
                    color: Tokens.secondary
                    horizontalAlignment: Text.AlignHCenter
                    text: root.message
                    width: parent.width
                    wrapMode: Text.Wrap
                }
            }
        }
        Row {
            id: buttons

            readonly property real share: (width - spacing * (root.actions.length - 1)) / root.actions.length

            anchors.bottom: parent.bottom
            spacing: Tokens.spaceSmall
            width: parent.width

            Repeater {
                model: root.actions

                AlertButton {
                    required property var modelData

                    focus: modelData.role === "cancel" || (!root.isDestructive && root.actions.length === 1)
                    label: modelData.label
                    role: modelData.role ?? ""
                    width: buttons.share

                    onClicked: root.answered(modelData)
                }
            }
        }
    }
    T.Overlay.modal: Scrim {}
}
