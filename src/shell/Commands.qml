// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQml.Models
import QtQuick
import Velto.Presentation
import Velto.Shell

/// The commands of the main window, each with its key, and the menus they stand in.
Item {
    id: root

    required property AppState appState

    /// What is shown over the window from elsewhere; each has a `toggle` function.
    property var searchPalette: null
    property var spotlight: null

    readonly property var field: Window.activeFocusItem
    readonly property bool isText: field !== null && field.selectedText !== undefined
    readonly property bool isWritable: isText && field.readOnly === false

    /// A title and its commands each; null is a line between two groups.
    readonly property var menus: [
        {title: qsTr("velto"), commands: [stop, null, signOut, null, quit]},
        {title: qsTr("File"), commands: [newChat, null, closeWindow]},
        {title: qsTr("Edit"), commands: [undo, redo, null, cut, copy, paste, selectAll, null, findChat]},
        {title: qsTr("View"), commands: [sidebar, focusInput, null, previous, next]},
        {title: qsTr("Window"), commands: [search, spotlightComposer, null, ...sections.commands()]}
    ]

    Command {
        id: stop

        enabled: root.appState.isStreaming
        sequence: "Ctrl+."
        text: qsTr("Stop Generating")

        onActivated: root.appState.stopStreaming()
    }
    KeylessCommand {
        id: signOut

        enabled: root.appState.authStatus === AuthStatus.LoggedIn
        text: qsTr("Sign out")

        onActivated: root.appState.startSignOut()
    }
    Command {
        id: quit

        sequence: "Ctrl+Q"
        text: qsTr("Quit velto")

        onActivated: Qt.quit()
    }
    Command {
        id: newChat

        sequence: "Ctrl+N"
        text: qsTr("New Chat")

        onActivated: {
            root.appState.newConversation();
            root.appState.requestInputFocus();
        }
    }
    Command {
        id: closeWindow

        sequence: "Ctrl+W"
        text: qsTr("Close Window")

        onActivated: root.Window.window.close()
    }
    KeylessCommand {
        id: undo

        enabled: root.isWritable && root.field.canUndo
        nativeText: "Ctrl+Z"
        text: qsTr("Undo")

        onActivated: root.field.undo()
    }
    KeylessCommand {
        id: redo

        enabled: root.isWritable && root.field.canRedo
        nativeText: "Ctrl+Shift+Z"
        text: qsTr("Redo")

        onActivated: root.field.redo()
    }
    KeylessCommand {
        id: cut

        enabled: root.isWritable && root.field.selectedText !== ""
        nativeText: "Ctrl+X"
        text: qsTr("Cut")

        onActivated: root.field.cut()
    }
    KeylessCommand {
        id: copy

        enabled: root.isText && root.field.selectedText !== ""
        nativeText: "Ctrl+C"
        text: qsTr("Copy")

        onActivated: root.field.copy()
    }
    KeylessCommand {
        id: paste

        // Not whether there is something to paste: asking loads every image format there is and
        // waits for whoever owns the clipboard, whenever a field gets the keyboard.
        enabled: root.isWritable
        nativeText: "Ctrl+V"
        text: qsTr("Paste")

        onActivated: root.field.paste()
    }
    KeylessCommand {
        id: selectAll

        enabled: root.isText
        nativeText: "Ctrl+A"
        text: qsTr("Select All")

        onActivated: root.field.selectAll()
    }
    Command {
        id: findChat

        sequence: "Ctrl+F"
        text: qsTr("Search Chats")

        onActivated: Qt.callLater(root.appState.requestHistorySearchFocus)
    }
    Command {
        id: sidebar

        sequence: "Ctrl+\\"
        text: ShellSettings.sidebarCollapsed ? qsTr("Show Sidebar") : qsTr("Hide Sidebar")

        onActivated: ShellSettings.sidebarCollapsed = !ShellSettings.sidebarCollapsed
    }
    Command {
        id: focusInput

        sequence: "Ctrl+L"
        text: qsTr("Focus Input")

        onActivated: root.appState.requestInputFocus()
    }
    Command {
        id: previous

        sequence: "Ctrl+["
        text: qsTr("Previous Conversation")

        onActivated: root.appState.startStepConversation(-1)
    }
    Command {
        id: next

        sequence: "Ctrl+]"
        text: qsTr("Next Conversation")

        onActivated: root.appState.startStepConversation(1)
    }
    Command {
        id: search

        enabled: root.searchPalette !== null
        sequence: "Ctrl+K"
        text: qsTr("Search…")

        onActivated: root.searchPalette.toggle()
    }
    Command {
        id: spotlightComposer

        enabled: root.spotlight !== null
        sequence: "Ctrl+Shift+Space"
        text: qsTr("Toggle Spotlight Composer")

        onActivated: root.spotlight.toggle()
    }
    Instantiator {
        id: sections

        function commands(): var {
            return Array.from({length: count}, (_, index) => objectAt(index));
        }

        model: Sections.commands

        delegate: Command {
            required property int index
            required property int modelData

            sequence: "Ctrl+" + (index + 1)
            text: Sections.title(modelData)

            onActivated: root.appState.selectedSection = modelData
        }
    }
}
