// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// What an assistant has said and done, in the order in which it came.
Column {
    id: root

    required property MessageListModel messages
    required property int messageRow

    /// Something is about to become longer than it shows.
    signal growing
    signal linkActivated(url link)

    spacing: 6

    // Who asks for the height asks at once.
    Component.onCompleted: forceLayout()

    AssistantParts {
        id: assistantParts

        messageRow: root.messageRow
        messages: root.messages
    }
    Repeater {
        model: assistantParts

        Loader {
            id: chunk

            required property int index
            required property bool isTools
            required property string summary
            required property var tools

            sourceComponent: isTools ? toolGroup : text
            width: root.width

            Component {
                id: text

                MediaMarkdownView {
                    parts: assistantParts
                    row: chunk.index
                    width: root.width

                    onGrowing: root.growing()
                    onLinkActivated: link => root.linkActivated(link)
                }
            }
            Component {
                id: toolGroup

                ToolGroupRow {
                    id: group

                    summary: chunk.summary
                    tools: chunk.tools
                    width: root.width

                    Connections {
                        function onPartsChanged(): void {
                            group.collapse();
                        }

                        target: assistantParts
                    }
                }
            }
        }
    }
    Loader {
        active: assistantParts.count === 0
        sourceComponent: ShimmerText {
            Accessible.name: qsTr("Generating response")
            Accessible.role: Accessible.StaticText
            font.pixelSize: Tokens.reading
            text: qsTr("Thinking…")
        }
        visible: active
    }
}
