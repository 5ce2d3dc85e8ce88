// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

// Colours of its own: they lie on a picture that is the same in light and dark.
import QtQuick
import Velto.Controls

/// The whole window while nobody is signed in. One action: sign in through the browser.
FocusScope {
    id: root

    property bool appeared: false

    signal signInRequested

    Component.onCompleted: appeared = true

    Image {
        anchors.fill: parent
        asynchronous: false
        source: Qt.resolvedUrl("images/login-background.jpg")
    }
    Rectangle {
        anchors.fill: parent

        gradient: Gradient {
            GradientStop {
                color: Tokens.faded("black", 0.35)
                position: 0
            }
            GradientStop {
                color: Tokens.faded("black", 0.05)
                position: 0.32
            }
            GradientStop {
                color: Tokens.faded("black", 0.2)
                position: 0.6
            }
            GradientStop {
                color: Tokens.faded("black", 0.78)
                position: 1
            }
        }
    }
    Column {
        id: column

        anchors.bottom: parent.bottom
        anchors.bottomMargin: 56
        anchors.horizontalCenter: parent.horizontalCenter
        opacity: root.appeared ? 1 : 0
        spacing: Tokens.spaceMedium
        width: parent.width - 2 * 32

        transform: Translate {
            y: root.appeared ? 0 : 12

            Behavior on y {
                NumberAnimation {
                    duration: 700
                    easing.type: Easing.OutQuad
                }
            }
        }
        Behavior on opacity {
            NumberAnimation {
                duration: 700
                easing.type: Easing.OutQuad
            }
        }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            color: "white"
            font.pixelSize: 38 * Tokens.textScale
            font.weight: Font.DemiBold
            text: qsTr("velto")
        }
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Tokens.faded("white", 0.85)
            font.pixelSize: 15 * Tokens.textScale
            font.weight: Font.Medium
            text: qsTr("Your AI colleague")
        }
        Item {
            height: Tokens.spaceMedium
            width: 1
        }
        PressableButton {
            id: button

            anchors.horizontalCenter: parent.horizontalCenter
            focus: true
            height: 52
            label: qsTr("Continue with Google")
            radius: 14
            width: Math.min(360, parent.width)

            Rectangle {
                anchors.fill: parent
                border.color: Tokens.faded("white", 0.3)
                border.width: 1
                color: "white"
                radius: button.radius
            }
            Row {
                anchors.centerIn: parent
                spacing: 10

                Symbol {
                    id: glyph

                    anchors.verticalCenter: parent.verticalCenter
                    color: "black"
                    letterColor: "white"
                    name: "g.circle.fill"
                    size: Math.round(15 * Tokens.textScale)
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    color: "black"
                    font.pixelSize: 15 * Tokens.textScale
                    font.weight: Font.Medium
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 9
                    text: button.label
                    textFormat: Text.PlainText
                    width: Math.min(implicitWidth, button.width - 2 * 16 - glyph.width - parent.spacing)
                }
            }

            onClicked: root.signInRequested()
        }
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Tokens.faded("white", 0.65)
            font.pixelSize: 12 * Tokens.textScale
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("By continuing, you agree to velto's Terms.")
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
}
