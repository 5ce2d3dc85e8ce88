// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls
import Velto.Presentation

// When the list of messages goes to its end and when it stays where it is.
TestCase {
    id: root

    property AppState appState
    property ChatView view

    height: 600
    name: "Sticking"
    visible: true
    when: windowShown
    width: 600

    Component {
        id: chatView

        ChatView {
            anchors.fill: parent
        }
    }

    function button(name: string): Item {
        return harness.focusableItems(view).find(item => harness.accessible(item).name === name && item.visible) ?? null;
    }
    function list(): Item {
        const messages = button("Messages");
        return messages ? messages.view : null;
    }
    // By what lies last: the height of what nobody has seen yet is a guess.
    function atEnd(): bool {
        const last = list().footerItem;
        return last !== null && Math.abs(last.y + last.height - list().contentY - list().height) < 1;
    }
    function show(cached: int): void {
        appState = harness.newState();
        harness.cacheConversation(cached);
        harness.bootstrap(true, false);
        tryVerify(() => appState.authStatus === AuthStatus.LoggedIn);
        view = createTemporaryObject(chatView, root, {appState: appState});
        view.forceActiveFocus();
        waitForRendering(view);
        if (cached > 0)
            tryVerify(atEnd);
    }
    // Until nothing moves any more.
    function settle(): void {
        let last = NaN;
        tryVerify(() => {
            const before = last;
            last = list().contentY;
            return last === before && atEnd();
        });
    }
    function lines(count: int): string {
        return JSON.stringify({type: "text-delta", delta: "\n\n" + Array(count).fill("line").join("\n\n")});
    }
    function startAnswer(): void {
        harness.answerChat([lines(40)], false);
        const count = appState.messages.count;
        appState.inputDraft = "go on";
        appState.startSendDraft();
        tryVerify(() => appState.messages.count === count + 2 && harness.textOf(count + 1).length > 0);
        settle();
    }
    function grow(frame: string): void {
        const last = appState.messages.count - 1;
        const before = harness.volumeOf(last);
        harness.sendMore(frame);
        tryVerify(() => harness.volumeOf(last) > before);
        waitForRendering(view);
    }
    // Downwards, so that the list moves up.
    function drag(distance: real): void {
        mousePress(list(), 20, 100);
        for (let y = 10; y <= distance; y += 10)
            mouseMove(list(), 20, 100 + y);
        mouseRelease(list(), 20, 100 + distance);
        tryVerify(() => !list().moving);
    }
    function scrollAway(): void {
        drag(200);
        verify(!view.stickToBottom);
        verify(!atEnd());
    }

    function test_opensAtTheEndWithoutMoving(): void {
        appState = harness.newState();
        harness.cacheConversation(50);
        harness.bootstrap(true, false);
        tryVerify(() => appState.authStatus === AuthStatus.LoggedIn);
        view = createTemporaryObject(chatView, root, {appState: appState});
        waitForRendering(view);
        verify(atEnd()); // with the first frame already
        verify(list().contentY > list().originY);
    }
    function test_aDragOfLessThanThreePointsIsNone_data(): var {
        return [{tag: "2 down", x: 0, y: 2, stays: true},
            {tag: "2.1 across", x: 1.5, y: 1.5, stays: true},
            {tag: "3 down", x: 0, y: 3, stays: false},
            {tag: "3 up", x: 0, y: -3, stays: false},
            {tag: "3 aside", x: 3, y: 0, stays: false},
            {tag: "3.5 across", x: 2.5, y: 2.5, stays: false}];
    }
    function test_aDragOfLessThanThreePointsIsNone(data): void {
        show(30);
        mousePress(list(), 20, 100);
        mouseMove(list(), 20 + data.x, 100 + data.y);
        compare(view.stickToBottom, data.stays);
        mouseRelease(list(), 20 + data.x, 100 + data.y);
    }
    function test_everyChangeOfADragCounts(): void {
        show(30);
        mousePress(list(), 20, 100);
        mouseMove(list(), 20, 120);
        verify(!view.stickToBottom);
        harness.answerChat([], false);
        appState.inputDraft = "meanwhile";
        appState.startSendDraft();
        verify(view.stickToBottom);
        mouseMove(list(), 20, 121);
        verify(!view.stickToBottom);
        mouseRelease(list(), 20, 121);
    }
    function test_nothingButADragStopsFollowing(): void {
        show(30);
        tryVerify(() => {
            mouseWheel(list(), 100, 100, 0, 240);
            return !atEnd();
        });
        verify(view.stickToBottom);
        button("Messages").forceActiveFocus();
        keyClick(Qt.Key_PageUp);
        keyClick(Qt.Key_Home);
        verify(view.stickToBottom);
        mouseClick(list(), 20, 100);
        verify(view.stickToBottom);
        compare(button("Jump to latest"), null);
    }
    function test_aWheelThatScrolledAwayIsBroughtBackByGrowth(): void {
        show(20);
        startAnswer();
        tryVerify(() => {
            mouseWheel(list(), 100, 100, 0, 240);
            return !atEnd();
        });
        grow(lines(5));
        tryVerify(atEnd);
    }
    function test_aTapDoesNothing(): void {
        show(30);
        scrollAway();
        const before = list().contentY;
        mouseClick(list(), 20, 100);
        compare(list().contentY, before);
        verify(!view.stickToBottom);
    }
    function test_anotherLastMessageBringsTheListBack(): void {
        show(30);
        scrollAway();
        harness.answerChat(['{"type":"finish"}'], true);
        appState.inputDraft = "go on";
        appState.startSendDraft();
        verify(view.stickToBottom);
        tryVerify(atEnd);
        compare(button("Jump to latest"), null);
    }
    function test_theWayBackIsAnimated(): void {
        show(30);
        scrollAway();
        const positions = createTemporaryQmlObject("import QtTest; SignalSpy { signalName: 'contentYChanged' }", root);
        positions.target = list();
        mouseClick(button("Jump to latest"));
        tryVerify(atEnd);
        verify(positions.count > 2);
    }
    function test_anEmptiedListSticks(): void {
        show(30);
        scrollAway();
        appState.newConversation();
        verify(view.stickToBottom);
    }
    function test_anEmptiedListSticksInAChatWithoutAnId(): void {
        show(0);
        harness.answerChat([lines(100)], false);
        appState.inputDraft = "hi";
        appState.startSendDraft();
        tryVerify(() => list() !== null && list().contentHeight > 1000);
        settle();
        compare(appState.conversationID, "");
        scrollAway();
        appState.newConversation();
        tryCompare(appState, "isStreaming", false);
        tryVerify(() => list() === null);
        verify(view.stickToBottom);
    }
    function test_growthIsFollowed_data(): var {
        return [{tag: "text", frames: [lines(10)]},
            {tag: "words", frames: [JSON.stringify({type: "text-delta", delta: "word ".repeat(100)})]},
            {tag: "tools", frames: ['{"type":"tool-input-start","toolCallId":"1","toolName":"clock"}',
                '{"type":"tool-input-available","toolCallId":"1","toolName":"clock","input":{"zone":"here"}}',
                '{"type":"tool-output-available","toolCallId":"1","output":"a long time ago"}']}];
    }
    function test_growthIsFollowed(data): void {
        show(20);
        startAnswer();
        for (const frame of data.frames) {
            grow(frame);
            tryVerify(atEnd);
        }
    }
    function test_growthIsNotFollowedAfterADrag(): void {
        show(20);
        startAnswer();
        scrollAway();
        const before = list().contentY;
        grow(lines(30));
        compare(list().contentY, before);
        verify(button("Jump to latest") !== null);
    }
    function test_anotherConversationSticks(): void {
        show(30);
        scrollAway();
        harness.reply("/v1/conversations/other/messages", 200, '[{"role":"user","parts":[{"type":"text","text":"Elsewhere"}]}]');
        appState.startSelectConversation("other");
        tryCompare(appState, "conversationID", "other");
        verify(view.stickToBottom);
    }
    // The service names a chat while its first answer streams.
    function test_anIdThatCameLateSticksToo(): void {
        show(30);
        scrollAway();
        view.editingMessageID = "x";
        appState.conversationIDChanged();
        verify(view.stickToBottom);
        compare(view.editingMessageID, undefined);
    }
    function test_theJumpButton(): void {
        show(30);
        compare(button("Jump to latest"), null);
        scrollAway();
        const jump = button("Jump to latest");
        compare(harness.accessible(jump).description, "Jump to latest message");
        compare(jump.width, 36);
        compare(jump.height, 36);
        compare(jump.mapToItem(list(), 0, jump.height).y, list().height - 8);
        tryCompare(jump, "scale", 1);
        tryCompare(jump, "opacity", 1);
        mouseClick(jump);
        verify(view.stickToBottom);
        tryVerify(atEnd);
        tryVerify(() => button("Jump to latest") === null);
    }
    function test_newMessagesFadeIn(): void {
        show(20);
        harness.answerChat([], false);
        appState.inputDraft = "hi";
        appState.startSendDraft();
        tryVerify(() => list().itemAtIndex(20) !== null);
        verify(list().itemAtIndex(20).opacity < 1);
        tryCompare(list().itemAtIndex(20), "opacity", 1);
    }
}
