// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls

TestCase {
    id: root

    height: 200
    name: "Buttons"
    visible: true
    when: windowShown
    width: 300

    IconButton {
        id: icon

        label: "Stop"
        help: "Stop generating"
        symbol: "stop.fill"
    }
    ProminentButton {
        id: prominent

        label: "Retry"
        y: 50
    }
    CapsuleButton {
        id: capsule

        label: "A suggestion"
        symbol: "lightbulb"
        y: 100
    }
    SignalSpy {
        id: clicks

        signalName: "clicked"
    }

    function buttons(): var {
        return [icon, prominent, capsule];
    }
    function init(): void {
        clicks.clear();
    }
    function test_nameAndRoleAreTold(): void {
        for (const button of buttons()) {
            const told = harness.accessible(button);
            compare(told.role, Accessible.Button);
            compare(told.name, button.label);
        }
        compare(harness.accessible(icon).description, "Stop generating");
    }
    function test_disabledIsTold(): void {
        compare(harness.accessible(icon).disabled, false);
        icon.enabled = false;
        compare(harness.accessible(icon).disabled, true);
        icon.enabled = true;
    }
    function test_keysAndAssistivePressClick(): void {
        for (const button of buttons()) {
            clicks.clear();
            clicks.target = button;
            button.forceActiveFocus(Qt.TabFocusReason);
            verify(button.visualFocus);
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Enter);
            verify(harness.pressAccessibly(button));
            mouseClick(button);
            compare(clicks.count, 5);
        }
    }
    function test_tabGoesFromOneToTheNext(): void {
        icon.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Tab);
        verify(prominent.activeFocus);
        keyClick(Qt.Key_Backtab);
        verify(icon.activeFocus);
    }
}
