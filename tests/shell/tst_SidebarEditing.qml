// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls
import Velto.Presentation
import Velto.Shell

SidebarTestCase {
    id: root

    name: "SidebarEditing"

    // What can be done with a row

    function test_bothMenusHoldTheSameItems(): void {
        show(threeConversations());
        openMenuOf("Harbour times");
        compare(menuTexts(), ["Rename", "Copy link", "Copy title", "Delete"]);
        keyClick(Qt.Key_Escape);
        tryVerify(() => menuRow("Rename") === null);
        mouseMove(row("Harbour times"), 40);
        mouseClick(moreOf("Harbour times"));
        tryVerify(() => menuRow("Rename") !== null);
        compare(menuTexts(), ["Rename", "Copy link", "Copy title", "Delete"]);
        verify(menuRow("Delete").entry.destructive);
        keyClick(Qt.Key_Escape);
        tryVerify(() => menuRow("Rename") === null);
        compare(appState.conversationID, "");
    }
    function test_theLinkIsCopied(): void {
        show(threeConversations());
        openMenuOf("Ferry or train");
        choose("Copy link");
        compare(clipboard(), "ltd.orbax.velto://chat/s");
    }
    function test_theShownTitleIsCopied(): void {
        show(threeConversations());
        openMenuOf("Ferry or train");
        choose("Copy title");
        compare(clipboard(), "Ferry or train");
        openMenuOf("Été à Paris");
        choose("Copy title");
        compare(clipboard(), "Été à Paris");
    }
    function test_moreActionsShowsUnderThePointerAndOnTheActiveRow(): void {
        show(threeConversations());
        mouseMove(elsewhere, 1, 1);
        const more = moreOf("Harbour times");
        tryCompare(more, "opacity", 0.001);
        mouseMove(row("Harbour times"), 40);
        tryCompare(more, "opacity", 1);
        mouseMove(sidebar, 10, sidebar.height - 3);
        tryCompare(more, "opacity", 0.001);
        mouseClick(row("Harbour times"), 40);
        mouseMove(sidebar, 10, sidebar.height - 3);
        tryCompare(appState, "conversationID", "t");
        tryCompare(more, "opacity", 1);
        compare(more.width, 22);
        compare(more.height, 22);
    }
    function test_hiddenButtonsAreStillInTheAccessibilityTree(): void {
        show(threeConversations());
        mouseMove(sidebar, 10, sidebar.height - 3);
        tryCompare(moreOf("Harbour times"), "opacity", 0.001);
        compare(harness.accessibleTree(sidebar).filter(item => item.name === "More actions").length, 3);
    }

    // Renaming

    function test_aRenameBeginsWithTheTitleSelected(): void {
        show(threeConversations());
        rename("Harbour times");
        compare(renameField().text, "Harbour times");
        compare(renameField().selectedText, "Harbour times");
        compare(renameField().placeholderText, "");
        compare(row("Harbour times"), null);
    }
    function test_aRenameWithoutTitleBeginsEmpty(): void {
        show(threeConversations());
        rename("Ferry or train");
        compare(renameField().text, "");
    }
    function test_returnCommitsARename(): void {
        show(threeConversations());
        rename("Harbour times");
        keys("Tides ");
        keyClick(Qt.Key_Return);
        compare(renameField(), null);
        compare(titles()[0], "Tides");
        tryVerify(() => renames().length === 1);
        compare(renames(), ['PATCH /v1/conversations/t {"title":"Tides"}']);
    }
    function test_escapeCancelsARename(): void {
        show(threeConversations());
        rename("Harbour times");
        keys("Tides");
        keyClick(Qt.Key_Escape);
        compare(renameField(), null);
        compare(titles()[0], "Harbour times");
        nothingWasRenamed();
    }
    function test_theSameTextWithBlanksSendsNothing(): void {
        show(threeConversations());
        rename("Harbour times");
        keys("  Harbour times ");
        keyClick(Qt.Key_Return);
        compare(renameField(), null);
        nothingWasRenamed();
    }
    function test_anEmptyRenameSendsNothing(): void {
        show(threeConversations());
        rename("Harbour times");
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_Return);
        compare(renameField(), null);
        compare(titles()[0], "Harbour times");
        nothingWasRenamed();
    }
    function test_returnThatEndsACompositionCommitsNothing(): void {
        show(threeConversations());
        rename("Harbour times");
        harness.compose(renameField(), "にほ");
        verify(renameField().inputMethodComposing);
        keyClick(Qt.Key_Return);
        verify(renameField() !== null);
    }
    function test_aRefusedRenameLeavesTheRowAsItWas(): void {
        show(threeConversations());
        harness.answerConversation("t", 500, "no");
        rename("Harbour times");
        keys("Tides");
        keyClick(Qt.Key_Return);
        compare(titles()[0], "Tides");
        tryVerify(() => titles()[0] === "Harbour times");
        verify(!appState.hasError);
        compare(texts().filter(text => text.includes("went wrong")), []);
    }
    function test_anotherRenameTakesOver(): void {
        show(threeConversations());
        rename("Harbour times");
        keys("Tides");
        rename("Été à Paris");
        compare(renameField().text, "Été à Paris");
        compare(titles(), ["Harbour times", "Ferry or train"]);
    }
    function test_escapeInARenameDoesntStopAnAnswer(): void {
        harness.answerChat(['{"type":"text-delta","delta":"word"}'], false);
        show(threeConversations());
        const shortcut = createTemporaryObject(escapeShortcut, root);
        rename("Harbour times");
        keyClick(Qt.Key_Escape);
        compare(renameField(), null);
        compare(shortcut.count, 0);
        searchFor("par");
        appState.requestHistorySearchFocus();
        keyClick(Qt.Key_Escape);
        compare(search().text, "");
        compare(shortcut.count, 0);
        keyClick(Qt.Key_Escape);
        compare(shortcut.count, 1);
        shortcut.enabled = false;
    }
    Component {
        id: escapeShortcut

        Shortcut {
            property int count: 0

            sequence: "Escape"

            onActivated: ++count
        }
    }

    // Deleting

    function test_deleteAsksFirst(): void {
        show(threeConversations());
        askToDelete("Harbour times");
        verify(alertTexts().includes("Delete chat?"));
        verify(alertTexts().includes('"Harbour times" will be permanently removed.'));
        verify(alertButton("Cancel") !== null);
        compare(rows().length, 3);
        mouseClick(alertButton("Cancel"));
        tryVerify(() => alertButton("Delete") === null);
        compare(rows().length, 3);
        appState.startDeleteConversation("o");
        tryVerify(() => deletions().length > 0);
        compare(deletions(), ["DELETE /v1/conversations/o"]);
    }
    function test_theSummaryIsNotNamedBeforeADeletion(): void {
        show(threeConversations());
        askToDelete("Ferry or train");
        verify(alertTexts().includes('"This chat" will be permanently removed.'));
        mouseClick(alertButton("Cancel"));
        tryVerify(() => alertButton("Delete") === null);
    }
    function test_deleteDeletes(): void {
        show(threeConversations());
        askToDelete("Harbour times");
        mouseClick(alertButton("Delete"));
        tryVerify(() => alertButton("Delete") === null);
        tryTitles(["Ferry or train", "Été à Paris"]);
        compare(headers(), ["Previous 7 Days", "Older"]);
        tryVerify(() => deletions().length === 1);
        compare(deletions(), ["DELETE /v1/conversations/t"]);
    }
    function test_escapeIsCancel(): void {
        show(threeConversations());
        askToDelete("Harbour times");
        keyClick(Qt.Key_Escape);
        tryVerify(() => alertButton("Delete") === null);
        compare(rows().length, 3);
    }
    function test_aRefusedDeletionBringsTheRowBack(): void {
        show(threeConversations());
        harness.answerConversation("t", 500, "no");
        askToDelete("Harbour times");
        const counts = [];
        appState.conversationsChanged.connect(() => counts.push(sidebar.historyCount));
        mouseClick(alertButton("Delete"));
        tryVerify(() => counts.length === 2);
        compare(counts, [2, 3]);
        tryVerify(() => rows().length === 3);
        verify(!appState.hasError);
    }
}
