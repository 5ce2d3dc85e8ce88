// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// The chat: title, messages, what the agent is about, the banner, the composer. Keeps no copy of
/// anything that the state holds.
FocusScope {
    id: root

    required property AppState appState

    /// Whether the list follows what comes.
    property bool stickToBottom: true
    /// The id of the message that is rewritten, undefined for none.
    property var editingMessageID

    readonly property real columnWidth: Math.min(720, width)

    implicitHeight: 480
    implicitWidth: 480

    ChatScreen {
        id: screen

        appState: root.appState

        // The list that would have seen this is gone by now.
        onIsEmptyStateChanged: root.stickToBottom = true
    }
    StreamingHaptics {
        isStreaming: root.appState.isStreaming
    }
    Attachments {
        id: attachments

        appState: root.appState

        onAttached: composer.focusInput()
    }
    Connections {
        function onConversationIDChanged(): void {
            root.stickToBottom = true;
            root.editingMessageID = undefined;
        }
        function onFocusInputRequestChanged(): void {
            composer.focusInput();
        }

        target: root.appState
    }
    Connections {
        function onActiveChanged(): void {
            if (root.Window.active)
                root.appState.startRefreshConversations();
        }

        target: root.Window.window
    }
    Shortcut {
        enabled: root.appState.isStreaming
        sequence: "Escape"

        onActivated: root.appState.stopStreaming()
    }
    // In front of the messages, so that what fades into the background fades into the glow too.
    Glow {
        anchors.right: parent.right
        anchors.top: parent.top
        colour: Tokens.faded(Tokens.accent, 0.08)
        height: 520
        innerRadius: 60
        width: 520
        z: 1
    }
    TitleRow {
        anchors.left: parent.left
        anchors.right: parent.right
        appState: root.appState
        shown: screen.isEmptyState
        title: ""
        y: 36
    }
    TitleRow {
        id: titleRow

        anchors.left: parent.left
        anchors.right: parent.right
        appState: root.appState
        shown: !screen.isEmptyState && screen.title !== ""
        title: screen.title
        y: 36
    }
    Loader {
        id: messages

        readonly property MessageList list: item as MessageList

        active: !screen.isEmptyState
        anchors.bottom: lines.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: titleRow.bottom
        sourceComponent: MessageList {
            appState: root.appState
            editingMessageID: root.editingMessageID
            isStreaming: root.appState.isStreaming
            messages: root.appState.messages
            stickToBottom: root.stickToBottom

            onBranchRequested: (messageId, index) => root.appState.switchBranch(messageId, index)
            onContinueRequested: root.appState.startContinueGeneration()
            onEdited: (messageId, text) => root.appState.startEditMessage(messageId, text)
            onEditingRequested: messageId => root.editingMessageID = messageId
            onLinkActivated: link => root.appState.openLink(link)
            onRegenerateRequested: root.appState.startRegenerate()
            onStickingRequested: sticking => root.stickToBottom = sticking
        }
    }
    EmptyHero {
        anchors.fill: messages
        opacity: screen.isEmptyState ? 1 : 0
        visible: opacity > 0

        Behavior on opacity {
            NumberAnimation {
                duration: 280
                easing.type: Easing.OutQuad
            }
        }
    }
    Column {
        id: lines

        anchors.bottom: composer.top
        anchors.horizontalCenter: parent.horizontalCenter
        width: root.columnWidth

        EnteringLine {
            active: root.appState.hasError
            rises: true
            sourceComponent: ErrorBanner {
                message: root.appState.errorMessage

                onDismissed: root.appState.dismissError()
                onRetried: root.appState.startRegenerate()
            }
            width: parent.width
        }
        EnteringLine {
            active: root.appState.isStreaming && root.appState.agentProgress !== ""
            sourceComponent: ProgressLine {
                text: root.appState.agentProgress
            }
            width: parent.width
        }
        EnteringLine {
            active: !root.appState.isStreaming && root.appState.promptSuggestion !== ""
            sourceComponent: PromptSuggestion {
                suggestion: root.appState.promptSuggestion

                onAccepted: {
                    root.appState.inputDraft = root.appState.promptSuggestion;
                    root.appState.promptSuggestion = "";
                    root.appState.startSendDraft();
                }
            }
            width: parent.width
        }
    }
    Composer {
        id: composer

        anchors.bottom: parent.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        attachments: attachments
        canSend: screen.canSend
        draft: root.appState.inputDraft
        focus: true
        isStreaming: root.appState.isStreaming
        maximumHeight: Math.max(root.height * 0.45, 80)
        width: root.columnWidth

        onEdited: text => root.appState.inputDraft = text
        onSendRequested: root.appState.startSendDraft()
        onStopRequested: root.appState.stopStreaming()
    }
    AttachmentPopups {
        attachments: attachments
    }
}
