// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Presentation
import Velto.Shell

LoginView {
    required property AppState appState

    onSignInRequested: appState.startSignIn()
}
