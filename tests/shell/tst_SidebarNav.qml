// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls
import Velto.Presentation
import Velto.Shell

SidebarTestCase {
    id: root

    name: "SidebarNav"

    // What stands in the history area

    function test_anAbsentHistoryLoads(): void {
        make();
        verify(texts().includes("Loading…"));
        compare(rows().length, 0);
        verify(search() !== undefined);
    }
    function test_anEmptyHistorySaysSoAndNeverNoMatches(): void {
        show([]);
        tryVerify(() => texts().includes("No conversations yet"));
        verify(search() !== undefined);
        searchFor("anything");
        verify(texts().includes("No conversations yet"));
        verify(!texts().includes("No matches"));
    }
    function test_aSearchWithoutResultSaysNoMatches(): void {
        show(threeConversations());
        searchFor("zebra");
        compare(rows().length, 0);
        verify(texts().includes("No matches"));
        searchFor("");
        compare(rows().length, 3);
        verify(!texts().includes("No matches"));
    }
    function test_conversationsStandInBuckets(): void {
        show(threeConversations());
        compare(titles(), ["Harbour times", "Ferry or train", "Été à Paris"]);
        compare(headers(), ["Today", "Previous 7 Days", "Older"]);
        verify(row("Harbour times").mapToItem(sidebar, 0, 0).y > button("New chat").y);
    }
    function test_bucketsWithoutAMatchAreLeftOut(): void {
        show(threeConversations());
        searchFor("ferry");
        compare(titles(), ["Harbour times", "Ferry or train"]);
        compare(headers(), ["Today", "Previous 7 Days"]);
        searchFor("  PARIS ");
        compare(titles(), ["Été à Paris"]);
        compare(headers(), ["Older"]);
    }
    function test_titleFallsBackToSummaryAndAFixedText(): void {
        show([conversation("a", "", "", daysAgo(0)), conversation("b", "", "A summary", daysAgo(0))]);
        compare(titles(), ["New chat", "A summary"]);
    }

    // Search

    function test_aQueryOfSpacesListsAndMarksAll(): void {
        show(threeConversations());
        searchFor("   ");
        compare(rows().length, 3);
        compare(marked("Harbour times"), []);
    }
    function test_matchesAreMarkedOnTheOriginalCharacters(): void {
        show(threeConversations());
        searchFor("ÉTÉ");
        compare(titles(), ["Été à Paris"]);
        compare(marked("Été à Paris"), ["Été"]);
    }
    function test_aMatchInTheSummaryAloneMarksNothingInTheTitle(): void {
        show(threeConversations());
        searchFor("leaves");
        compare(titles(), ["Harbour times"]);
        compare(marked("Harbour times"), []);
    }
    function test_theClearButtonEmptiesTheSearch(): void {
        show(threeConversations());
        compare(button("Clear search"), null);
        searchFor("paris");
        const clear = button("Clear search");
        verify(clear !== null);
        mouseClick(clear);
        compare(search().text, "");
        tryVerify(() => rows().length === 3);
        verify(search().activeFocus);
        compare(button("Clear search"), null);
    }
    function test_theSearchFieldTakesTheFocusWhenAsked(): void {
        show(threeConversations());
        elsewhere.forceActiveFocus();
        appState.requestHistorySearchFocus();
        verify(search().activeFocus);
        keys("par");
        tryTitles(["Été à Paris"]);
    }
    function test_escapeClearsTheSearchThenLeavesIt(): void {
        show(threeConversations());
        appState.requestHistorySearchFocus();
        keys("par");
        const asked = appState.focusInputRequest;
        keyClick(Qt.Key_Escape);
        compare(search().text, "");
        verify(search().activeFocus);
        compare(appState.focusInputRequest, asked);
        keyClick(Qt.Key_Escape);
        compare(appState.focusInputRequest, asked + 1);
    }
    function test_queryAndRenameOutliveAChangeOfSection(): void {
        show(threeConversations());
        searchFor("ferry");
        rename("Harbour times");
        appState.selectedSection = AppState.Profile;
        appState.selectedSection = AppState.Chat;
        compare(search().text, "ferry");
        verify(renameField() !== null);
    }
    function test_anotherSearchShowsTheListFromItsStart(): void {
        const many = [];
        for (let i = 0; i < 60; ++i)
            many.push(conversation("c" + i, "Conversation " + i, null, daysAgo(0)));
        show(many);
        focusRow("Conversation 3");
        keyClick(Qt.Key_End);
        tryVerify(() => row("Conversation 59") !== null && row("Conversation 59").activeFocus);
        compare(row("Conversation 0"), null);
        searchFor("conversation");
        tryVerify(() => row("Conversation 0") !== null);
        compare(titles()[0], "Conversation 0");
    }

    // Opening

    function test_aClickOpensTheConversationAndShowsTheChat(): void {
        show(threeConversations());
        appState.selectedSection = AppState.Profile;
        const order = [];
        appState.selectedSectionChanged.connect(() => order.push("section"));
        appState.isLoadingConversationChanged.connect(() => order.push("loading"));
        mouseClick(row("Ferry or train"), 40);
        compare(appState.selectedSection, AppState.Chat);
        tryCompare(appState, "conversationID", "s");
        compare(order[0], "section");
        verify(order.includes("loading"));
        verify(harness.conversationRequests()[0].startsWith("GET /v1/conversations/s/messages"));
    }
    function test_aClickLeavesTheKeyboardWhereItWas(): void {
        show(threeConversations());
        elsewhere.forceActiveFocus();
        mouseClick(row("Ferry or train"), 40);
        tryCompare(appState, "conversationID", "s");
        verify(elsewhere.activeFocus);
    }
    function test_theOpenConversationIsActiveInTheChatAlone(): void {
        show(threeConversations());
        verify(rows().every(item => !item.isActive));
        mouseClick(row("Harbour times"), 40);
        tryCompare(appState, "conversationID", "t");
        compare(rows().filter(item => item.isActive).map(item => item.title), ["Harbour times"]);
        appState.selectedSection = AppState.Profile;
        verify(rows().every(item => !item.isActive));
        appState.selectedSection = AppState.Chat;
        verify(row("Harbour times").isActive);
    }
    function test_newChatEmptiesTheChatAndShowsIt(): void {
        show(threeConversations());
        mouseClick(row("Harbour times"), 40);
        tryCompare(appState, "conversationID", "t");
        appState.selectedSection = AppState.Profile;
        mouseClick(button("New chat"));
        compare(appState.conversationID, "");
        compare(appState.selectedSection, AppState.Chat);
    }
    function test_aSectionRowSelectsItsSection(): void {
        show(threeConversations());
        const profile = button("Profile");
        verify(!profile.isCurrent);
        mouseClick(profile);
        compare(appState.selectedSection, AppState.Profile);
        verify(profile.isCurrent);
        appState.selectedSection = AppState.Chat;
        verify(!profile.isCurrent);
    }
    function test_onlyTheProfileIsOffered(): void {
        show(threeConversations());
        compare(items(item => item instanceof SectionRow).map(item => item.label), ["Profile"]);
    }
}
