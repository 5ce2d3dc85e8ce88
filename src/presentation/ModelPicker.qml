// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// Which model answers; who may choose another one opens a menu of them here.
Loader {
    id: root

    required property AppState appState

    Component.onCompleted: choice.load()

    ModelChoice {
        id: choice

        appState: root.appState
    }
    ActionMenu {
        id: menu

        label: qsTr("Choose model")
    }
    sourceComponent: choice.canChoose ? button : plain

    Component {
        id: plain

        Label {
            Accessible.description: text
            Accessible.name: qsTr("Model")
            font.pixelSize: 12 * Tokens.textScale
            font.weight: Font.Medium
            text: choice.label
        }
    }
    Component {
        id: button

        PressableButton {
            function open(): void {
                menu.entries = choice.options.map(option => ({
                            text: option.label,
                            checked: option.isSelected,
                            activate: () => choice.choose(option.selectionKey)
                        }));
                menu.openBelow(root);
            }

            Accessible.description: name.text
            help: qsTr("Model")
            implicitHeight: name.implicitHeight
            implicitWidth: chevron.x + chevron.width
            label: qsTr("Choose model")

            Keys.onDownPressed: open()
            onClicked: open()

            Text {
                id: name

                color: Tokens.primary
                font.pixelSize: 12 * Tokens.textScale
                font.weight: Font.Medium
                text: choice.label
                textFormat: Text.PlainText
            }
            Symbol {
                id: chevron

                anchors.verticalCenter: name.verticalCenter
                color: Tokens.primary
                name: "chevron.down"
                opacity: 0.7
                size: 9 * Tokens.textScale
                x: name.width + 4
            }
        }
    }
}
