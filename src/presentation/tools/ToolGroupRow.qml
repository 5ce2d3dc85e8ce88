// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// The tool calls between two texts. One stands for itself; several are one line until it is opened.
Column {
    id: root

    required property var tools
    required property string summary
    property bool expanded: false

    /// What was open closes.
    function collapse(): void {
        expanded = false;
        if (single.item)
            (single.item as ToolDetailRow).expanded = false;
    }

    Loader {
        id: single

        active: root.tools.length === 1
        sourceComponent: ToolDetailRow {
            tool: root.tools[0]
        }
        visible: active
        width: root.width
    }
    Loader {
        active: root.tools.length > 1
        sourceComponent: DisclosureHeader {
            expanded: root.expanded
            label: root.summary

            onClicked: root.expanded = !root.expanded

            Text {
                color: Tokens.secondary
                font.pixelSize: Tokens.caption
                text: root.summary
                textFormat: Text.PlainText
            }
        }
        visible: active
    }
    Loader {
        active: root.expanded && root.tools.length > 1
        sourceComponent: Item {
            implicitHeight: rows.height

            Rectangle {
                color: Tokens.faded(Tokens.primary, 0.08)
                height: parent.height
                width: 1
                x: 8
            }
            Column {
                id: rows

                width: parent.width - x
                x: 12

                Repeater {
                    model: root.tools

                    ToolDetailRow {
                        required property var modelData

                        tool: modelData
                        width: rows.width
                    }
                }
            }
        }
        visible: active
        width: root.width
    }
}
