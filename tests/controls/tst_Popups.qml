// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls

TestCase {
    id: root

    property string chosen
    property bool alarmed: false

    height: 500
    name: "Popups"
    visible: true
    when: windowShown
    width: 500

    ProminentButton {
        id: opener

        label: "Open"
    }
    ActionMenu {
        id: menu

        entries: [
            {text: "Rename", symbol: "pencil", shortcut: "F2", activate: () => root.chosen += "rename"},
            {separator: true},
            {text: "Never", enabled: false, activate: () => root.chosen += "never"},
            {text: "Delete", destructive: true, activate: () => root.chosen += "delete"}
        ]
        label: "Actions"
    }
    ActionMenu {
        id: choice

        entries: [
            {text: "One", checked: false, activate: () => root.chosen += "one"},
            {text: "Two", checked: true, activate: () => root.chosen += "two"}
        ]
        label: "Model"
    }
    ActionMenu {
        id: late

        entries: [{text: "Not now", checked: true, enabled: false}, {text: "Now", activate: () => root.chosen += "now"}]
        label: "Late"
    }
    SignalSpy {
        id: steps

        signalName: "stepped"
        target: late
    }
    Alert {
        id: alert

        actions: [
            {label: "Delete", role: "destructive", activate: () => root.chosen += "deleted"},
            {label: "Cancel", role: "cancel", activate: () => root.chosen += "cancelled"}
        ]
        message: "\"This chat\" will be permanently removed."
        shown: root.alarmed
        title: "Delete chat?"

        onDismissed: root.alarmed = false
    }
    TextField {
        id: field

        label: "Search chats"
        placeholderText: "Search"
        width: 200
        y: 100
    }
    SignalSpy {
        id: accepted

        signalName: "accepted"
        target: field
    }
    SignalSpy {
        id: cancelled

        signalName: "cancelled"
        target: field
    }

    function init(): void {
        chosen = "";
        field.text = "";
        accepted.clear();
        cancelled.clear();
        opener.forceActiveFocus();
    }
    function cleanup(): void {
        menu.close();
        choice.close();
        alarmed = false;
        tryVerify(() => !menu.shown && !choice.shown && alert.popup === null);
    }
    function open(which: ActionMenu): void {
        which.openBelow(opener);
        tryVerify(() => which.shown && which.popup.opened);
    }
    function row(index: int): Item {
        return menu.popup.itemAt(index);
    }

    function test_nothingExistsUntilItIsOpened(): void {
        compare(menu.popup, null);
        compare(alert.popup, null);
    }
    function test_arrowsSkipWhatCannotBeChosen(): void {
        open(menu);
        compare(menu.popup.currentIndex, 0);
        keyClick(Qt.Key_Down);
        compare(menu.popup.currentIndex, 3);
        keyClick(Qt.Key_Up);
        compare(menu.popup.currentIndex, 0);
    }
    function test_returnChoosesOnceTheMenuHasGone_data(): var {
        return [{tag: "return", key: Qt.Key_Return}, {tag: "enter", key: Qt.Key_Enter}, {tag: "space", key: Qt.Key_Space}];
    }
    function test_returnChoosesOnceTheMenuHasGone(data): void {
        open(menu);
        keyClick(Qt.Key_Down);
        keyClick(data.key);
        tryVerify(() => !menu.shown);
        compare(chosen, "delete");
        verify(opener.activeFocus);
    }
    function test_clickChooses(): void {
        open(menu);
        mouseClick(row(0));
        tryCompare(root, "chosen", "rename");
        verify(!menu.shown);
    }
    function test_disabledEntryIsNotChosen(): void {
        open(menu);
        mouseClick(row(2));
        compare(chosen, "");
        verify(menu.shown);
    }
    function test_escapeAndAPressOutsideCloseIt(): void {
        open(menu);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !menu.shown);
        open(menu);
        mouseClick(root, 480, 480);
        tryVerify(() => !menu.shown);
        compare(chosen, "");
    }
    function test_itStaysInTheWindow(): void {
        menu.openAt(root, 495, 495);
        tryVerify(() => menu.shown && menu.popup.opened);
        const corner = menu.popup.contentItem.mapToItem(null, menu.popup.contentItem.width, menu.popup.contentItem.height);
        verify(corner.x <= 500 && corner.y <= 500, corner.toString());
    }
    function test_theCheckedEntryIsTheFirstOne(): void {
        open(choice);
        compare(choice.popup.currentIndex, 1);
        keyClick(Qt.Key_Return);
        tryCompare(root, "chosen", "two");
    }
    function test_theFirstEntryIsOneThatCanBeChosen(): void {
        late.openBelow(opener);
        tryVerify(() => late.shown && late.popup.opened);
        compare(late.popup.currentIndex, 1);
        steps.clear();
        keyClick(Qt.Key_Right);
        keyClick(Qt.Key_Left);
        compare(steps.signalArguments.map(given => given[0]), [1, -1]);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !late.shown);
    }
    function test_entriesSayWhatTheyAre(): void {
        open(menu);
        const told = harness.accessible(row(0));
        compare(told.role, Accessible.MenuItem);
        compare(told.name, "Rename");
    }
    function test_assistiveTechnologyCanChoose(): void {
        open(menu);
        verify(harness.pressAccessibly(row(3)));
        tryCompare(root, "chosen", "delete");
    }

    function test_alertHasTheKeyboardOnCancel(): void {
        alarmed = true;
        tryVerify(() => alert.popup !== null && alert.popup.opened);
        keyClick(Qt.Key_Return);
        tryCompare(root, "chosen", "cancelled");
        compare(alarmed, false);
        tryCompare(alert, "popup", null);
        tryVerify(() => opener.activeFocus);
    }
    function test_escapeIsCancel(): void {
        alarmed = true;
        tryVerify(() => alert.popup !== null && alert.popup.opened);
        keyClick(Qt.Key_Escape);
        tryCompare(root, "chosen", "cancelled");
        compare(alarmed, false);
    }
    function test_tabReachesTheOtherAnswerAndNothingBehind(): void {
        alarmed = true;
        tryVerify(() => alert.popup !== null && alert.popup.opened);
        keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_Return);
        tryCompare(root, "chosen", "deleted");
        compare(alarmed, false);
    }
    function test_pressBesideAnAlertDoesNothing(): void {
        alarmed = true;
        tryVerify(() => alert.popup !== null && alert.popup.opened);
        mouseClick(opener);
        compare(alarmed, true);
        compare(chosen, "");
    }
    function test_alertThatIsTakenBackGoes(): void {
        alarmed = true;
        tryVerify(() => alert.popup !== null && alert.popup.opened);
        alarmed = false;
        tryCompare(alert, "popup", null);
        compare(chosen, "");
    }

    function test_fieldIsNamedByItsLabel(): void {
        const told = harness.accessible(field);
        compare(told.role, Accessible.EditableText);
        compare(told.name, "Search chats");
    }
    function test_returnAccepts(): void {
        field.forceActiveFocus();
        keyClick(Qt.Key_A);
        keyClick(Qt.Key_Return);
        compare(accepted.count, 1);
        compare(field.text, "a");
        keyClick(Qt.Key_Escape);
        compare(cancelled.count, 1);
    }
    function test_returnThatEndsACompositionIsNotAccepted(): void {
        field.forceActiveFocus();
        harness.compose(field, "か");
        verify(field.inputMethodComposing);
        keyClick(Qt.Key_Return);
        compare(accepted.count, 0);
        keyClick(Qt.Key_Escape);
        compare(cancelled.count, 0);
    }
}
