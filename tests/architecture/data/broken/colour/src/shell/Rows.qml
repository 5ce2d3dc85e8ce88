// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick

Rectangle {
    color: "#ff0000"
    border.color: 'navy'
    property color over: Qt.rgba(0, 0, 0, 0.5)
    property color under: hovered ? "white" : "transparent"
}
