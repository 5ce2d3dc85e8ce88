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

    height: 600
    name: "ChatView"
    visible: true
    when: windowShown
    width: 600

    Component {
        id: chatView

        ChatView {
            anchors.fill: parent
        }
    }

    Component {
        id: otherWindow

        Window {
            height: 100
            visible: true
            width: 100
        }
    }

    // What an item says: a text that can be edited or selected says it as its text, others as their name.
    function words(item: var): string {
        return item.text || item.name;
    }
    function told(name: string): var {
        return harness.accessibleTree(view).find(item => item.name === name);
    }
    function button(name: string): Item {
        return harness.focusableItems(view).find(item => harness.accessible(item).name === name && item.visible) ?? null;
    }
    function list(): Item {
        const messages = button("Messages");
        return messages ? messages.view : null;
    }
    function atEnd(): bool {
        const view = list();
        return Math.abs(view.contentY - (view.originY + view.contentHeight - view.height)) < 1;
    }
    function isSettled(item: Item): bool {
        return item === null || (item.opacity === 1 && isSettled(item.parent));
    }
    function click(name: string): void {
        tryVerify(() => button(name) !== null);
        waitForRendering(view);
        tryVerify(() => isSettled(button(name)));
        mouseClick(button(name));
    }
    function open(cached: int): void {
        appState = harness.newState();
        if (cached > 0)
            harness.cacheConversation(cached);
        harness.bootstrap(true, false);
        tryVerify(() => appState.authStatus === AuthStatus.LoggedIn);
        view = createTemporaryObject(chatView, root, {appState: appState});
        view.forceActiveFocus();
        waitForRendering(view);
    }
    function send(text: string): void {
        appState.inputDraft = text;
        appState.startSendDraft();
    }
    function streamedLines(count: int): string {
        return JSON.stringify({type: "text-delta", delta: Array(count).fill("line").join("\n")});
    }

    function test_emptyStateShowsTheHeroAndNoList(): void {
        open(0);
        verify(told("velto"));
        compare(list(), null);
    }
    function test_anEmptyListWhileStreamingIsNotTheEmptyState(): void {
        open(0);
        harness.answerChat([], false);
        send("hi");
        tryVerify(() => list() !== null);
    }
    function test_messagesAreToldWithRoleAndText(): void {
        open(2);
        const tree = harness.accessibleTree(view);
        compare(told("Messages").role, Accessible.List);
        compare(told("You").role, Accessible.ListItem);
        verify(tree.some(item => item.role === Accessible.StaticText && item.text === "Message 0, in a few words."));
        verify(tree.some(item => item.role === Accessible.StaticText && item.name === "Message 1, in a few words."));
    }
    function test_aWindowThatBecomesActiveAsksForTheHistory(): void {
        open(2);
        tryVerify(() => harness.historyRequests() > 0);
        const other = createTemporaryObject(otherWindow, root);
        other.requestActivate();
        tryCompare(other, "active", true);
        waitForRendering(view);
        const before = harness.historyRequests();
        view.Window.window.requestActivate();
        tryVerify(() => harness.historyRequests() === before + 1);
        verify(view.Window.active);
    }
    function test_aNarrowWindowCutsNothing(): void {
        root.width = 380;
        open(2);
        for (const name of ["Message input", "Attach file", "Messages"]) {
            const item = harness.focusableItems(view).find(item => harness.accessible(item).name === name) ?? null;
            verify(item !== null, name);
            const left = item.mapToItem(view, 0, 0).x;
            verify(left >= 0 && left + item.width <= 380, name);
        }
        root.width = 600;
    }
    function test_opensAtTheEnd(): void {
        open(50);
        tryVerify(atEnd);
        verify(list().contentY > list().originY);
    }
    function test_onlyRowsThatShowExist(): void {
        open(50);
        const rows = harness.accessibleTree(view).filter(item => item.role === Accessible.ListItem);
        verify(rows.length > 3);
        verify(rows.length < 25);
    }
    // Rows come into being from the end upwards, and more of them as the list is scrolled.
    function test_rowsAreToldInReadingOrder(): void {
        open(50);
        const inOrder = () => {
            const tree = harness.accessibleTree(view);
            const numbers = tree.slice(tree.findIndex(item => item.name === "Messages")).filter(item => item.role === Accessible.StaticText && /^Message \d+,/.test(words(item))).map(item => parseInt(words(item).split(" ")[1]));
            return numbers.length > 3 && numbers.every((number, i) => i === 0 || number > numbers[i - 1]);
        };
        tryVerify(inOrder);
        button("Messages").forceActiveFocus();
        for (let i = 0; i < 3; ++i) {
            keyClick(Qt.Key_PageUp);
            tryVerify(inOrder);
        }
        keyClick(Qt.Key_Home);
        tryVerify(() => told("You") && harness.accessibleTree(view).some(item => item.text === "Message 0, in a few words."));
        tryVerify(inOrder);
    }
    function test_followsTheEndWhileAnAnswerGrows(): void {
        open(20);
        harness.answerChat([streamedLines(5)], false);
        send("go on");
        tryVerify(() => appState.messages.count === 22 && harness.textOf(21).length > 0);
        for (let i = 0; i < 5; ++i)
            harness.sendMore(streamedLines(20));
        tryVerify(() => harness.textOf(21).length > 480);
        tryVerify(atEnd);
    }
    function test_aDragStopsFollowingAndANewMessageResumes(): void {
        open(20);
        harness.answerChat([streamedLines(40)], false);
        send("go on");
        tryVerify(() => appState.messages.count === 22 && harness.textOf(21).length > 100);
        tryVerify(atEnd);
        compare(button("Jump to latest"), null);
        mousePress(list(), 20, 150);
        for (let y = 150; y <= 280; y += 10)
            mouseMove(list(), 20, y);
        mouseRelease(list(), 20, 280);
        tryVerify(() => button("Jump to latest") !== null);
        tryCompare(list(), "moving", false);
        const before = list().contentY;
        const length = harness.textOf(21).length;
        harness.sendMore(streamedLines(30));
        tryVerify(() => harness.textOf(21).length > length);
        waitForRendering(view);
        compare(list().contentY, before);
        verify(!atEnd());
        appState.stopStreaming();
        tryCompare(appState, "isStreaming", false);
        harness.answerChat(['{"type":"finish"}'], true);
        send("next");
        tryVerify(atEnd);
        tryVerify(() => button("Jump to latest") === null);
    }
    function test_jumpButtonReturnsToTheEnd(): void {
        open(30);
        tryVerify(atEnd);
        mouseDrag(list(), 20, 100, 0, 120);
        tryVerify(() => button("Jump to latest") !== null);
        const jump = button("Jump to latest");
        compare(harness.accessible(jump).description, "Jump to latest message");
        tryCompare(jump, "opacity", 1);
        mouseClick(jump);
        tryVerify(atEnd);
        tryVerify(() => button("Jump to latest") === null);
    }
    function test_bannerRetriesAndDismisses(): void {
        open(0);
        harness.failChat(500, "out of order");
        send("hi");
        tryVerify(() => appState.hasError);
        compare(appState.messages.count, 1);
        verify(told("Something went wrong"));
        verify(told(appState.errorMessage));
        harness.answerChat(['{"type":"text-delta","delta":"Now"}', '{"type":"finish"}'], true);
        click("Retry");
        tryVerify(() => appState.messages.count === 2 && harness.textOf(1) === "Now");
        verify(!appState.hasError);
        compare(button("Retry"), null);
        tryCompare(appState, "isStreaming", false);
        harness.failChat(500, "");
        send("again");
        tryVerify(() => appState.hasError);
        verify(harness.pressAccessibly(button("Dismiss")));
        verify(!appState.hasError);
    }
    function test_progressShowsWhileStreamingOnly(): void {
        open(0);
        harness.answerChat(['{"type":"data-agent_progress","data":{"summary":"Looking at the chart"}}'], false);
        send("hi");
        tryVerify(() => appState.agentProgress !== "");
        verify(told("Looking at the chart"));
        appState.stopStreaming();
        tryCompare(appState, "isStreaming", false);
        compare(told("Looking at the chart"), undefined);
    }
    function test_suggestionIsSent(): void {
        open(2);
        appState.promptSuggestion = "And tomorrow?";
        harness.answerChat(['{"type":"finish"}'], true);
        click("And tomorrow?");
        compare(appState.promptSuggestion, "");
        compare(harness.textOf(2), "And tomorrow?");
        tryCompare(harness, "chatRequests", 1);
    }
    function test_toolsShowAsALine(): void {
        open(0);
        harness.answerChat(['{"type":"tool-input-start","toolCallId":"1","toolName":"clock"}'], false);
        send("hi");
        tryVerify(() => told("Tool clock — running") !== undefined);
        harness.sendMore('{"type":"tool-output-available","toolCallId":"1","output":"12:00"}');
        tryVerify(() => told("Tool clock — complete") !== undefined);
    }
    function test_titleIsTheFirstThingTheUserWrote(): void {
        open(2);
        verify(harness.accessibleTree(view).some(item => item.name === "Message 0, in a few words."));
    }
}
