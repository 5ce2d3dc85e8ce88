// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick

/// What fields of text do themselves when they hear the key: here only for the menu.
QtObject {
    required property string text
    required property string nativeText
    property bool enabled: false

    signal activated
}
