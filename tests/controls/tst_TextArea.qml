// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls

TestCase {
    height: 200
    name: "TextArea"
    visible: true
    when: windowShown
    width: 300

    TextArea {
        id: area

        label: "Message input"
        placeholderText: "Message"
        width: 200
    }
    ProminentButton {
        id: next

        label: "Next"
        y: 150
    }

    function init(): void {
        area.text = "";
        area.forceActiveFocus();
    }
    function test_labelIsItsNameAndThePlaceholderIsNot(): void {
        const told = harness.accessible(area);
        compare(told.role, Accessible.EditableText);
        compare(told.name, "Message input");
    }
    function test_tabLeavesIt(): void {
        keyClick(Qt.Key_Tab);
        verify(next.activeFocus);
        compare(area.text, "");
    }
    function test_markupIsText(): void {
        area.text = "<b>x</b>";
        compare(area.getText(0, area.length), "<b>x</b>");
    }
}
