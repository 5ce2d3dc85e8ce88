// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls
import Velto.Presentation

TestCase {
    id: root

    property AppState appState
    property ChatView view

    readonly property string owner: '{"userId":"u","workspaceId":"w","workspaces":[{"id":"w","slug":"harbour","name":"H","role":"owner"}],"user":{}}'
    readonly property var labels: ["Claude Fable 5", "Claude Opus 4.8", "Claude Opus 4.7", "Claude Opus 4.6", "Claude Sonnet 4.6", "Claude Haiku 4.5", "DeepSeek V4 Pro", "GLM 5.2 (1M)", "GLM 5.2", "GPT-5.5", "GPT-5.4", "Sakana Fugu", "Sakana Fugu Ultra"]

    height: 600
    name: "ModelPicker"
    visible: true
    when: windowShown
    width: 600

    Component {
        id: chatView

        ChatView {
            anchors.fill: parent
        }
    }

    function tree(): var {
        return harness.accessibleTree(view);
    }
    function told(name: string): var {
        return tree().find(item => item.name === name);
    }
    function button(): Item {
        return harness.focusableItems(view).find(item => harness.accessible(item).name === "Choose model" && item.visible) ?? null;
    }
    function rows(): var {
        return tree().filter(item => item.role === Accessible.MenuItem);
    }
    function show(me: string, settings: string): void {
        appState = harness.newState();
        harness.reply("/v1/me", 200, me);
        harness.reply("/v1/agent/config", 200, '{"model":"claude-haiku-4-5"}');
        if (settings !== "")
            harness.reply("/v1/settings", 200, settings);
        harness.bootstrap(true, false);
        tryVerify(() => appState.authStatus === AuthStatus.LoggedIn);
        view = createTemporaryObject(chatView, root, {appState: appState});
        view.forceActiveFocus();
        waitForRendering(view);
        if (settings !== "")
            tryVerify(() => appState.veltoSettings.settings !== undefined);
    }
    function openByKeyboard(): void {
        button().forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        tryVerify(() => rows().length === labels.length);
    }

    function test_whoMayNotChooseReadsTheModel_data(): var {
        const workspace = role => `"workspaceId":"w","workspaces":[{"id":"w","slug":"s","name":"W","role":"${role}"}]`;
        return [{tag: "a member", me: `{"userId":"u",${workspace("member")},"user":{}}`, may: false},
            {tag: "nobody's", me: '{"userId":"u","workspaces":[],"user":{}}', may: false},
            {tag: "an owner", me: `{"userId":"u",${workspace("owner")},"user":{}}`, may: true},
            {tag: "an admin", me: `{"userId":"u",${workspace("admin")},"user":{}}`, may: true},
            {tag: "an owner whom the service forbids it", me: `{"userId":"u","isAdmin":false,${workspace("owner")},"user":{}}`, may: false},
            {tag: "a member whom the service allows it", me: `{"userId":"u","isAdmin":true,${workspace("member")},"user":{}}`, may: true}];
    }
    function test_whoMayNotChooseReadsTheModel(data): void {
        show(data.me, '{"model":"claude-opus-4-8"}');
        compare(button() !== null, data.may);
        compare(told("Model") !== undefined, !data.may);
        tryCompare(told(data.may ? "Choose model" : "Model"), "description", "Opus 4.8");
    }
    function test_labelIsThatOfTheSettings_data(): var {
        return [{tag: "claude", settings: '{"model":"claude-sonnet-4-6"}', label: "Sonnet 4.6"},
            {tag: "codex", settings: '{"model":"m","provider":"codex","codexModel":"fugu"}', label: "Sakana Fugu"},
            {tag: "unknown", settings: '{"model":"claude-next"}', label: "Auto"}];
    }
    function test_labelIsThatOfTheSettings(data): void {
        show(owner, data.settings);
        tryVerify(() => told("Choose model").description === data.label);
        openByKeyboard();
        const checked = rows().filter(row => row.checked);
        compare(checked.length, data.tag === "unknown" ? 0 : 1);
        keyClick(Qt.Key_Escape);
    }
    function test_theUsualModelIsShownUntilTheSettingsAreThere(): void {
        show(owner, "");
        compare(told("Choose model").description, "Sonnet 4.6");
        tryVerify(() => harness.count("/v1/settings") === 1);
        compare(told("Choose model").description, "Sonnet 4.6");
    }
    function test_theMenuListsEveryModelWithItsFullName(): void {
        show(owner, '{"model":"claude-opus-4-8"}');
        openByKeyboard();
        compare(rows().map(row => row.name), labels);
        compare(rows().filter(row => row.checked).map(row => row.name), ["Claude Opus 4.8"]);
        keyClick(Qt.Key_Escape);
        tryVerify(() => rows().length === 0);
        tryVerify(() => button().activeFocus);
    }
    function test_aChoiceIsSavedAndShownOnceTheServiceHasIt(): void {
        show(owner, '{"model":"claude-opus-4-8"}');
        harness.hold("/v1/settings");
        harness.reply("/v1/admin/workspaces/harbour", 200, "{}");
        openByKeyboard();
        keyClick(Qt.Key_Down); // to Opus 4.7
        keyClick(Qt.Key_Return);
        tryVerify(() => rows().length === 0);
        tryVerify(() => harness.isHeld()); // it asks what has become of the settings
        compare(JSON.parse(harness.lastBody("/v1/admin/workspaces/harbour")), {model: "claude-opus-4-7"});
        compare(told("Choose model").description, "Opus 4.8");
        openByKeyboard();
        compare(rows().filter(row => row.checked).map(row => row.name), ["Claude Opus 4.8"]);
        keyClick(Qt.Key_Escape);
        tryVerify(() => rows().length === 0);
        harness.release(200, '{"model":"claude-opus-4-7"}');
        tryVerify(() => told("Choose model").description === "Opus 4.7");
    }
    function test_aFailedChoiceChangesNothingAndIsNotToldHere(): void {
        show(owner, '{"model":"claude-opus-4-8"}');
        harness.reply("/v1/settings", 500, "no");
        openByKeyboard();
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        tryVerify(() => appState.veltoSettings.actionError !== undefined);
        compare(told("Choose model").description, "Opus 4.8");
        verify(!appState.hasError);
    }
    function test_settingsAreLoadedOnceAndAgainWhereTheyFailed(): void {
        show(owner, "");
        tryCompare(appState.veltoSettings, "isLoading", false);
        compare(harness.count("/v1/settings"), 1);
        harness.reply("/v1/settings", 200, '{"model":"claude-haiku-4-5"}');
        // The picker of the title row is another one.
        harness.answerChat(['{"type":"finish"}'], true);
        appState.inputDraft = "hi";
        appState.startSendDraft();
        tryVerify(() => harness.count("/v1/settings") === 2);
        tryVerify(() => told("Choose model") && told("Choose model").description === "Haiku 4.5");
        tryCompare(appState, "isStreaming", false);
        appState.newConversation();
        tryVerify(() => told("Choose model") && told("Choose model").description === "Haiku 4.5");
        compare(harness.count("/v1/settings"), 2);
    }
    function test_escapeClosesTheMenuAndStopsNothing(): void {
        show(owner, '{"model":"claude-opus-4-8"}');
        harness.answerChat(['{"type":"text-delta","delta":"Some"}'], false);
        appState.inputDraft = "hi";
        appState.startSendDraft();
        tryVerify(() => appState.messages.count === 2 && harness.textOf(1) === "Some" && button() !== null);
        openByKeyboard();
        keyClick(Qt.Key_Escape);
        tryVerify(() => rows().length === 0);
        verify(appState.isStreaming);
        keyClick(Qt.Key_Escape);
        tryCompare(appState, "isStreaming", false);
    }
}
