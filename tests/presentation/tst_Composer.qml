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
    function test_attachStandsBeforeTheFieldAndSendBehindIt(): void {
        const attach = named("Attach file");
        verify(attach.mapToItem(view, 0, 0).x < input.mapToItem(view, 0, 0).x);
        verify(button.mapToItem(view, 0, 0).x > input.mapToItem(view, 0, 0).x);
        compare(attach.width, 30);
        compare(button.width, 30);
        keyClick(Qt.Key_Backtab);
        verify(attach.activeFocus);
        keyClick(Qt.Key_Tab);
        verify(input.activeFocus);
    }
    function test_aDraftFromElsewhereReplacesTheTextForGood(): void {
        keyClick(Qt.Key_A);
        appState.inputDraft = "somebody else's";
        compare(input.text, "somebody else's");
        compare(input.cursorPosition, input.length);
        keySequence(StandardKey.Undo);
        compare(appState.inputDraft, "somebody else's");
    }
    function test_whatIsSentDoesNotComeBackByUndo(): void {
        harness.answerChat(['{"type":"finish"}'], true);
        keyClick(Qt.Key_A);
        keyClick(Qt.Key_Return);
        tryCompare(appState, "isStreaming", false);
        keySequence(StandardKey.Undo);
        compare(appState.inputDraft, "");
    }
    function test_typingIsUndoneAndRedone(): void {
        keyClick(Qt.Key_A);
        keySequence(StandardKey.SelectAll);
        keyClick(Qt.Key_Delete);
        compare(appState.inputDraft, "");
        keySequence(StandardKey.Undo);
        compare(appState.inputDraft, "a");
        keySequence(StandardKey.Redo);
        compare(appState.inputDraft, "");
    }
    function test_theDraftOutlivesTheView(): void {
        appState.inputDraft = "one\r\ntwo\u00a0three";
        view.destroy();
        tryVerify(() => !view);
        view = createTemporaryObject(chatView, root, {appState: appState});
        input = named("Message input");
        compare(input.text.length, 13);
        compare(appState.inputDraft, "one\r\ntwo\u00a0three");
    }
    function test_draggingSelectsText(): void {
        appState.inputDraft = "one two three";
        mouseDrag(input, 8, 12, 120, 0);
        verify(input.selectedText.length > 4);
        keyClick(Qt.Key_Delete);
        verify(appState.inputDraft.length < 9);
    }
    function test_whatDoesNotFitScrolls(): void {
        appState.inputDraft = Array(40).fill("line").join("\n");
        const scroller = input.parent.parent;
        tryVerify(() => scroller.atYEnd); // where the cursor is
        keyClick(Qt.Key_Home, Qt.ControlModifier);
        tryVerify(() => scroller.atYBeginning);
        keyClick(Qt.Key_PageDown);
        verify(input.cursorPosition > 5 * 5 && input.cursorPosition < 9 * 5 + 5);
        verify(scroller.contentY > 0);
        keyClick(Qt.Key_PageDown, Qt.ShiftModifier);
        verify(input.selectedText.length > 5 * 5);
        keyClick(Qt.Key_PageUp);
        keyClick(Qt.Key_PageUp);
        keyClick(Qt.Key_PageUp);
        compare(input.cursorPosition, 0);
        tryVerify(() => {
            mouseWheel(input, 20, 20, 0, -240);
            return scroller.contentY > 0;
        });
    }
    function test_theScrollHintShowsOnlyWhatIsHidden(): void {
        const hints = () => Array.from(input.parent.parent.parent.children).filter(item => item.width === 4 && item.visible);
        compare(hints().length, 0);
        appState.inputDraft = Array(40).fill("line").join("\n");
        tryVerify(() => hints().length === 1);
        const hint = hints()[0];
        const field = input.parent.parent;
        tryVerify(() => Math.abs(hint.y + hint.height - field.y - field.height) < 1);
        keyClick(Qt.Key_Home, Qt.ControlModifier);
        tryVerify(() => Math.abs(hint.y - field.y) < 1);
    }
    function test_escapeDoesNothingWithoutARun(): void {
        appState.inputDraft = "kept";
        keyClick(Qt.Key_Escape);
        compare(appState.inputDraft, "kept");
        verify(input.activeFocus);
    }
    function test_theStopButtonBounces(): void {
        harness.answerChat([], false);
        appState.inputDraft = "hi";
        const scale = button.transform[0];
        compare(scale.xScale, 1);
        keyClick(Qt.Key_Return);
        tryVerify(() => scale.xScale > 1.02);
        tryCompare(scale, "xScale", 1);
    }
    function test_aVeryLongDraftIsTakenAsItIs_data(): var {
        return [{tag: "lines", text: Array(2000).fill("a line of some fifty characters, as they come in logs").join("\n")},
            {tag: "one line", text: Array(2000).fill("words of some fifty characters, as they come in text").join(" ")}];
    }
    function test_aVeryLongDraftIsTakenAsItIs(data): void {
        harness.copyText(data.text);
        keySequence(StandardKey.Paste);
        keyClick(Qt.Key_Y);
        compare(appState.inputDraft, data.text + "y");
    }
    // To break half a megabyte without a blank between words takes half a minute.
    function test_aWordThatNeverEndsIsBrokenAnywhere_data(): var {
        return [{tag: "pasted"}, {tag: "from elsewhere"}];
    }
    function test_aWordThatNeverEndsIsBrokenAnywhere(data): void {
        const word = "x".repeat(500000);
        const start = Date.now();
        if (data.tag === "pasted") {
            harness.copyText(word);
            keySequence(StandardKey.Paste);
        } else {
            appState.inputDraft = word;
        }
        waitForRendering(view);
        verify(Date.now() - start < 10000);
        compare(appState.inputDraft, word);
        compare(input.wrapMode, TextEdit.WrapAnywhere);
        appState.inputDraft = "usual words";
        compare(input.wrapMode, TextEdit.Wrap);
    }
}
