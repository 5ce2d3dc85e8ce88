// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls
import Velto.Presentation
import Velto.Shell

/// A sidebar of a user who is signed in at a scripted service, and how tests find their way in it.
TestCase {
    id: root

    property AppState appState
    property SidebarNav sidebar
    readonly property alias elsewhere: otherField

    height: 600
    visible: true
    when: windowShown
    width: 600

    Component {
        id: sidebarNav

        SidebarNav {
            height: root.height
            width: 240
        }
    }
    // Where the keyboard is when it isn't in the sidebar.
    TextInput {
        id: otherField

        x: 300
    }

    function conversation(id: string, title: var, summary: var, createdAt: string): var {
        return {id, channel: "chat_ui", title, summary, message_count: 2, created_at: createdAt};
    }
    function daysAgo(days: real): string {
        return new Date(Date.now() - days * 86400000).toISOString();
    }
    function threeConversations(): var {
        return [conversation("t", "Harbour times", "When the ferry leaves", daysAgo(0)), conversation("s", null, "Ferry or train", daysAgo(3)), conversation("o", "Été à Paris", null, "2024-01-02T03:04:05Z")];
    }
    function init(): void {
        appState = harness.newState();
    }
    function make(): void {
        sidebar = createTemporaryObject(sidebarNav, root, {appState: appState});
    }
    /// A signed-in user's sidebar with that history.
    function show(conversations: var): void {
        harness.answerHistory(JSON.stringify(conversations));
        for (const one of conversations)
            harness.answerConversation(one.id, 200, "[]");
        harness.bootstrap(true, false);
        make();
        tryVerify(() => appState.authStatus === AuthStatus.LoggedIn);
        if (conversations.length > 0)
            tryVerify(() => rows().length > 0);
        settle(sidebar);
    }
    /// Until what has changed is on the screen.
    function settle(item: Item): void {
        root.Window.window.update();
        waitForRendering(item);
    }
    function tryTitles(expected: var): void {
        tryVerify(() => titles().join() === expected.join());
        compare(titles(), expected);
    }
    function collect(item: Item, wanted: var, found: var): var {
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i];
            if (!child.visible)
                continue;
            if (wanted(child))
                found.push(child);
            collect(child, wanted, found);
        }
        return found;
    }
    function items(wanted: var): var {
        return collect(sidebar, wanted, []).sort((a, b) => a.mapToItem(sidebar, 0, 0).y - b.mapToItem(sidebar, 0, 0).y);
    }
    function rows(): var {
        return items(item => item instanceof ConversationRow);
    }
    function row(title: string): ConversationRow {
        return rows().find(item => item.title === title) ?? null;
    }
    function titles(): var {
        return rows().map(item => item.title);
    }
    function headers(): var {
        return items(item => item instanceof BucketHeader).map(item => item.text);
    }
    function texts(): var {
        return items(item => item instanceof Label).map(item => item.text);
    }
    function button(label: string): Item {
        return items(item => item instanceof PressableButton && item.label === label)[0] ?? null;
    }
    function moreOf(title: string): Item {
        return collect(row(title), item => item instanceof Pressable, [])[0];
    }
    function marked(title: string): var {
        return collect(row(title), item => item instanceof TitleText, [])[0].markedTexts();
    }
    function search(): Item {
        return items(item => item instanceof TextField && item.label === "Search chats")[0];
    }
    function renameField(): Item {
        return items(item => item instanceof TextField && item.label === "Rename chat")[0] ?? null;
    }
    function searchFor(query: string): void {
        search().text = query;
        settle(sidebar);
    }
    function keys(text: string): void {
        for (const letter of text)
            keyClick(letter);
    }
    function focusRow(title: string): void {
        sidebar.forceActiveFocus();
        const all = rows();
        keyClick(Qt.Key_Down);
        tryVerify(() => rows().some(item => item.activeFocus));
        while (!row(title).activeFocus)
            keyClick(Qt.Key_Down);
    }
    function menuRow(label: string): Item {
        return collect(root.Window.contentItem, item => item.entry !== undefined && item.entry.text === label, [])[0] ?? null;
    }
    function menuTexts(): var {
        return collect(root.Window.contentItem, item => item.entry !== undefined && item.entry.text !== undefined, []).map(item => item.entry.text);
    }
    function choose(label: string): void {
        tryVerify(() => menuRow(label) !== null);
        settle(menuRow(label));
        mouseClick(menuRow(label));
    }
    function alertButton(label: string): Item {
        return collect(root.Window.contentItem, item => item instanceof AlertButton && item.label === label, [])[0] ?? null;
    }
    function alertTexts(): var {
        return harness.accessibleTree(sidebar).map(item => item.name);
    }
    function clipboard(): string {
        elsewhere.text = "";
        elsewhere.paste();
        return elsewhere.text;
    }
    function openMenuOf(title: string): void {
        mouseClick(row(title), 40, row(title).height / 2, Qt.RightButton);
        tryVerify(() => menuRow("Rename") !== null);
    }
    function rename(title: string): void {
        openMenuOf(title);
        choose("Rename");
        tryVerify(() => renameField() !== null && renameField().activeFocus);
    }
    function askToDelete(title: string): void {
        openMenuOf(title);
        choose("Delete");
        tryVerify(() => alertButton("Delete") !== null);
        settle(alertButton("Delete"));
    }
    /// The titles that the service was asked to write.
    function renames(): var {
        return harness.conversationRequests().filter(request => request.startsWith("PATCH "));
    }
    function deletions(): var {
        return harness.conversationRequests().filter(request => request.startsWith("DELETE "));
    }
    /// Requests go out in order, so what comes first is all there was.
    function nothingWasRenamed(): void {
        appState.startRenameConversation("o", "last");
        tryVerify(() => renames().length > 0);
        compare(renames(), ['PATCH /v1/conversations/o {"title":"last"}']);
    }
}
