// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// One line of text to write in, without a frame of its own. The placeholder is only looked at;
/// `label` is its name. A Return that ends the composition of an input method is not `accepted`.
TextInput {
    id: root

    required property string label
    property string placeholderText

    signal cancelled

    Accessible.editable: true
    Accessible.name: label
    Accessible.role: Accessible.EditableText
    activeFocusOnTab: true
    clip: true
    color: Tokens.primary
    font.pixelSize: Tokens.body
    selectByMouse: true
    selectedTextColor: color
    selectionColor: Tokens.selection

    Keys.onEscapePressed: event => {
        if (inputMethodComposing)
            Qt.inputMethod.reset();
        else
            root.cancelled();
    }
    Keys.onPressed: event => {
        if (event.key !== Qt.Key_Return && event.key !== Qt.Key_Enter)
            return;
        if (inputMethodComposing)
            Qt.inputMethod.commit();
        else
            root.accepted();
        event.accepted = true;
    }

    Text {
        anchors.fill: parent
        color: Tokens.faded(Tokens.secondary, 0.8)
        elide: Text.ElideRight
        font: root.font
        text: root.placeholderText
        textFormat: Text.PlainText
        verticalAlignment: root.verticalAlignment
        visible: root.length === 0 && root.preeditText === ""
    }
}
