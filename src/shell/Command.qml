// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick

/// Something the user can have done from the menu or with its key.
Shortcut {
    required property string text
}
