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
    /// Whose access token videos are asked for with.
    property AppState appState: null

    /// Something is about to become longer than it shows.
    signal growing
    /// Something has taken another size by itself.
    signal reshaped
    signal linkActivated(url link)

    // Who asks for the height asks at once.
    Component.onCompleted: forceLayout()

    AssistantParts {
        id: assistantParts

        messageRow: root.messageRow
        messages: root.messages
    }
    Repeater {
        model: assistantParts

        Item {
            id: chunk

            required property int index
            required property int kind
            required property real gap
            required property string summary
            required property var tools
            required property url videoURL
            required property string caption

            implicitHeight: gap + view.height
            width: root.width

            Loader {
                id: view

                sourceComponent: [text, toolGroup, video][chunk.kind]
                width: root.width
                y: chunk.gap
            }
            Component {
                id: text

                MediaMarkdownView {
                    parts: assistantParts
                    row: chunk.index
                    width: root.width

                    onGrowing: root.growing()
                    onImplicitHeightChanged: root.reshaped()
                    onLinkActivated: link => root.linkActivated(link)
                }
            }
            Component {
                id: toolGroup

                Loader {
                    width: root.width

                    Component.onCompleted: setSource("ToolChunk.qml", {
                        "parts": assistantParts,
                        "summary": Qt.binding(() => chunk.summary),
                        "tools": Qt.binding(() => chunk.tools)
                    })
                }
            }
            Component {
                id: video

                // By its address: a start without videos doesn't read the player.
                Loader {
                    width: root.width

                    Component.onCompleted: setSource("qrc:/qt/qml/Velto/Video/VideoPlayerView.qml", {
                        "accessToken": root.appState ? root.appState.currentAccessToken() : "",
                        "caption": chunk.caption,
                        "url": chunk.videoURL
                    })
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
