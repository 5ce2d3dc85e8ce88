// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls
import Velto.Presentation

TestCase {
    id: root

    property AppState appState
    property ChatView view
    property Item input
    property Item button

    height: 600
    name: "Composer"
    visible: true
    when: windowShown
    width: 600

    Component {
        id: chatView

        ChatView {
            anchors.fill: parent
        }
    }
    SignalSpy {
        id: requests

        signalName: "requestsChanged"
        target: harness
    }

    function named(name: string): Item {
        return harness.focusableItems(view).find(item => harness.accessible(item).name === name) ?? null;
    }
    function init(): void {
        appState = harness.newState();
        harness.bootstrap(true, false);
        tryVerify(() => appState.authStatus === AuthStatus.LoggedIn);
        view = createTemporaryObject(chatView, root, {appState: appState});
        view.forceActiveFocus();
        input = named("Message input");
        button = named("Send");
        verify(input.activeFocus);
    }
    function test_returnSends(): void {
        harness.answerChat(['{"type":"text-delta","delta":"Hello"}', '{"type":"finish"}'], true);
        keyClick(Qt.Key_H);
        keyClick(Qt.Key_I);
        keyClick(Qt.Key_Return);
        compare(appState.inputDraft, "");
        compare(input.text, "");
        tryCompare(appState.messages, "count", 2);
        compare(harness.textOf(0), "hi");
        tryVerify(() => harness.textOf(1) === "Hello");
        tryCompare(harness, "chatRequests", 1);
    }
    function test_shiftReturnBreaksTheLine(): void {
        keyClick(Qt.Key_A);
        keyClick(Qt.Key_Return, Qt.ShiftModifier);
        keyClick(Qt.Key_B);
        compare(appState.inputDraft, "a\nb");
        compare(appState.messages.count, 0);
    }
    function test_returnWithBlanksChangesNothing(): void {
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_Return);
        compare(appState.inputDraft, "  ");
        compare(appState.messages.count, 0);
        verify(!button.enabled);
    }
    function test_returnAsksToSendWhateverTheDraftHolds(): void {
        const composer = input.parent.parent.parent.parent;
        const sends = createTemporaryQmlObject("import QtTest; SignalSpy { signalName: 'sendRequested' }", root);
        sends.target = composer;
        verify(sends.valid);
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_Return);
        compare(sends.count, 1);
    }
    function test_oneLineFeedEnablesSendAndBlanksDoNot(): void {
        appState.inputDraft = "\n";
        verify(button.enabled);
        appState.inputDraft = " \t ";
        verify(!button.enabled);
        compare(harness.accessible(button).disabled, true);
    }
    function test_returnWhileComposingDoesNotSend(): void {
        keyClick(Qt.Key_A);
        harness.compose(input, "ni");
        verify(input.inputMethodComposing);
        keyClick(Qt.Key_Return);
        compare(appState.messages.count, 0);
        harness.compose(input, "");
    }
    function test_growsFromOneToEightLines(): void {
        const single = input.parent.parent.height;
        const heights = [];
        for (let lines = 2; lines <= 12; ++lines) {
            appState.inputDraft = Array(lines).fill("x").join("\n");
            heights.push(input.parent.parent.height);
        }
        verify(heights[0] > single);
        verify(heights[6] > heights[5]);
        compare(heights[7], heights[6]);
        compare(heights[10], heights[6]);
    }
    function test_sendButtonSends(): void {
        harness.answerChat(['{"type":"finish"}'], true);
        appState.inputDraft = "hi";
        mouseClick(button);
        tryCompare(harness, "chatRequests", 1);
    }
    function test_stopButtonAndEscapeStop_data(): var {
        return [{tag: "button"}, {tag: "escape"}];
    }
    function test_stopButtonAndEscapeStop(data): void {
        harness.answerChat(['{"type":"text-delta","delta":"Some"}'], false);
        appState.inputDraft = "hi";
        keyClick(Qt.Key_Return);
        tryVerify(() => appState.messages.count === 2 && harness.textOf(1) === "Some");
        verify(appState.isStreaming);
        compare(harness.accessible(button).name, "Stop");
        if (data.tag === "button")
            mouseClick(button);
        else
            keyClick(Qt.Key_Escape);
        tryCompare(appState, "isStreaming", false);
        compare(harness.textOf(1), "Some\n\n_stopped_");
        compare(harness.accessible(button).name, "Send");
    }
    function test_sendingDuringARunKeepsTheDraft(): void {
        harness.answerChat(['{"type":"text-delta","delta":"Some"}'], false);
        appState.inputDraft = "hi";
        keyClick(Qt.Key_Return);
        tryVerify(() => appState.messages.count === 2 && harness.textOf(1) === "Some");
        keyClick(Qt.Key_M);
        keyClick(Qt.Key_Return);
        compare(appState.inputDraft, "m");
        compare(appState.messages.count, 2);
    }
    function test_focusRequestFocusesTheInput(): void {
        button.enabled = true;
        button.forceActiveFocus();
        appState.requestInputFocus();
        verify(input.activeFocus);
    }
    function test_everyFocusableControlHasANameAndARole(): void {
        appState.inputDraft = "hi";
        const items = harness.focusableItems(view);
        verify(items.length >= 2);
        for (const item of items) {
            const told = harness.accessible(item);
            verify(told.name.length > 0, item.toString());
            verify(told.role !== Accessible.NoRole, item.toString());
        }
    }
}
