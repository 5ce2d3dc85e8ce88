// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls
import Velto.Presentation
import Velto.Shell

TestCase {
    id: root

    property AppState appState
    property ContentView view

    height: 700
    name: "ContentView"
    visible: true
    when: windowShown
    width: 600

    Component {
        id: contentView

        ContentView {
            anchors.fill: parent
        }
    }

    function names(): var {
        return harness.accessibleTree(view).map(item => item.name);
    }
    function button(name: string): Item {
        return harness.focusableItems(view).find(item => harness.accessible(item).name === name) ?? null;
    }
    function show(): void {
        view = createTemporaryObject(contentView, root, {appState: appState});
        view.forceActiveFocus();
        waitForRendering(view);
    }
    function init(): void {
        appState = harness.newState();
    }

    function test_bootstrappingWithoutMessagesShowsTheSpinnerAlone(): void {
        harness.bootstrap(true, true);
        show();
        compare(appState.authStatus, AuthStatus.Bootstrapping);
        compare(names(), ["Loading…"]);
    }
    function test_bootstrappingWithCachedMessagesShowsThemReadOnly(): void {
        harness.cacheConversation(4);
        harness.bootstrap(true, true);
        show();
        compare(appState.authStatus, AuthStatus.Bootstrapping);
        verify(names().includes("Loading…"));
        verify(names().includes("Messages"));
        verify(harness.accessibleTree(view).some(item => item.name === "Message 3, in a few words."));
        compare(button("Message input"), null);
        compare(button("Send"), null);
    }
    function test_loggedInShowsTheChat(): void {
        harness.cacheConversation(2);
        harness.bootstrap(true, false);
        show();
        tryVerify(() => appState.authStatus === AuthStatus.LoggedIn);
        verify(button("Message input").activeFocus);
        verify(!names().includes("Loading…"));
        verify(names().includes("Messages"));
    }
    function test_loggedOutShowsSignIn(): void {
        harness.bootstrap(false, false);
        show();
        tryVerify(() => appState.authStatus === AuthStatus.LoggedOut);
        tryVerify(() => names().includes("velto"));
        verify(names().includes("Your AI colleague"));
        verify(names().includes("By continuing, you agree to velto's Terms."));
        const signIn = button("Continue with Google");
        compare(signIn.height, 52);
        verify(signIn.width <= 360);
        verify(signIn.activeFocus);
    }
    function test_tabShowsWhereTheKeyboardIsOnTheSignIn(): void {
        harness.bootstrap(false, false);
        show();
        tryVerify(() => button("Continue with Google") !== null);
        const signIn = button("Continue with Google");
        verify(!signIn.visualFocus);
        keyClick(Qt.Key_Tab);
        verify(signIn.activeFocus);
        verify(signIn.visualFocus);
    }
    function test_failedSignInShowsTheErrorAndTriesAgain(): void {
        harness.bootstrap(false, false);
        show();
        tryVerify(() => button("Continue with Google") !== null);
        keyClick(Qt.Key_Return);
        tryVerify(() => appState.authStatus === AuthStatus.Error);
        verify(appState.authError.length > 0);
        verify(names().includes(appState.authError));
        const kinds = [];
        appState.authStatusChanged.connect(() => kinds.push(appState.authStatus));
        waitForRendering(view);
        mouseClick(button("Try again"));
        tryVerify(() => kinds.length === 2);
        compare(kinds, [AuthStatus.Authenticating, AuthStatus.Error]);
    }
    function test_everyFocusableControlHasAName_data(): var {
        return [{tag: "signedIn", token: true}, {tag: "signedOut", token: false}];
    }
    function test_everyFocusableControlHasAName(data): void {
        harness.bootstrap(data.token, false);
        show();
        tryVerify(() => appState.authStatus !== AuthStatus.Bootstrapping);
        const items = harness.focusableItems(view);
        verify(items.length > 0);
        for (const item of items)
            verify(harness.accessible(item).name.length > 0, item.toString());
    }
}
