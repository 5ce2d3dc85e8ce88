// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

// Colours of its own: it lies over a picture.
Label {
    color: "white"
}
