// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Presentation
import Velto.Shell

TestCase {
    id: root

    property AppState appState
    property MacRoot view

    height: 700
    name: "MacRoot"
    visible: true
    when: windowShown
    width: 900

    Component {
        id: macRoot

        MacRoot {
            anchors.fill: parent
        }
    }

    function names(): var {
        return harness.accessibleTree(view).map(item => item.name);
    }
    function control(name: string): Item {
        return harness.focusableItems(view).find(item => harness.accessible(item).name === name) ?? null;
    }
    function init(): void {
        ShellSettings.sidebarCollapsed = false;
        ShellSettings.columnHidden = false;
        root.width = 900;
        appState = harness.newState();
        harness.cacheConversation(4);
    }
    function signIn(): void {
        harness.bootstrap(true, false);
        view = createTemporaryObject(macRoot, root, {appState: appState});
        view.forceActiveFocus();
        tryVerify(() => appState.authStatus === AuthStatus.LoggedIn);
        tryVerify(() => findChild(view, "menuBar") !== null);
        waitForRendering(view);
    }
    /// The commands of a menu as it would open now.
    function entries(title: string): var {
        const bar = findChild(view, "menuBar");
        return bar.entries(bar.menus.find(menu => menu.title === title).commands);
    }
    function entry(title: string, text: string): var {
        return entries(title).find(entry => entry.text === text);
    }

    function test_everyCommandHasItsPlaceAndItsKey_data(): var {
        return [
            {tag: "velto", rows: [["Stop Generating", "Ctrl+."], null, ["Sign out", ""], null, ["Quit velto", "Ctrl+Q"]]},
            {tag: "File", rows: [["New Chat", "Ctrl+N"], null, ["Close Window", "Ctrl+W"]]},
            {tag: "View", rows: [["Hide Sidebar", "Ctrl+\\"], ["Focus Input", "Ctrl+L"], null, ["Previous Conversation", "Ctrl+["], ["Next Conversation", "Ctrl+]"]]},
            {tag: "Window", rows: [["Search…", "Ctrl+K"], ["Toggle Spotlight Composer", "Ctrl+Shift+Space"], null, ["Chat", "Ctrl+1"], ["Profile", "Ctrl+2"]]}
        ];
    }
    function test_everyCommandHasItsPlaceAndItsKey(data): void {
        signIn();
        compare(entries(data.tag).map(entry => entry.separator ? null : [entry.text, entry.shortcut]), data.rows);
    }
    function test_newChatEmptiesTheChatAndFocusesTheInput(): void {
        signIn();
        compare(appState.messages.count, 4);
        control("Messages").forceActiveFocus();
        keyClick(Qt.Key_N, Qt.ControlModifier);
        compare(appState.messages.count, 0);
        verify(control("Message input").activeFocus);
    }
    function test_newChatWhileStreamingEndsTheStream(): void {
        signIn();
        harness.answerChat(['{"type":"text-delta","delta":"Some"}'], false);
        appState.inputDraft = "hi";
        appState.startSendDraft();
        tryVerify(() => appState.messages.count === 6);
        verify(appState.isStreaming);
        control("Messages").forceActiveFocus();
        keyClick(Qt.Key_N, Qt.ControlModifier);
        tryCompare(appState, "isStreaming", false);
        compare(appState.messages.count, 0);
        verify(control("Message input").activeFocus);
    }
    function test_stopGeneratingIsForStreamsAlone(): void {
        signIn();
        verify(!entry("velto", "Stop Generating").enabled);
        harness.answerChat(['{"type":"text-delta","delta":"Some"}'], false);
        appState.inputDraft = "hi";
        appState.startSendDraft();
        tryVerify(() => appState.isStreaming);
        verify(entry("velto", "Stop Generating").enabled);
        keyClick(Qt.Key_Period, Qt.ControlModifier);
        tryCompare(appState, "isStreaming", false);
    }
    function test_signOutLeadsToTheSignInScreen(): void {
        signIn();
        appState.inputDraft = "a thought";
        verify(entry("velto", "Sign out").enabled);
        entry("velto", "Sign out").activate();
        tryVerify(() => appState.authStatus === AuthStatus.LoggedOut);
        tryVerify(() => control("Continue with Google") !== null);
        compare(appState.messages.count, 0);
        compare(appState.inputDraft, "a thought");
    }
    function test_focusInput(): void {
        signIn();
        control("Messages").forceActiveFocus();
        keyClick(Qt.Key_L, Qt.ControlModifier);
        verify(control("Message input").activeFocus);
    }
    function test_searchChatsAsksForTheField(): void {
        signIn();
        const before = appState.focusHistorySearchRequest;
        keyClick(Qt.Key_F, Qt.ControlModifier);
        tryCompare(appState, "focusHistorySearchRequest", before + 1);
    }
    function test_theSidebarCommandChangesItsTitleAndNothingElse(): void {
        signIn();
        const button = control("Hide the sidebar");
        verify(button !== null);
        keyClick(Qt.Key_Backslash, Qt.ControlModifier);
        compare(ShellSettings.sidebarCollapsed, true);
        verify(entry("View", "Show Sidebar") !== undefined);
        compare(button.label, "Hide the sidebar");
        compare(ShellSettings.columnHidden, false);
        keyClick(Qt.Key_Backslash, Qt.ControlModifier);
        compare(ShellSettings.sidebarCollapsed, false);
        verify(entry("View", "Hide Sidebar") !== undefined);
    }
    function test_theButtonPutsTheColumnAwayAndBack(): void {
        signIn();
        mouseClick(control("Hide the sidebar"));
        compare(ShellSettings.columnHidden, true);
        compare(ShellSettings.sidebarCollapsed, false);
        mouseClick(control("Show the sidebar"));
        compare(ShellSettings.columnHidden, false);
    }
    function test_aNarrowWindowShowsTheSidebarOverTheSection(): void {
        root.width = 480;
        signIn();
        const button = control("Show the sidebar");
        verify(button !== null);
        mouseClick(button);
        compare(button.label, "Hide the sidebar");
        compare(ShellSettings.columnHidden, false);
        mouseClick(root, 470, 350);
        compare(button.label, "Show the sidebar");
        verify(control("Message input").activeFocus);
    }
    function test_sectionsHaveTheirKeys(): void {
        signIn();
        keyClick(Qt.Key_2, Qt.ControlModifier);
        compare(appState.selectedSection, AppState.Profile);
        verify(names().includes("Profile"));
        keyClick(Qt.Key_1, Qt.ControlModifier);
        compare(appState.selectedSection, AppState.Chat);
        verify(control("Message input") !== null);
    }
    function test_everySectionIsRouted_data(): var {
        return [
            {tag: "Velto", section: AppState.VeltoSettings},
            {tag: "Integrations", section: AppState.Integrations},
            {tag: "Marketplace", section: AppState.Marketplace},
            {tag: "Profile", section: AppState.Profile},
            {tag: "Workspace", section: AppState.Workspace},
            {tag: "Admin", section: AppState.Admin}
        ];
    }
    function test_everySectionIsRouted(data): void {
        signIn();
        appState.selectedSection = data.section;
        compare(control("Message input"), null);
        verify(names().includes(data.tag));
    }
    function test_aSectionIsMadeAfresh(): void {
        signIn();
        const before = control("Message input");
        appState.inputDraft = "a thought";
        appState.selectedSection = AppState.Profile;
        appState.selectedSection = AppState.Chat;
        const after = control("Message input");
        verify(after !== before);
        compare(after.text, "a thought");
    }
    function test_f10OpensTheMenusAndArrowsGoBetweenThem(): void {
        signIn();
        const bar = findChild(view, "menuBar");
        control("Message input").forceActiveFocus();
        keyClick(Qt.Key_F10);
        tryCompare(bar, "isOpen", true);
        compare(bar.openIndex, 0);
        keyClick(Qt.Key_Right);
        tryCompare(bar, "openIndex", 1);
        keyClick(Qt.Key_Left);
        keyClick(Qt.Key_Left);
        tryCompare(bar, "openIndex", 4);
        keyClick(Qt.Key_Escape);
        tryCompare(bar, "openIndex", -1);
        verify(control("Message input").activeFocus);
    }
    function test_theEditMenuIsAboutTheFieldWithTheKeyboard(): void {
        signIn();
        const input = control("Message input");
        input.forceActiveFocus();
        input.insert(0, "tide");
        input.selectAll();
        verify(entry("Edit", "Cut").enabled);
        entry("Edit", "Cut").activate();
        compare(appState.inputDraft, "");
        entry("Edit", "Undo").activate();
        compare(appState.inputDraft, "tide");
        control("Messages").forceActiveFocus();
        verify(!entry("Edit", "Cut").enabled);
        verify(!entry("Edit", "Select All").enabled);
    }
    function test_signingInHasTheWindowToItself(): void {
        harness.bootstrap(false, false);
        view = createTemporaryObject(macRoot, root, {appState: appState});
        tryVerify(() => appState.authStatus === AuthStatus.LoggedOut);
        tryVerify(() => findChild(view, "menuBar") !== null);
        verify(!findChild(view, "menuBar").visible);
    }
    function test_whatCannotBeShownYetIsDisabled(): void {
        signIn();
        verify(!entry("Window", "Search…").enabled);
        verify(!entry("Window", "Toggle Spotlight Composer").enabled);
    }
}
