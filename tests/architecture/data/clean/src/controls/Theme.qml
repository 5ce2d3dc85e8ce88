// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick

QtObject {
    readonly property color accent: "#3366cc"
}
