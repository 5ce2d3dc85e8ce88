// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Presentation

/// The root screen, chosen by who is signed in. Only the chosen one exists.
FocusScope {
    id: root

    required property AppState appState

    Loader {
        anchors.fill: parent
        focus: true
        sourceComponent: {
            switch (root.appState.authStatus) {
            case AuthStatus.LoggedIn:
                return signedIn;
            case AuthStatus.Error:
                return failed;
            case AuthStatus.LoggedOut:
                return signedOut;
            default:
                return loading;
            }
        }
    }
    Component {
        id: signedIn

        FocusScope {
            focus: true

            Commands {
                appState: root.appState
            }
            ChatView {
                anchors.fill: parent
                appState: root.appState
                focus: true
            }
        }
    }
    Component {
        id: failed

        ErrorScreen {
            focus: true
            message: root.appState.authError

            onRetried: root.appState.startSignIn()
        }
    }
    Component {
        id: signedOut

        LoginView {
            focus: true

            onSignInRequested: root.appState.startSignIn()
        }
    }
    Component {
        id: loading

        LoadingView {
            messages: root.appState.messages
            showsMessages: root.appState.authStatus === AuthStatus.Bootstrapping
        }
    }
}
