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
    function test_spaceClicksWhenItIsLetGo(): void {
        clicks.target = icon;
        icon.forceActiveFocus(Qt.TabFocusReason);
        keyPress(Qt.Key_Space);
        verify(icon.down);
        compare(clicks.count, 0);
        keyRelease(Qt.Key_Space);
        verify(!icon.down);
        compare(clicks.count, 1);
    }
    function test_losingTheFocusTakesSpaceBack(): void {
        clicks.target = icon;
        icon.forceActiveFocus(Qt.TabFocusReason);
        keyPress(Qt.Key_Space);
        prominent.forceActiveFocus();
        keyRelease(Qt.Key_Space);
        verify(!icon.down);
        compare(clicks.count, 0);
    }
    function test_pointerThatLeavesDoesNotClick(): void {
        clicks.target = prominent;
        mousePress(prominent);
        verify(prominent.down);
        mouseMove(prominent, -20, -20);
        verify(!prominent.down);
        mouseRelease(prominent, -20, -20);
        compare(clicks.count, 0);
    }
    function test_otherMouseButtonsDoNotClick(): void {
        clicks.target = prominent;
        mouseClick(prominent, 5, 5, Qt.RightButton);
        compare(clicks.count, 0);
    }
    function test_onlyTheKeyboardShowsTheFocus(): void {
        mouseClick(prominent);
        verify(prominent.activeFocus);
        verify(!prominent.visualFocus);
        icon.forceActiveFocus(Qt.TabFocusReason);
        verify(icon.visualFocus);
        mouseClick(icon);
        verify(!icon.visualFocus);
    }
    function test_disabledTakesNothing(): void {
        clicks.target = icon;
        icon.enabled = false;
        mouseClick(icon);
        harness.pressAccessibly(icon);
        compare(clicks.count, 0);
        verify(!icon.hovered);
        icon.enabled = true;
    }
}
