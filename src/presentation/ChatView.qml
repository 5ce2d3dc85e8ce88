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

    readonly property real columnWidth: Math.min(720, width)

    ChatScreen {
        id: screen

        appState: root.appState
    }
    Connections {
        function onConversationIDChanged(): void {
            if (!messages.list)
                return;
            messages.list.stickToBottom = true;
            messages.list.editingMessageID = undefined;
        }
        function onFocusInputRequestChanged(): void {
            composer.focusInput();
        }

        target: root.appState
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
        id: titleRow

        anchors.left: parent.left
        anchors.right: parent.right
        title: screen.isEmptyState ? "" : screen.title
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
            isStreaming: root.appState.isStreaming
            messages: root.appState.messages

            onBranchRequested: (messageId, index) => root.appState.switchBranch(messageId, index)
            onContinueRequested: root.appState.startContinueGeneration()
            onEdited: (messageId, text) => root.appState.startEditMessage(messageId, text)
            onLinkActivated: link => root.appState.openLink(link)
            onRegenerateRequested: root.appState.startRegenerate()
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

        Loader {
            active: root.appState.hasError
            sourceComponent: ErrorBanner {
                message: root.appState.errorMessage

                onDismissed: root.appState.dismissError()
                onRetried: root.appState.startRegenerate()
            }
            visible: active
            width: parent.width
        }
        Loader {
            active: root.appState.isStreaming && root.appState.agentProgress !== ""
            sourceComponent: ProgressLine {
                text: root.appState.agentProgress
            }
            visible: active
            width: parent.width
        }
        Loader {
            active: !root.appState.isStreaming && root.appState.promptSuggestion !== ""
            sourceComponent: PromptSuggestion {
                suggestion: root.appState.promptSuggestion

                onAccepted: {
                    root.appState.inputDraft = root.appState.promptSuggestion;
                    root.appState.promptSuggestion = "";
                    root.appState.startSendDraft();
                }
            }
            visible: active
            width: parent.width
        }
    }
    Composer {
        id: composer

        anchors.bottom: parent.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        canSend: screen.canSend
        draft: root.appState.inputDraft
        focus: true
        isStreaming: root.appState.isStreaming
        width: root.columnWidth

        onEdited: text => root.appState.inputDraft = text
        onSendRequested: root.appState.startSendDraft()
        onStopRequested: root.appState.stopStreaming()
    }
}
