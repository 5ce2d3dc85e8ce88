// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQml

/// Where the chat screen would let a hand feel that an answer streams. No desktop has anything to
/// feel it with, so nothing happens here.
QtObject {
    required property bool isStreaming
}
