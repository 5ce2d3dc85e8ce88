// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick

/// A command that only the menu has. What `nativeText` names is a key that somebody else hears, as
/// fields of text do.
QtObject {
    required property string text
    property string nativeText
    property bool enabled: true

    signal activated
}
