// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Text of several lines to write in. The placeholder is only looked at; `label` is its name.
/// Tab leaves it, as it leaves every control.
TextEdit {
    id: root

    required property string label
    property string placeholderText

    Accessible.editable: true
    Accessible.multiLine: true
    Accessible.name: label
    Accessible.role: Accessible.EditableText
    color: Tokens.primary
    font.pixelSize: Tokens.reading
    activeFocusOnTab: true
    selectByMouse: true
    selectedTextColor: color
    selectionColor: Tokens.selection
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap

    Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
    Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)

    Text {
        color: Tokens.faded(Tokens.secondary, 0.8)
        elide: Text.ElideRight
        font: root.font
        horizontalAlignment: root.horizontalAlignment
        text: root.placeholderText
        textFormat: Text.PlainText
        visible: root.length === 0 && root.preeditText === ""
        width: root.width - root.leftPadding - root.rightPadding
        x: root.leftPadding
        y: root.topPadding
    }
}
