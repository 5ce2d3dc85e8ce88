// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls
import Velto.Presentation

// Files that come to the composer; what is made of their bytes has tests of its own.
TestCase {
    id: root

    property AppState appState
    property ChatView view
    property Item input

    readonly property string failure: "Couldn't attach file"

    height: 600
    name: "Attaching"
    visible: true
    when: windowShown
    width: 600

    Component {
        id: chatView

        ChatView {
            anchors.fill: parent
        }
    }

    function named(name: string): Item {
        return harness.focusableItems(root.Window.contentItem).find(item => harness.accessible(item).name === name) ?? null;
    }
    function shows(name: string): bool {
        return harness.accessibleTree(view).some(item => item.name === name);
    }
    function block(extension: string, name: string, content: string): string {
        return `\n\n\`\`\`${extension} attachment=${name}\n${content}\n\`\`\`\n`;
    }
    function init(): void {
        appState = harness.newState();
        harness.bootstrap(true, false);
        tryVerify(() => appState.authStatus === AuthStatus.LoggedIn);
        view = createTemporaryObject(chatView, root, {appState: appState});
        view.forceActiveFocus();
        input = named("Message input");
        waitForRendering(view);
    }
    function dismiss(): void {
        tryVerify(() => shows(failure));
        tryVerify(() => named("OK") !== null && named("OK").activeFocus);
        keyClick(Qt.Key_Return);
        tryVerify(() => !shows(failure));
    }

    function test_aDroppedFileIsAttached(): void {
        appState.inputDraft = "Look:";
        named("Attach file").forceActiveFocus();
        verify(harness.drag(input, [harness.newFile("a.txt", "one\ntwo")]));
        compare(harness.drop(input), Qt.CopyAction);
        tryCompare(appState, "inputDraft", "Look:" + block("txt", "a.txt", "one\ntwo"));
        compare(input.text, appState.inputDraft);
        tryVerify(() => input.activeFocus);
        compare(appState.messages.count, 0);
    }
    function test_severalDroppedFilesAreAttachedInOrder(): void {
        verify(harness.drag(input, [harness.newFile("b.md", "b"), harness.newFile("a.md", "a")]));
        harness.drop(input);
        tryCompare(appState, "inputDraft", block("md", "b.md", "b") + block("md", "a.md", "a"));
    }
    function test_onlyFilesAreWelcome(): void {
        verify(!harness.drag(input, ["http://127.0.0.1/a.txt"]));
        verify(harness.drag(input, ["http://127.0.0.1/a.txt", harness.newFile("a.txt", "a")]));
        harness.drop(input);
        tryCompare(appState, "inputDraft", block("txt", "a.txt", "a"));
    }
    function test_theCardShowsThatADropIsWelcome(): void {
        const card = named("Attach file").parent;
        const usual = card.border.width;
        verify(harness.drag(input, [harness.newFile("a.txt", "a")]));
        verify(card.border.width > usual);
        verify(Qt.colorEqual(card.border.color, Tokens.accent));
        harness.drop(input);
        compare(card.border.width, usual);
        tryVerify(() => appState.inputDraft !== "");
    }
    function test_aPastedFileIsAttached(): void {
        harness.copyFiles([harness.newFile("README", "read me")]);
        keySequence(StandardKey.Paste);
        tryCompare(appState, "inputDraft", block("readme", "README", "read me"));
    }
    function test_textIsPastedAsText(): void {
        harness.copyText("<b>file:///etc/hosts</b>\nwords");
        keySequence(StandardKey.Paste);
        compare(appState.inputDraft, "<b>file:///etc/hosts</b>\nwords");
    }
    function test_aPictureIsNoText(): void {
        harness.copyPicture();
        keySequence(StandardKey.Paste);
        tryVerify(() => shows("Only text-based files are supported right now."));
        dismiss();
        compare(appState.inputDraft, "");
        tryVerify(() => input.activeFocus);
    }
    function test_whatIsTooLargeIsToldInAnAlert(): void {
        verify(harness.drag(input, [harness.newFile("a.txt", "x".repeat(256001))]));
        harness.drop(input);
        tryVerify(() => shows("File is too large (256 KB). Inline attachments are limited to 250 KB."));
        dismiss();
        compare(appState.inputDraft, "");
        // The same again is told again.
        verify(harness.drag(input, ["file:///nowhere/at/all"]));
        harness.drop(input);
        tryVerify(() => shows("Couldn't read the file."));
        keyClick(Qt.Key_Escape);
        tryVerify(() => !shows(failure));
        verify(harness.drag(input, ["file:///nowhere/at/all"]));
        harness.drop(input);
        tryVerify(() => shows("Couldn't read the file."));
        dismiss();
    }
    function test_lineEndingsOfAFileAreKeptUntilItIsEdited(): void {
        harness.copyFiles([harness.newFile("a.txt", "a\r\nb\u00a0c")]);
        keySequence(StandardKey.Paste);
        tryCompare(appState, "inputDraft", block("txt", "a.txt", "a\r\nb\u00a0c"));
        keyClick(Qt.Key_X);
        compare(appState.inputDraft, block("txt", "a.txt", "a\nb\u00a0c") + "x");
    }
    function test_anAttachedFileCanBeUndone(): void {
        keyClick(Qt.Key_A);
        harness.copyFiles([harness.newFile("a.txt", "a")]);
        keySequence(StandardKey.Paste);
        tryCompare(appState, "inputDraft", "a" + block("txt", "a.txt", "a"));
        keySequence(StandardKey.Undo);
        compare(appState.inputDraft, "a");
        keySequence(StandardKey.Redo);
        compare(appState.inputDraft, "a" + block("txt", "a.txt", "a"));
    }
    // Here no desktop has a dialog; see tst_filechooser for those that do.
    function test_theButtonOpensADialog(): void {
        const button = named("Attach file");
        compare(harness.accessible(button).description, "Attach file");
        mouseClick(button);
        tryVerify(() => shows("Filter"));
        keyClick(Qt.Key_Escape);
        tryVerify(() => !shows("Filter"));
        verify(!shows(failure));
        compare(appState.inputDraft, "");
    }
    function test_theDialogGoesWithTheView(): void {
        mouseClick(named("Attach file"));
        tryVerify(() => shows("Filter"));
        const other = createTemporaryQmlObject("import QtQuick; Item {}", root);
        view.destroy();
        tryVerify(() => !harness.accessibleTree(other).some(item => item.name === "Filter"));
    }
}
