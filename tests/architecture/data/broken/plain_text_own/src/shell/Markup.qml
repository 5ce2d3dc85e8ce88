// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

Item {
    Label {
        textFormat: Text.StyledText
    }
    TextArea {
    }
}
