// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Dims what can't be used until what lies over it has gone.
Rectangle {
    color: Tokens.faded("black", 0.28)
}
