// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick

Text {
    textFormat: Text.PlainText
}
