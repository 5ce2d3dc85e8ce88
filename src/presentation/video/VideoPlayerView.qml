// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Video

/// A video of an answer with its controls and caption. Plays when it is told to, and pauses when it
/// goes out of sight.
// Colours of its own: what lies over a picture is the same in light and dark.
Item {
    id: root

    required property url url
    property string caption
    property string accessToken

    readonly property alias isFullScreen: fullScreen.isOn
    readonly property bool hasFailed: player.playback.state === VideoPlayback.Failed
    readonly property bool isReady: player.playback.state === VideoPlayback.Ready

    implicitHeight: area.height + (caption === "" ? 0 : 6 + captionLabel.implicitHeight)
    implicitWidth: 480

    FullScreenMode {
        id: fullScreen

        window: root.Window.window

        // Once the video has its new place: on the way there it loses the focus.
        onIsOnChanged: Qt.callLater(player.forceActiveFocus)
    }
    Item {
        id: area

        height: Math.round(width * 9 / 16)
        width: root.width

        FocusScope {
            id: stage

            Keys.onEscapePressed: event => {
                event.accepted = fullScreen.isOn;
                fullScreen.isOn = false;
            }
            Keys.onPressed: event => {
                event.accepted = event.key === Qt.Key_F;
                if (event.accepted)
                    fullScreen.toggle();
            }
            anchors.fill: parent
            parent: fullScreen.isOn ? root.Window.contentItem : area
            z: fullScreen.isOn ? 1000 : 0

            Rectangle {
                anchors.fill: parent
                color: root.isReady || fullScreen.isOn ? "black" : Tokens.faded(Tokens.primary, 0.06)
                radius: fullScreen.isOn ? 0 : 10
            }
            VideoPlayer {
                id: player

                Accessible.focusable: root.isReady
                Accessible.name: root.caption === "" ? qsTr("Video") : root.caption
                Accessible.onPressAction: playback.togglePlaying()
                Accessible.role: Accessible.Grouping
                Keys.onDownPressed: playback.volume -= 0.05
                Keys.onLeftPressed: playback.seek(playback.position - 5)
                Keys.onRightPressed: playback.seek(playback.position + 5)
                // The window's own use of Escape waits until the video no longer fills the screen.
                Keys.onShortcutOverride: event => {
                    event.accepted = fullScreen.isOn && event.key === Qt.Key_Escape;
                }
                Keys.onSpacePressed: playback.togglePlaying()
                Keys.onUpPressed: playback.volume += 0.05
                accessToken: root.accessToken
                activeFocusOnTab: root.isReady
                anchors.fill: parent
                enabled: !root.hasFailed
                focus: true
                source: root.url
                visible: !root.hasFailed
            }
            MouseArea {
                id: picture

                anchors.fill: parent
                enabled: root.isReady
                hoverEnabled: true

                onClicked: {
                    player.forceActiveFocus();
                    player.playback.togglePlaying();
                }
                onDoubleClicked: fullScreen.toggle()
                onPositionChanged: rest.restart()
            }
            Timer {
                id: rest

                interval: 2000
            }
            Rectangle {
                anchors.centerIn: parent
                color: "#80000000"
                height: width
                radius: width / 2
                visible: root.isReady && !player.playback.isPlaying
                width: 56

                Symbol {
                    anchors.centerIn: parent
                    color: "white"
                    name: "play.fill"
                    size: 32
                }
            }
            Spinner {
                anchors.centerIn: parent
                size: 24
                visible: !root.hasFailed && (!root.isReady || player.playback.isBuffering)
            }
            Row {
                anchors.centerIn: parent
                spacing: Tokens.spaceSmall
                visible: root.hasFailed

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    color: Tokens.secondary
                    name: "video.slash"
                    size: 18
                }
                Label {
                    color: Tokens.secondary
                    text: qsTr("Video unavailable")
                }
            }
            VideoControls {
                id: controls

                readonly property bool isWanted: !player.playback.isPlaying || rest.running || hover.hovered || stage.activeFocus && !player.activeFocus

                anchors.bottom: parent.bottom
                isFullScreen: fullScreen.isOn
                // What assistive technology is to see must not be quite invisible.
                opacity: isWanted ? 1 : 0.001
                playback: player.playback
                visible: root.isReady
                width: parent.width

                onFullScreenToggled: fullScreen.toggle()

                Behavior on opacity {
                    NumberAnimation {
                        duration: Tokens.quick
                    }
                }
                HoverHandler {
                    id: hover
                }
            }
            // The corners: a ring of the colour around, whose inner edge is round.
            Rectangle {
                anchors.fill: parent
                anchors.margins: -border.width
                border.color: Tokens.background
                border.width: 5
                color: "transparent"
                radius: 10 + border.width
                visible: !fullScreen.isOn
            }
            FocusRing {
                radius: 13
                visible: player.activeFocus && !fullScreen.isOn
            }
        }
    }
    Label {
        id: captionLabel

        anchors.top: area.bottom
        anchors.topMargin: 6
        color: Tokens.secondary
        font.pixelSize: Tokens.caption
        text: root.caption
        visible: text !== ""
        width: root.width
        wrapMode: Text.Wrap
    }
}
