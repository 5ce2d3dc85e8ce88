// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Video

/// The bar along the lower edge of a video.
// Colours of its own: it lies over a picture.
Item {
    id: root

    required property VideoPlayback playback
    property bool isFullScreen: false

    /// Seconds that an arrow key goes forth or back.
    readonly property real step: 5
    readonly property bool hasRoomForVolume: width >= 360

    signal fullScreenToggled

    implicitHeight: 56

    Rectangle {
        anchors.fill: parent

        gradient: Gradient {
            GradientStop {
                color: "transparent"
                position: 0
            }
            GradientStop {
                color: "#b0000000"
                position: 1
            }
        }
    }
    // Presses between the buttons are not meant for the picture below.
    MouseArea {
        anchors.bottom: parent.bottom
        height: 40
        width: parent.width
    }
    Row {
        id: row

        anchors.bottom: parent.bottom
        anchors.bottomMargin: 6
        anchors.left: parent.left
        anchors.leftMargin: 8
        anchors.right: parent.right
        anchors.rightMargin: 8
        spacing: Tokens.spaceSmall

        IconButton {
            ink: "white"
            label: root.playback.isPlaying ? qsTr("Pause") : qsTr("Play")
            symbol: root.playback.isPlaying ? "pause.fill" : "play.fill"
            symbolSize: 20

            onClicked: root.playback.togglePlaying()
        }
        VideoTime {
            anchors.verticalCenter: parent.verticalCenter
            seconds: root.playback.position
            width: Math.max(implicitWidth, total.implicitWidth)
        }
        VideoSlider {
            anchors.verticalCenter: parent.verticalCenter
            help: elapsed.text
            label: qsTr("Position")
            maximumValue: root.playback.duration
            stepSize: root.step
            value: root.playback.position
            width: row.width - x - rest.width - row.spacing

            onMoved: value => root.playback.seek(value)
        }
        Row {
            id: rest

            spacing: Tokens.spaceTiny

            VideoTime {
                id: total

                anchors.verticalCenter: parent.verticalCenter
                seconds: root.playback.duration
            }
            IconButton {
                ink: "white"
                label: root.playback.isMuted ? qsTr("Unmute") : qsTr("Mute")
                symbol: root.playback.isMuted ? "speaker.slash.fill" : "speaker.wave.2.fill"
                symbolSize: 18

                onClicked: root.playback.isMuted = !root.playback.isMuted
            }
            VideoSlider {
                anchors.verticalCenter: parent.verticalCenter
                label: qsTr("Volume")
                stepSize: 0.05
                value: root.playback.isMuted ? 0 : root.playback.volume
                visible: root.hasRoomForVolume

                onMoved: value => {
                    root.playback.isMuted = false;
                    root.playback.volume = value;
                }
            }
            IconButton {
                ink: "white"
                label: root.isFullScreen ? qsTr("Leave full screen") : qsTr("Full screen")
                symbol: root.isFullScreen ? "arrow.down.right.and.arrow.up.left" : "arrow.up.left.and.arrow.down.right"
                symbolSize: 20

                onClicked: root.fullScreenToggled()
            }
        }
    }
    VideoTime {
        id: elapsed

        Accessible.ignored: true
        seconds: root.playback.position
        visible: false
    }
}
