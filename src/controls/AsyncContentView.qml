// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Shows what a screen has loaded, or that it is loading, or why there is nothing. Only what shows
/// exists.
FocusScope {
    id: root

    required property bool isLoading
    /// Empty when there is none.
    required property string error
    required property bool isEmpty
    required property string emptyText
    required property string emptySymbol
    /// Called by the button of an error or of emptiness; null when there is nothing to try.
    property var retry: null
    default property Component content

    readonly property string actionOnError: retry === null ? "" : qsTr("Try again")
    readonly property string actionOnEmpty: retry === null ? "" : qsTr("Refresh")

    Loader {
        anchors.fill: parent
        focus: true
        sourceComponent: root.isLoading ? loading : root.error !== "" ? failed : root.isEmpty ? empty : root.content
    }
    Component {
        id: loading

        Item {
            Spinner {
                Accessible.name: qsTr("Loading…")
                Accessible.role: Accessible.Animation
                anchors.centerIn: parent
                size: 28
            }
        }
    }
    Component {
        id: failed

        UnavailableContent {
            action: root.actionOnError
            focus: true
            message: root.error
            symbol: "exclamationmark.triangle"
            title: qsTr("Something went wrong")

            onActivated: root.retry()
        }
    }
    Component {
        id: empty

        UnavailableContent {
            action: root.actionOnEmpty
            focus: true
            symbol: root.emptySymbol
            title: root.emptyText

            onActivated: root.retry()
        }
    }
}
