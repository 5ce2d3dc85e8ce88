// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Presentation
import Velto.Shell

ErrorScreen {
    required property AppState appState

    message: appState.authError

    onRetried: appState.startSignIn()
}
