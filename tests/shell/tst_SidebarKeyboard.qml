// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls
import Velto.Presentation
import Velto.Shell

SidebarTestCase {
    id: root

    name: "SidebarKeyboard"

    // Keyboard

    function test_arrowsGoThroughTheList(): void {
        show(threeConversations());
        appState.requestHistorySearchFocus();
        keyClick(Qt.Key_Down);
        verify(row("Harbour times").activeFocus);
        keyClick(Qt.Key_Down);
        verify(row("Ferry or train").activeFocus);
        keyClick(Qt.Key_End);
        verify(row("Été à Paris").activeFocus);
        keyClick(Qt.Key_Down);
        verify(row("Été à Paris").activeFocus);
        keyClick(Qt.Key_Up);
        verify(row("Ferry or train").activeFocus);
        keyClick(Qt.Key_Home);
        verify(row("Harbour times").activeFocus);
        keyClick(Qt.Key_PageDown);
        verify(row("Été à Paris").activeFocus);
        keyClick(Qt.Key_PageUp);
        verify(row("Harbour times").activeFocus);
        keyClick(Qt.Key_Up);
        verify(search().activeFocus);
    }
    function test_returnOpensTheRow(): void {
        show(threeConversations());
        focusRow("Ferry or train");
        keyClick(Qt.Key_Return);
        tryCompare(appState, "conversationID", "s");
        verify(row("Ferry or train").activeFocus);
    }
    function test_f2RenamesAndTheRowHasTheKeyboardAgain_data(): var {
        return [{tag: "return", key: Qt.Key_Return}, {tag: "escape", key: Qt.Key_Escape}];
    }
    function test_f2RenamesAndTheRowHasTheKeyboardAgain(data): void {
        show(threeConversations());
        focusRow("Été à Paris");
        keyClick(Qt.Key_F2);
        verify(renameField().activeFocus);
        keys("Tides");
        keyClick(data.key);
        compare(renameField(), null);
        verify(rows()[2].activeFocus);
        compare(rows()[2].title, data.key === Qt.Key_Return ? "Tides" : "Été à Paris");
    }
    function test_deleteKeyAsksAndTheNextRowHasTheKeyboard(): void {
        show(threeConversations());
        focusRow("Ferry or train");
        keyClick(Qt.Key_Delete);
        tryVerify(() => alertButton("Delete") !== null);
        tryVerify(() => alertButton("Cancel").activeFocus);
        keyClick(Qt.Key_Escape);
        tryVerify(() => alertButton("Delete") === null);
        verify(row("Ferry or train").activeFocus);
        keyClick(Qt.Key_Delete);
        tryVerify(() => alertButton("Delete") !== null);
        settle(alertButton("Delete"));
        mouseClick(alertButton("Delete"));
        tryVerify(() => alertButton("Delete") === null);
        tryTitles(["Harbour times", "Été à Paris"]);
        verify(row("Été à Paris").activeFocus);
    }
    function test_deletingTheLastRowGivesTheKeyboardToTheSearch(): void {
        show([conversation("t", "Harbour times", null, daysAgo(0))]);
        focusRow("Harbour times");
        keyClick(Qt.Key_Delete);
        tryVerify(() => alertButton("Delete") !== null);
        settle(alertButton("Delete"));
        mouseClick(alertButton("Delete"));
        tryVerify(() => texts().includes("No conversations yet"));
        tryVerify(() => search().activeFocus);
    }
    function test_theMenuOpensByKey_data(): var {
        return [{tag: "menu", key: Qt.Key_Menu, modifiers: Qt.NoModifier}, {tag: "shift-F10", key: Qt.Key_F10, modifiers: Qt.ShiftModifier}];
    }
    function test_theMenuOpensByKey(data): void {
        show(threeConversations());
        focusRow("Ferry or train");
        keyClick(data.key, data.modifiers);
        tryVerify(() => menuRow("Copy link") !== null);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        tryVerify(() => menuRow("Copy link") === null);
        compare(clipboard(), "ltd.orbax.velto://chat/s");
        verify(row("Ferry or train").activeFocus);
    }
    function test_escapeLeavesTheList(): void {
        show(threeConversations());
        focusRow("Ferry or train");
        const asked = appState.focusInputRequest;
        keyClick(Qt.Key_Escape);
        compare(appState.focusInputRequest, asked + 1);
    }
    function test_typingInTheListSearches(): void {
        show(threeConversations());
        focusRow("Ferry or train");
        keys("pa");
        compare(search().text, "pa");
        verify(search().activeFocus);
        tryTitles(["Été à Paris"]);
    }
    function test_theListIsOneTabStop(): void {
        show(threeConversations());
        focusRow("Ferry or train");
        keyClick(Qt.Key_Tab);
        verify(button("Profile").activeFocus);
        keyClick(Qt.Key_Backtab);
        verify(row("Ferry or train").activeFocus);
        keyClick(Qt.Key_Backtab);
        verify(search().activeFocus);
        keyClick(Qt.Key_Backtab);
        verify(button("New chat").activeFocus);
    }
    function test_theKeyboardStaysWithItsRowWhenTheListChanges(): void {
        show(threeConversations());
        focusRow("Ferry or train");
        const list = threeConversations();
        list.unshift(conversation("n", "Newest", null, daysAgo(0)));
        harness.answerHistory(JSON.stringify(list));
        appState.startRefreshConversations();
        tryVerify(() => rows().length === 4);
        verify(row("Ferry or train").activeFocus);
    }
    function test_theListStaysWhereItIsWhenARowComesOnTop(): void {
        const many = [];
        for (let i = 0; i < 60; ++i)
            many.push(conversation("c" + i, "Conversation " + i, null, daysAgo(0)));
        show(many);
        focusRow("Conversation 3");
        keyClick(Qt.Key_End);
        keyClick(Qt.Key_PageUp);
        settle(sidebar);
        const before = rows().map(item => item.title + item.mapToItem(sidebar, 0, 0).y);
        many.unshift(conversation("n", "Newest", null, daysAgo(0)));
        many[30].title = "Another title";
        harness.answerHistory(JSON.stringify(many));
        appState.startRefreshConversations();
        tryVerify(() => sidebar.historyCount === 61);
        compare(rows().map(item => item.title + item.mapToItem(sidebar, 0, 0).y), before);
    }

    // What a screen reader is told

    function test_everythingHasARoleAndAName(): void {
        show(threeConversations());
        const tree = harness.accessibleTree(sidebar);
        const has = (role, name) => tree.some(item => item.role === role && item.name === name);
        verify(has(Accessible.List, "Conversations"));
        verify(has(Accessible.Heading, "Today"));
        verify(has(Accessible.Button, "New chat"));
        verify(has(Accessible.EditableText, "Search chats"));
        verify(has(Accessible.Button, "Profile"));
        compare(tree.filter(item => item.role === Accessible.ListItem).map(item => item.name), titles());
    }
    function test_theActiveRowIsSelected(): void {
        show(threeConversations());
        verify(harness.pressAccessibly(row("Ferry or train")));
        tryCompare(appState, "conversationID", "s");
        verify(harness.accessible(row("Ferry or train")).selected);
        verify(!harness.accessible(row("Harbour times")).selected);
    }
    function test_theFocusedRowIsTold(): void {
        show(threeConversations());
        focusRow("Ferry or train");
        verify(harness.accessible(row("Ferry or train")).focused);
        verify(!harness.accessible(row("Harbour times")).focused);
    }
    function test_everyFocusableControlHasAName(): void {
        show(threeConversations());
        searchFor("a");
        const all = harness.focusableItems(sidebar);
        verify(all.length > 3);
        for (const item of all)
            verify(harness.accessible(item).name.length > 0, item.toString());
    }
    function toldRows(): var {
        return harness.accessibleTree(sidebar).filter(item => item.role === Accessible.ListItem).map(item => item.name);
    }
    function test_rowsAreToldInTheirOrder(): void {
        show(threeConversations());
        const list = threeConversations();
        list.unshift(conversation("n", "Newest", null, daysAgo(0)));
        harness.answerHistory(JSON.stringify(list));
        appState.startRefreshConversations();
        tryVerify(() => rows().length === 4);
        tryVerify(() => toldRows().join() === titles().join());
        list.splice(0, 0, ...list.splice(1, 1));
        harness.answerHistory(JSON.stringify(list));
        appState.startRefreshConversations();
        tryTitles(["Harbour times", "Newest", "Ferry or train", "Été à Paris"]);
        tryVerify(() => toldRows().join() === titles().join());
    }
    function test_rowsThatComeFromAboveAreToldFirst(): void {
        const many = [];
        for (let i = 0; i < 60; ++i)
            many.push(conversation("c" + i, "Conversation " + i, null, daysAgo(0)));
        show(many);
        focusRow("Conversation 1");
        keyClick(Qt.Key_End);
        tryVerify(() => row("Conversation 59") !== null);
        for (let i = 0; i < 6; ++i)
            keyClick(Qt.Key_PageUp);
        tryVerify(() => row("Conversation 1") !== null);
        settle(sidebar);
        tryVerify(() => toldRows().join() === titles().filter(title => toldRows().includes(title)).join());
        verify(toldRows().length > 10);
    }
}
