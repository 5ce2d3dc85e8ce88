// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Presentation

/// The tool calls of one place in an answer. What was open closes when the answer is another one.
ToolGroupRow {
    id: root

    required property AssistantParts parts

    Connections {
        function onPartsChanged(): void {
            root.collapse();
        }

        target: root.parts
    }
}
