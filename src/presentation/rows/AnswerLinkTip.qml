// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Markdown
import Velto.Presentation

/// Where the link under the pointer leads.
LinkTip {
    required property MediaMarkdownView answer

    link: answer.hoveredLink
    point: answer.hoveredPoint
    room: answer.width
}
