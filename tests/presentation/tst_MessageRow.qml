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

    height: 700
    name: "MessageRow"
    visible: true
    when: windowShown
    width: 700

    Component {
        id: chatView

        ChatView {
            anchors.fill: parent
        }
    }
    // What is pasted shows what was copied.
    TextEdit {
        id: paper

        textFormat: TextEdit.PlainText
        visible: false
    }

    function tree(): var {
        return harness.accessibleTree(view);
    }
    function told(name: string): var {
        return tree().find(item => item.name === name);
    }
    function buttons(name: string): var {
        return harness.focusableItems(view).filter(item => item.visible && harness.accessible(item).name === name);
    }
    function button(name: string): Item {
        const all = buttons(name);
        return all.length > 0 ? all[all.length - 1] : null;
    }
    function click(name: string): void {
        tryVerify(() => button(name) !== null);
        waitForRendering(view);
        mouseClick(button(name));
    }
    function pasted(): string {
        paper.clear();
        paper.paste();
        return paper.text;
    }
    function delta(text: string): string {
        return JSON.stringify({type: "text-delta", delta: text});
    }
    function open(): void {
        appState = harness.newState();
        harness.bootstrap(true, false);
        tryVerify(() => appState.authStatus === AuthStatus.LoggedIn);
        view = createTemporaryObject(chatView, root, {appState: appState});
        view.forceActiveFocus();
        waitForRendering(view);
    }
    // One turn with the answer of those frames.
    function ask(text: string, frames: var): void {
        harness.answerChat(frames.concat('{"type":"finish"}'), true);
        appState.inputDraft = text;
        appState.startSendDraft();
        tryVerify(() => !appState.isStreaming && appState.messages.count > 0 && appState.messages.count % 2 === 0);
        tryVerify(() => button("Copy message") !== null);
    }
    function edit(text: string): void {
        click("Edit message");
        const input = field();
        compare(input.activeFocus, true);
        input.selectAll();
        for (const letter of text)
            keyClick(letter);
    }
    function field(): Item {
        return harness.focusableItems(view).find(item => item.visible && item instanceof TextEdit && harness.accessible(item).name === "Edit message") ?? null;
    }

    function test_editingStartsWithTheTextAndCancelKeepsNothing(): void {
        open();
        ask("first", [delta("one")]);
        click("Edit message");
        compare(field().text, "first");
        keyClick("x");
        compare(field().text, "firstx");
        click("Cancel");
        tryVerify(() => field() === null);
        compare(harness.textOf(0), "first");
        compare(appState.messages.count, 2);
        click("Edit message");
        compare(field().text, "first");
    }
    function test_escapeCancelsEditing(): void {
        open();
        ask("first", [delta("one")]);
        edit("other");
        keyClick(Qt.Key_Escape);
        tryVerify(() => field() === null);
        compare(harness.textOf(0), "first");
    }
    function test_anotherEditEndsTheFirst(): void {
        open();
        ask("first", [delta("one")]);
        ask("second", [delta("two")]);
        waitForRendering(view);
        mouseClick(buttons("Edit message")[0]);
        tryVerify(() => field() !== null && field().text === "first");
        click("Edit message");
        tryVerify(() => field() !== null && field().text === "second");
        compare(harness.focusableItems(view).filter(item => item.visible && item instanceof TextEdit && harness.accessible(item).name === "Edit message").length, 1);
    }
    function test_sendIsDisabledForBlanksAndGoesOnAsTyped(): void {
        open();
        ask("first", [delta("one")]);
        click("Edit message");
        field().text = " \n\n ";
        const sends = () => buttons("Send").filter(item => item.enabled);
        compare(sends().length, 0);
        const requests = harness.chatRequests;
        keyClick(Qt.Key_Return, Qt.ControlModifier);
        verify(field() !== null);
        compare(harness.chatRequests, requests);
        field().text = "\n new text \n";
        compare(sends().length, 1);
        harness.answerChat([delta("two"), '{"type":"finish"}'], true);
        keyClick(Qt.Key_Return, Qt.ControlModifier);
        tryVerify(() => field() === null);
        tryCompare(harness, "chatRequests", requests + 1);
        tryVerify(() => harness.textOf(1) === "two");
        compare(harness.textOf(0), "new text");
    }
    function test_versionsAreSteppedThrough(): void {
        open();
        ask("first", [delta("one")]);
        compare(told("Version 1 of 1"), undefined);
        compare(button("Previous version"), null);
        edit("second");
        harness.answerChat([delta("two"), '{"type":"finish"}'], true);
        keyClick(Qt.Key_Return, Qt.ControlModifier);
        tryVerify(() => told("Version 2 of 2") !== undefined);
        tryVerify(() => !appState.isStreaming && harness.textOf(1) === "two");
        compare(button("Next version").enabled, false);
        click("Previous version");
        tryVerify(() => told("Version 1 of 2") !== undefined);
        compare(harness.textOf(0), "first");
        compare(harness.textOf(1), "one");
        tryVerify(() => tree().some(item => item.role === Accessible.StaticText && item.text === "first"));
        compare(button("Previous version").enabled, false);
        verify(harness.pressAccessibly(button("Next version")));
        tryVerify(() => told("Version 2 of 2") !== undefined);
        compare(harness.textOf(1), "two");
    }
    function test_versionsRestWhileAnAnswerStreams(): void {
        open();
        ask("first", [delta("one")]);
        edit("second");
        harness.answerChat([delta("two")], false);
        keyClick(Qt.Key_Return, Qt.ControlModifier);
        tryVerify(() => told("Version 2 of 2") !== undefined && appState.isStreaming);
        const previous = harness.focusableItems(view).concat([]).find(item => harness.accessible(item).name === "Previous version");
        verify(!previous || !previous.enabled);
        compare(harness.textOf(0), "second");
        appState.stopStreaming();
        tryCompare(appState, "isStreaming", false);
        tryVerify(() => button("Previous version") !== null && button("Previous version").enabled);
    }
    function test_copyPutsTheTextsAlone(): void {
        open();
        ask("hi", [delta("Let **me** see. "), '{"type":"tool-input-start","toolCallId":"1","toolName":"clock"}', '{"type":"tool-output-available","toolCallId":"1","output":"12:00"}', delta("Noon.")]);
        const copy = button("Copy message");
        compare(copy.symbol, "doc.on.doc");
        click("Copy message");
        compare(pasted(), "Let **me** see. Noon.");
        compare(copy.symbol, "checkmark");
        tryCompare(copy, "symbol", "doc.on.doc", 3000);
    }
    function test_anAnswerOfToolsAloneCopiesNothing(): void {
        open();
        paper.text = "before";
        paper.selectAll();
        paper.copy();
        ask("hi", ['{"type":"tool-input-start","toolCallId":"1","toolName":"clock"}', '{"type":"tool-output-available","toolCallId":"1","output":"12:00"}']);
        click("Copy message");
        compare(pasted(), "");
    }
    function test_votesReplaceAndWithdraw(): void {
        open();
        ask("hi", [delta("yes")]);
        compare(button("Good response").symbol, "hand.thumbsup");
        click("Good response");
        compare(button("Good response").symbol, "hand.thumbsup.fill");
        click("Bad response");
        compare(button("Good response").symbol, "hand.thumbsup");
        compare(button("Bad response").symbol, "hand.thumbsdown.fill");
        click("Bad response");
        compare(button("Bad response").symbol, "hand.thumbsdown");
    }
    function test_aVotedAnswerKeepsItsActionsInSight(): void {
        open();
        ask("hi", [delta("yes")]);
        mouseMove(view, 10, 10);
        const row = button("Copy message").parent;
        tryCompare(row, "opacity", 0.001);
        click("Good response");
        mouseMove(view, 10, 10);
        tryCompare(row, "opacity", 1);
        click("Good response");
        mouseMove(view, 10, 10);
        tryCompare(row, "opacity", 0.001);
    }
    function test_onlyTheLastAnswerCanBeRegeneratedAndContinued(): void {
        open();
        ask("one", [delta("1")]);
        ask("two", [delta("2")]);
        tryVerify(() => buttons("Copy message").length === 2);
        compare(buttons("Good response").length, 2);
        tryVerify(() => buttons("Regenerate response").length === 1);
        compare(buttons("Continue generating").length, 1);
        harness.answerChat([delta("again")], false);
        click("Regenerate response");
        tryVerify(() => harness.textOf(3) === "again");
        compare(appState.messages.count, 4);
        tryVerify(() => buttons("Regenerate response").length === 0);
        compare(buttons("Continue generating").length, 0);
        verify(buttons("Copy message").length >= 1);
        appState.stopStreaming();
        tryCompare(appState, "isStreaming", false);
        harness.answerChat([delta("more"), '{"type":"finish"}'], true);
        click("Continue generating");
        tryCompare(appState.messages, "count", 6);
        compare(harness.textOf(4), "Continue");
        tryVerify(() => harness.textOf(5) === "more");
    }
    function test_aToolOpensAndShowsWhatWentInAndCameOut(): void {
        open();
        ask("hi", ['{"type":"tool-input-start","toolCallId":"1","toolName":"clock"}', '{"type":"tool-input-available","toolCallId":"1","toolName":"clock","input":{"zone":"UTC"}}', '{"type":"tool-output-available","toolCallId":"1","output":"12:00"}']);
        verify(told("Tool clock — complete"));
        compare(told("Parameters"), undefined);
        click("Tool clock — complete");
        tryVerify(() => told("Parameters") !== undefined && told("Result") !== undefined);
        tryVerify(() => told("12:00") !== undefined);
        click("Tool clock — complete");
        tryVerify(() => told("Parameters") === undefined);
    }
    function test_aFailedToolShowsItsErrorAndNoResult(): void {
        open();
        ask("hi", ['{"type":"tool-input-start","toolCallId":"1","toolName":"clock"}', '{"type":"tool-output-available","toolCallId":"1","output":"12:00"}', '{"type":"tool-output-error","toolCallId":"1","errorText":"no clock"}']);
        click("Tool clock — failed");
        tryVerify(() => told("Error") !== undefined);
        tryVerify(() => told("no clock") !== undefined);
        compare(told("Result"), undefined);
        compare(told("Parameters"), undefined);
    }
    function test_severalToolsAreOneLineUntilItOpens(): void {
        open();
        ask("hi", ['{"type":"tool-input-start","toolCallId":"1","toolName":"clock"}', '{"type":"tool-output-available","toolCallId":"1","output":"12:00"}', '{"type":"tool-input-start","toolCallId":"2","toolName":"log"}', '{"type":"tool-output-error","toolCallId":"2","errorText":"no log"}']);
        verify(told("2 tools (1 failed)"));
        compare(told("Tool clock — complete"), undefined);
        click("2 tools (1 failed)");
        tryVerify(() => told("Tool clock — complete") !== undefined && told("Tool log — failed") !== undefined);
    }
    function test_whatIsOpenClosesWhenMoreArrives(): void {
        open();
        harness.answerChat(['{"type":"tool-input-start","toolCallId":"1","toolName":"clock"}', '{"type":"tool-input-available","toolCallId":"1","toolName":"clock","input":{"zone":"UTC"}}'], false);
        appState.inputDraft = "hi";
        appState.startSendDraft();
        click("Tool clock — running");
        tryVerify(() => told("Parameters") !== undefined);
        harness.sendMore(delta("Now"));
        tryVerify(() => told("Parameters") === undefined);
        verify(told("Tool clock — running"));
    }
    function test_anAnswerThatHasNotBegunShimmers(): void {
        open();
        harness.answerChat([], false);
        appState.inputDraft = "hi";
        appState.startSendDraft();
        tryVerify(() => told("Generating response") !== undefined);
        tryCompare(harness, "chatRequests", 1);
        harness.sendMore(delta("Now"));
        tryVerify(() => told("Now") !== undefined);
        compare(told("Generating response"), undefined);
    }
    function test_codeOfAnAnswerIsCopiedRaw(): void {
        open();
        ask("hi", [delta("Look:\n\n```python\nx = 1  # one\n```\n")]);
        tryVerify(() => button("Copy code") !== null);
        tryVerify(() => told("x = 1  # one") !== undefined);
        verify(harness.pressAccessibly(button("Copy code")));
        compare(pasted(), "x = 1  # one");
    }
    function test_everyActionIsReachedByTabAndHasAName(): void {
        open();
        ask("hi", [delta("Look:\n\n```\nx\n```\n"), '{"type":"tool-input-start","toolCallId":"1","toolName":"clock"}', '{"type":"tool-output-available","toolCallId":"1","output":"12:00"}']);
        tryVerify(() => button("Continue generating") !== null && button("Copy code") !== null);
        const names = harness.focusableItems(view).filter(item => item.visible).map(item => harness.accessible(item).name);
        for (const name of ["Edit message", "Copy code", "Tool clock — complete", "Copy message", "Good response", "Bad response", "Regenerate response", "Continue generating"])
            verify(names.includes(name), name);
        verify(!names.includes(""), JSON.stringify(names));
        button("Good response").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        compare(button("Good response").symbol, "hand.thumbsup.fill");
        keyClick(Qt.Key_Return);
        compare(button("Good response").symbol, "hand.thumbsup");
    }
    function test_aToolThatHasNothingToShowOpensEmpty(): void {
        open();
        harness.answerChat(['{"type":"tool-input-start","toolCallId":"1","toolName":"clock"}'], false);
        appState.inputDraft = "hi";
        appState.startSendDraft();
        click("Tool clock — running");
        waitForRendering(view);
        for (const title of ["Parameters", "Result", "Error"])
            compare(told(title), undefined);
        appState.stopStreaming();
    }
}
