// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// One tool call: its name and how it stands, and what went in and came out once it is opened.
Column {
    id: root

    required property toolCall tool
    property bool expanded: false

    readonly property string stateWord: {
        switch (tool.state) {
        case ToolCallState.Running:
            return qsTr("running");
        case ToolCallState.Failed:
            return qsTr("failed");
        default:
            return qsTr("complete");
        }
    }

    DisclosureHeader {
        expanded: root.expanded
        label: qsTr("Tool %1 — %2").arg(root.tool.name).arg(root.stateWord)
        width: Math.min(implicitWidth, root.width)

        onClicked: root.expanded = !root.expanded

        Loader {
            anchors.verticalCenter: parent.verticalCenter
            height: 12
            sourceComponent: root.tool.state === ToolCallState.Running ? spinner : mark
            width: 12
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            color: Tokens.secondary
            elide: Text.ElideMiddle
            font.family: Tokens.monospaced
            font.pixelSize: Tokens.caption
            maximumLineCount: 1
            text: root.tool.name
            textFormat: Text.PlainText
            width: Math.min(implicitWidth, root.width - 50)
        }
    }
    Loader {
        active: root.expanded
        sourceComponent: details
        visible: active
        width: root.width
    }
    Component {
        id: spinner

        Spinner {
            size: 12
        }
    }
    Component {
        id: mark

        Symbol {
            color: root.tool.state === ToolCallState.Failed ? Tokens.failure : Tokens.success
            name: root.tool.state === ToolCallState.Failed ? "xmark.circle.fill" : "checkmark.circle.fill"
            size: 11
        }
    }
    Component {
        id: details

        Column {
            bottomPadding: 4
            leftPadding: 16
            spacing: Tokens.spaceSmall
            topPadding: Tokens.spaceTiny

            Loader {
                active: root.tool.inputJSON !== ""
                sourceComponent: ToolCodeBlock {
                    text: root.tool.inputJSON
                    title: qsTr("Parameters")
                }
                visible: active
                width: root.width - 16
            }
            Loader {
                active: root.tool.hasError || root.tool.outputJSON !== ""
                sourceComponent: ToolCodeBlock {
                    isError: root.tool.hasError
                    text: root.tool.hasError ? root.tool.errorText : root.tool.outputJSON
                    title: root.tool.hasError ? qsTr("Error") : qsTr("Result")
                }
                visible: active
                width: root.width - 16
            }
        }
    }
}
