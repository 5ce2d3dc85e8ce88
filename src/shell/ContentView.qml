// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Presentation
import Velto.Shell

/// The root screen, chosen by who is signed in. Only the chosen one exists, and only what waits for
/// the session is read in with the program: the others would delay the first frame.
FocusScope {
    id: root

    required property AppState appState

    /// What a signed-in user has before them, and whether their profile is loaded with it.
    property string signedInScreen: "MacShell.qml"
    property bool loadsProfile: true

    property int shownStatus: -1

    function chooseScreen(): void {
        if (shownStatus === appState.authStatus)
            return;
        shownStatus = appState.authStatus;
        switch (shownStatus) {
        case AuthStatus.LoggedIn:
            if (loadsProfile)
                appState.profile.startLoad();
            return screen.setSource(signedInScreen, {appState});
        case AuthStatus.Error:
            return screen.setSource("FailedScreen.qml", {appState});
        case AuthStatus.LoggedOut:
            return screen.setSource("SignedOutScreen.qml", {appState});
        default:
            screen.sourceComponent = waiting;
        }
    }

    Component.onCompleted: chooseScreen()

    Connections {
        function onAuthStatusChanged(): void {
            root.chooseScreen();
        }

        target: root.appState
    }
    Loader {
        id: screen

        anchors.fill: parent
        focus: true

        onLoaded: item.focus = true
    }
    Component {
        id: waiting

        LoadingView {
            messages: root.appState.messages
            showsMessages: root.appState.authStatus === AuthStatus.Bootstrapping
        }
    }
}
