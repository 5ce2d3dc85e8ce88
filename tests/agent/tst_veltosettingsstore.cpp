// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/veltosettingsstore.h"
#include "support/storetest.h"

#include <QSignalSpy>

namespace velto::agent
{
namespace
{

using test::answer;
using test::await;
using test::byMethod;
using test::Exchange;
using test::waitUntil;
using Engine = ModelOption::Engine;
using Lines = QList<QByteArray>;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QByteArray skill(const QByteArray &id, bool enabled = true)
{
    return R"({"id":")" + id + R"(","name":"N","description":"d","enabled":)" +
           (enabled ? "true}" : "false}");
}

class VeltoSettingsStoreTest : public test::StoreTest
{
protected:
    void useProvider(const QByteArray &provider)
    {
        server.on("/v1/agent/config", answer(200, R"({"model":"effective"})"));
        server.on("/v1/settings", answer(200, R"({"model":"m","provider":)" + provider + "}"));
        await(store.loadAgent());
        ASSERT_TRUE(store.settings().has_value());
        (void)asked();
    }
    void loadSkills(const QByteArray &rows)
    {
        server.on("/v1/settings/skills", answer(200, "[" + rows + "]"));
        server.on("/v1/settings/subagents", answer(200, "[" + rows + "]"));
        await(store.loadLibrary());
        ASSERT_TRUE(store.subagents()->isLoaded());
        (void)asked();
    }

    VeltoSettingsStore store{api};
};

TEST_F(VeltoSettingsStoreTest, StartsWithNothing)
{
    EXPECT_EQ(store.agentConfig(), std::nullopt);
    EXPECT_EQ(store.settings(), std::nullopt);
    EXPECT_FALSE(store.skills()->isLoaded());
    EXPECT_FALSE(store.subagents()->isLoaded());
    EXPECT_EQ(store.tools(), std::nullopt);
    EXPECT_TRUE(store.integrations().isEmpty());
    EXPECT_EQ(store.rows()->count(), 10);
    EXPECT_FALSE(store.isLoading());
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(store.actionError(), std::nullopt);
    EXPECT_EQ(store.savedNotice(), std::nullopt);
    EXPECT_TRUE(server.requests().isEmpty());
}

// --- loadAgent, loadLibrary

TEST_F(VeltoSettingsStoreTest, LoadsConfigurationAndSettingsAtOnce)
{
    const auto configs = hold("/v1/agent/config");
    const auto settings = hold("/v1/settings");
    QSignalSpy loading(&store, &VeltoSettingsStore::isLoadingChanged);
    store.startLoadAgent();
    EXPECT_TRUE(store.isLoading());
    ASSERT_TRUE(waitUntil([&] { return configs->size() == 1 && settings->size() == 1; }));
    EXPECT_EQ(askedInAnyOrder(), (Lines{"GET /v1/agent/config", "GET /v1/settings"}));
    configs->first().respond(
        200, R"({"model":"m","max_tokens":9,"tools":[{"name":"n","description":"d"}]})");
    ASSERT_TRUE(waitUntil([&] { return store.agentConfig().has_value(); }));
    EXPECT_TRUE(store.isLoading());
    EXPECT_EQ(store.agentConfig()->maxTokens, 9);
    settings->first().respond(200, R"({"model":"s","codex_model":"fugu"})");
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
    EXPECT_EQ(*store.settings(), (AppSettings{text("s"), {}, text("fugu")}));
    EXPECT_EQ(loading.count(), 2);
    EXPECT_EQ(store.loadError(), std::nullopt);
}

TEST_F(VeltoSettingsStoreTest, StoresSettingsOnlyAfterTheConfiguration)
{
    const auto configs = hold("/v1/agent/config");
    server.on("/v1/settings", answer(200, R"({"model":"s"})"));
    store.startLoadAgent();
    // By the time the second of two later answers has come, the settings have long arrived.
    ASSERT_TRUE(waitUntil([&] { return configs->size() == 1; }));
    server.on("/v1/velto/tools", answer(200, R"({"groups":[]})"));
    await(store.loadTools());
    await(store.loadTools());
    EXPECT_EQ(store.settings(), std::nullopt);
    configs->first().respond(200, R"({"model":"m"})");
    ASSERT_TRUE(waitUntil([&] { return store.settings().has_value(); }));
    EXPECT_TRUE(store.agentConfig().has_value());
}

TEST_F(VeltoSettingsStoreTest, CancelsTheSettingsWhenTheConfigurationFails)
{
    useProvider("\"claude\"");
    server.on("/v1/agent/config", answer(500, "broken"));
    const auto settings = hold("/v1/settings");
    const QCoro::Task<void> running = store.loadAgent();
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 500): broken"));
    EXPECT_TRUE(waitUntil([&] { return settings->isEmpty() || !settings->first().isOpen(); }));
    EXPECT_EQ(store.agentConfig()->model, text("effective"));
    EXPECT_EQ(store.settings()->model, text("m"));
}

TEST_F(VeltoSettingsStoreTest, DropsSettingsThatCameBeforeTheConfigurationFailed)
{
    const auto configs = hold("/v1/agent/config");
    server.on("/v1/settings", answer(200, R"({"model":"s"})"));
    store.startLoadAgent();
    ASSERT_TRUE(waitUntil([&] { return configs->size() == 1; }));
    configs->first().respond(200, R"({"no":"model"})");
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
    EXPECT_TRUE(store.loadError()->contains(text("model")));
    EXPECT_EQ(store.settings(), std::nullopt);
}

TEST_F(VeltoSettingsStoreTest, KeepsTheConfigurationWhenTheSettingsFail)
{
    server.on("/v1/agent/config", answer(200, R"({"model":"m"})"));
    server.on("/v1/settings", answer(500));
    await(store.loadAgent());
    EXPECT_EQ(store.agentConfig()->model, text("m"));
    EXPECT_EQ(store.settings(), std::nullopt);
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 500)"));
    EXPECT_FALSE(store.isLoading());
}

TEST_F(VeltoSettingsStoreTest, ReportsTheFirstOfTwoFailures)
{
    server.on("/v1/agent/config", answer(500, "first"));
    server.on("/v1/settings", answer(500, "second"));
    await(store.loadAgent());
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 500): first"));
}

TEST_F(VeltoSettingsStoreTest, LoadsTheLibraryAtOnce)
{
    server.on("/v1/settings/skills", answer(200, "[" + skill("b") + "," + skill("a") + "]"));
    server.on("/v1/settings/subagents", answer(200, "[]"));
    await(store.loadLibrary());
    EXPECT_EQ(askedInAnyOrder(), (Lines{"GET /v1/settings/skills", "GET /v1/settings/subagents"}));
    EXPECT_EQ(store.skills()->count(), 2);
    EXPECT_EQ(store.skills()->records()->first(),
              (LibrarySkill{text("b"), text("N"), text("d"), true, {}}));
    EXPECT_EQ(store.subagents()->records(), QList<LibrarySubagent>());
}

TEST_F(VeltoSettingsStoreTest, KeepsTheOldListWhenARowHasNoId)
{
    loadSkills(skill("a"));
    server.on("/v1/settings/skills",
              answer(200, "[" + skill("b") + R"(,{"name":"N","description":"d","enabled":true}])"));
    await(store.loadLibrary());
    EXPECT_TRUE(store.loadError()->contains(text("[1].id"))) << qPrintable(*store.loadError());
    EXPECT_EQ(store.skills()->records()->first().id, text("a"));
    EXPECT_EQ(store.skills()->count(), 1);
}

TEST_F(VeltoSettingsStoreTest, KeepsNewSkillsWhenTheSubagentsFail)
{
    loadSkills(skill("a"));
    server.on("/v1/settings/skills", answer(200, "[" + skill("b") + "]"));
    server.on("/v1/settings/subagents", answer(500));
    await(store.loadLibrary());
    EXPECT_EQ(store.skills()->records()->first().id, text("b"));
    EXPECT_EQ(store.subagents()->records()->first().id, text("a"));
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 500)"));
}

// --- loadTools

TEST_F(VeltoSettingsStoreTest, LoadsTheTools)
{
    server.on("/v1/velto/tools",
              answer(200, R"({"groups":[{"key":"k","label":"L","available":false,"tools":[]}]})"));
    await(store.loadTools());
    EXPECT_EQ(asked(), Lines{"GET /v1/velto/tools"});
    EXPECT_EQ(store.tools()->groups.first().label, text("L"));
    server.on("/v1/velto/tools", answer(502, "  \n"));
    await(store.loadTools());
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 502)"));
    EXPECT_TRUE(store.tools().has_value());
}

TEST_F(VeltoSettingsStoreTest, LowersTheFlagWithTheFirstLoadThatEnds)
{
    const auto tools = hold("/v1/velto/tools");
    store.startLoadTools();
    ASSERT_TRUE(waitUntil([&] { return tools->size() == 1; }));
    loadSkills("");
    EXPECT_FALSE(store.isLoading());
    tools->first().respond(200, R"({"groups":[]})");
    ASSERT_TRUE(waitUntil([&] { return store.tools().has_value(); }));
    EXPECT_FALSE(store.isLoading());
}

// --- integrations

QByteArray statusPath(IntegrationProvider provider)
{
    return "/v1/integrations/" + rawValue(provider).toLatin1() + "/status";
}

TEST_F(VeltoSettingsStoreTest, AsksForTheIntegrationsOneAfterTheOther)
{
    Lines expected;
    for (const IntegrationProvider provider : integrationProviders()) {
        expected.append("GET " + statusPath(provider));
        server.on(statusPath(provider), [&](const test::RecordedRequest &, const Exchange &now) {
            EXPECT_TRUE(store.integrations().isEmpty());
            now.respond(200, R"({"connected":true,"team_name":"T"})");
        });
    }
    int announced = 0;
    QObject::connect(&store, &VeltoSettingsStore::integrationsChanged, &store,
                     [&] { ++announced; });
    await(store.loadIntegrations());
    // Never two on the way: else they would have come over several connections.
    EXPECT_EQ(server.connectionCount(), 1);
    EXPECT_EQ(asked(), expected);
    EXPECT_EQ(store.integrations().size(), 10);
    EXPECT_EQ(announced, 1);
    EXPECT_EQ(store.rows()->records()->at(1).account, text("T"));
}

TEST_F(VeltoSettingsStoreTest, LeavesOutAProviderWithoutAProperStatus)
{
    using enum IntegrationProvider;
    for (const IntegrationProvider provider : integrationProviders())
        server.on(statusPath(provider), answer(200, R"({"connected":true})"));
    await(store.loadIntegrations());
    server.on(statusPath(Google), answer(500));
    server.on(statusPath(Linear), answer(200, R"({"connected":"yes"})"));
    server.on(statusPath(X), [](const auto &, const Exchange &exchange) { exchange.reset(); });
    server.on(statusPath(Lark), answer(304));
    await(store.loadIntegrations());
    EXPECT_EQ(store.integrations().keys(), (QList{Slack, Notion, Github, Chatwork, Hubspot, Line}));
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_FALSE(store.rows()->records()->first().connected);
    EXPECT_TRUE(store.rows()->records()->at(1).connected);
}

TEST_F(VeltoSettingsStoreTest, OneFailingProviderLeavesNine)
{
    for (const IntegrationProvider provider : integrationProviders())
        server.on(statusPath(provider), answer(200, R"({"connected":false})"));
    server.on(statusPath(IntegrationProvider::Github), answer(500));
    await(store.loadIntegrations());
    EXPECT_EQ(store.integrations().size(), 9);
    EXPECT_FALSE(store.integrations().contains(IntegrationProvider::Github));
    EXPECT_EQ(store.loadError(), std::nullopt);
}

TEST_F(VeltoSettingsStoreTest, AnUnreachableServiceIsNoError)
{
    await(store.loadTools());
    ASSERT_TRUE(store.loadError().has_value());
    for (const IntegrationProvider provider : integrationProviders())
        server.on(statusPath(provider),
                  [](const auto &, const Exchange &exchange) { exchange.reset(); });
    store.startLoadIntegrations();
    EXPECT_TRUE(store.isLoading());
    EXPECT_EQ(store.loadError(), std::nullopt);
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
    EXPECT_TRUE(store.integrations().isEmpty());
    EXPECT_FALSE(store.hasIntegrations());
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(store.rows()->count(), 10);
}

TEST_F(VeltoSettingsStoreTest, KeepsTheIntegrationsUntilAllTenAreKnown)
{
    for (const IntegrationProvider provider : integrationProviders())
        server.on(statusPath(provider), answer(200, R"({"connected":true})"));
    await(store.loadIntegrations());
    const auto last = hold(statusPath(IntegrationProvider::X));
    server.on(statusPath(IntegrationProvider::Google), answer(500));
    store.startLoadIntegrations();
    ASSERT_TRUE(waitUntil([&] { return last->size() == 1; }));
    EXPECT_EQ(store.integrations().size(), 10);
    last->first().respond(500);
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
    EXPECT_EQ(store.integrations().size(), 8);
}

TEST_F(VeltoSettingsStoreTest, DisconnectsAndReadsTheStatusAgain)
{
    using enum IntegrationProvider;
    for (const IntegrationProvider provider : integrationProviders())
        server.on(statusPath(provider), answer(200, R"({"connected":true})"));
    await(store.loadIntegrations());
    (void)asked();
    server.on(statusPath(Slack),
              byMethod({{"DELETE", answer(204)}, {"GET", answer(200, R"({"connected":false})")}}));
    QSignalSpy changed(store.rows(), &QAbstractItemModel::dataChanged);
    EXPECT_TRUE(await(store.disconnectIntegration(Slack)));
    EXPECT_EQ(asked(),
              (Lines{"DELETE /v1/integrations/slack/status", "GET /v1/integrations/slack/status"}));
    EXPECT_FALSE(store.integrations()[Slack].connected);
    EXPECT_EQ(store.integrations().size(), 10);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.first().first().toModelIndex().row(), 1);
    EXPECT_FALSE(store.isLoading());
}

TEST_F(VeltoSettingsStoreTest, AFailedDisconnectLeavesTheEntry)
{
    const auto slack = IntegrationProvider::Slack;
    server.on(statusPath(slack), answer(200, R"({"connected":true})"));
    EXPECT_TRUE(await(store.disconnectIntegration(slack)));
    (void)asked();
    server.on(statusPath(slack), byMethod({{"DELETE", answer(500, "no")}}));
    EXPECT_FALSE(await(store.disconnectIntegration(slack)));
    EXPECT_EQ(asked(), Lines{"DELETE /v1/integrations/slack/status"});
    EXPECT_EQ(store.actionError(), text("Request failed (HTTP 500): no"));
    server.on(statusPath(slack), byMethod({{"DELETE", answer(204)}, {"GET", answer(503)}}));
    EXPECT_FALSE(await(store.disconnectIntegration(slack)));
    EXPECT_EQ(store.actionError(), text("Request failed (HTTP 503)"));
    EXPECT_TRUE(store.integrations()[slack].connected);
    EXPECT_EQ(store.loadError(), std::nullopt);
}

// --- the library

TEST_F(VeltoSettingsStoreTest, ChangesTheLibraryByThisTable)
{
    loadSkills(skill("a/b c"));
    server.on("/v1/settings/skills/a/b%20c", answer(200, "whatever"));
    server.on("/v1/settings/subagents/a/b%20c", answer(204));
    const QString id = text("a/b c");
    EXPECT_TRUE(await(store.setSkillEnabled(id, false)));
    EXPECT_TRUE(await(store.deleteSkill(id)));
    EXPECT_TRUE(await(store.setSubagentEnabled(id, true)));
    EXPECT_TRUE(await(store.deleteSubagent(id)));
    EXPECT_EQ(asked(), (Lines{R"(PATCH /v1/settings/skills/a/b%20c {"enabled":false})",
                              "GET /v1/settings/skills", "DELETE /v1/settings/skills/a/b%20c",
                              "GET /v1/settings/skills",
                              R"(PATCH /v1/settings/subagents/a/b%20c {"enabled":true})",
                              "GET /v1/settings/subagents", "DELETE /v1/settings/subagents/a/b%20c",
                              "GET /v1/settings/subagents"}));
    EXPECT_FALSE(store.isLoading());
}

TEST_F(VeltoSettingsStoreTest, ShowsAChangeOnlyOnceTheListReturns)
{
    loadSkills(skill("a") + "," + skill("b"));
    server.on("/v1/settings/skills/a", answer(204));
    const auto lists = hold("/v1/settings/skills");
    store.startSetSkillEnabled(text("a"), false);
    ASSERT_TRUE(waitUntil([&] { return lists->size() == 1; }));
    EXPECT_TRUE(store.skills()->records()->first().enabled);
    QSignalSpy changed(store.skills(), &QAbstractItemModel::dataChanged);
    lists->first().respond(200, "[" + skill("a", false) + "," + skill("b") + "]");
    ASSERT_TRUE(waitUntil([&] { return !store.skills()->records()->first().enabled; }));
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(VeltoSettingsStoreTest, AFailedChangeLeavesTheList)
{
    loadSkills(skill("a"));
    const std::array operations{
        std::pair(QByteArray("skills"), &VeltoSettingsStore::deleteSkill),
        std::pair(QByteArray("subagents"), &VeltoSettingsStore::deleteSubagent)};
    for (const auto &[kind, remove] : operations) {
        server.on("/v1/settings/" + kind + "/a", answer(403, "not yours"));
        EXPECT_FALSE(await((store.*remove)(text("a"))));
        EXPECT_EQ(asked(), Lines{"DELETE /v1/settings/" + kind + "/a"});
        EXPECT_EQ(store.actionError(), text("Request failed (HTTP 403): not yours"));
        server.on("/v1/settings/" + kind + "/a", answer(204));
        server.on("/v1/settings/" + kind, answer(200, R"([{"id":1}])"));
        EXPECT_FALSE(await((store.*remove)(text("a"))));
        EXPECT_TRUE(store.actionError()->contains(text("[0].id")));
        (void)asked();
    }
    EXPECT_EQ(store.skills()->records()->first().id, text("a"));
    EXPECT_EQ(store.subagents()->records()->first().id, text("a"));
    EXPECT_EQ(store.loadError(), std::nullopt);
}

TEST_F(VeltoSettingsStoreTest, AFailedToggleLeavesTheList)
{
    loadSkills(skill("a"));
    EXPECT_FALSE(await(store.setSkillEnabled(text("a"), false)));
    EXPECT_EQ(asked(), Lines{R"(PATCH /v1/settings/skills/a {"enabled":false})"});
    EXPECT_FALSE(await(store.setSubagentEnabled(text("a"), false)));
    EXPECT_EQ(store.actionError(), text("Request failed (HTTP 404)"));
    EXPECT_TRUE(store.skills()->records()->first().enabled);
    EXPECT_TRUE(store.subagents()->records()->first().enabled);
    const auto waiting = hold("/v1/settings/skills/a");
    store.startDeleteSkill(text("a"));
    EXPECT_EQ(store.actionError(), std::nullopt);
}

// --- saveModel

TEST_F(VeltoSettingsStoreTest, SavesACodexModelWithTheUser)
{
    useProvider("\"claude\"");
    server.on("/v1/settings", byMethod({{"PUT", answer(200, R"({"model":"m","provider":"codex",)"
                                                            R"("codex_model":"fugu"})")}}));
    EXPECT_TRUE(await(store.saveModel(text("fugu"), Engine::Codex, text("acme"))));
    EXPECT_EQ(asked(), Lines{R"(PUT /v1/settings {"codexModel":"fugu","provider":"codex"})"});
    EXPECT_EQ(*store.settings(), (AppSettings{text("m"), text("codex"), text("fugu")}));
    EXPECT_EQ(store.savedNotice(), text("Saved"));
    EXPECT_EQ(store.agentConfig()->model, text("effective"));
}

TEST_F(VeltoSettingsStoreTest, SavesAClaudeModelWithTheWorkspace)
{
    for (const QByteArray provider : {"\"claude\"", "null"}) {
        useProvider(provider);
        server.on("/v1/admin/workspaces/a/b%20c", answer(200, "{}"));
        server.on("/v1/settings", byMethod({{"GET", answer(200, R"({"model":"new"})")}}));
        EXPECT_TRUE(await(store.saveModel(text("new"), Engine::Claude, text("a/b c"))));
        EXPECT_EQ(asked(), (Lines{R"(PATCH /v1/admin/workspaces/a/b%20c {"model":"new"})",
                                  "GET /v1/settings"}));
        EXPECT_EQ(store.settings()->model, text("new"));
        EXPECT_EQ(store.savedNotice(), text("Saved"));
    }
}

TEST_F(VeltoSettingsStoreTest, SwitchesTheProviderBackForAClaudeModel)
{
    for (const QByteArray provider : {"codex", "whatever"}) {
        useProvider("\"" + provider + "\"");
        server.on("/v1/admin/workspaces/acme", answer(204));
        server.on("/v1/settings",
                  byMethod({{"PUT", answer(200, R"({"model":"dropped"})")},
                            {"GET", answer(200, R"({"model":"new","provider":"claude"})")}}));
        EXPECT_TRUE(await(store.saveModel(text("new"), Engine::Claude, text("acme"))));
        EXPECT_EQ(asked(), (Lines{R"(PUT /v1/settings {"provider":"claude"})",
                                  R"(PATCH /v1/admin/workspaces/acme {"model":"new"})",
                                  "GET /v1/settings"}));
        EXPECT_EQ(store.settings()->model, text("new"));
    }
}

TEST_F(VeltoSettingsStoreTest, SendsAClaudeModelNowhereWithoutAWorkspace)
{
    useProvider("\"claude\"");
    EXPECT_TRUE(await(store.saveModel(text("new"), Engine::Claude, {})));
    EXPECT_EQ(asked(), Lines{"GET /v1/settings"});
    EXPECT_EQ(store.savedNotice(), text("Saved"));
    EXPECT_EQ(store.settings()->model, text("m"));
}

TEST_F(VeltoSettingsStoreTest, TakesAbsentSettingsForClaude)
{
    server.on("/v1/settings", answer(200, R"({"model":"m","provider":"codex"})"));
    EXPECT_TRUE(await(store.saveModel(text("new"), Engine::Claude, {})));
    EXPECT_EQ(asked(), Lines{"GET /v1/settings"});
}

TEST_F(VeltoSettingsStoreTest, StopsAtTheFirstStepThatFails)
{
    const auto settings = [](int put, int get) {
        const QByteArray body = R"({"model":"new","provider":"claude"})";
        return byMethod({{"PUT", answer(put, body)}, {"GET", answer(get, body)}});
    };
    const Lines steps{R"(PUT /v1/settings {"provider":"claude"})",
                      R"(PATCH /v1/admin/workspaces/acme {"model":"new"})", "GET /v1/settings"};
    const QList<std::array<int, 3>> statuses{{500, 200, 200}, {200, 403, 200}, {200, 200, 500}};
    for (qsizetype failing = 0; failing < 3; ++failing) {
        useProvider("\"codex\"");
        const auto [put, patch, get] = statuses[failing];
        server.on("/v1/settings", settings(put, get));
        server.on("/v1/admin/workspaces/acme", answer(patch));
        EXPECT_FALSE(await(store.saveModel(text("new"), Engine::Claude, text("acme"))));
        EXPECT_EQ(asked(), steps.first(failing + 1));
        EXPECT_TRUE(store.actionError()->startsWith(text("Request failed (HTTP ")));
        EXPECT_EQ(store.settings()->provider, text("codex"));
        EXPECT_EQ(store.savedNotice(), std::nullopt);
    }
}

TEST_F(VeltoSettingsStoreTest, StopsWhenTheAnswerToTheSwitchIsNotSettings)
{
    useProvider("\"codex\"");
    server.on("/v1/settings", byMethod({{"PUT", answer(200, R"({"provider":"claude"})")}}));
    EXPECT_FALSE(await(store.saveModel(text("new"), Engine::Claude, text("acme"))));
    EXPECT_EQ(asked(), Lines{R"(PUT /v1/settings {"provider":"claude"})"});
    EXPECT_TRUE(store.actionError()->contains(text("model"))) << qPrintable(*store.actionError());
    EXPECT_EQ(store.settings()->provider, text("codex"));
}

TEST_F(VeltoSettingsStoreTest, ReportsACodexModelThatCouldNotBeSaved)
{
    useProvider("\"claude\"");
    server.on("/v1/settings", answer(400, " bad \n"));
    EXPECT_FALSE(await(store.saveModel(text("fugu"), Engine::Codex, {})));
    EXPECT_EQ(store.actionError(), text("Request failed (HTTP 400): bad"));
    server.on("/v1/settings", answer(200, "{}"));
    EXPECT_FALSE(await(store.saveModel(text("fugu"), Engine::Codex, {})));
    EXPECT_EQ(store.settings()->model, text("m"));
    EXPECT_EQ(store.savedNotice(), std::nullopt);
}

TEST_F(VeltoSettingsStoreTest, KeepsTheNoticeUntilTheNextSaveOrReset)
{
    useProvider("\"claude\"");
    EXPECT_TRUE(await(store.saveModel(text("new"), Engine::Claude, {})));
    await(store.loadAgent());
    EXPECT_EQ(store.savedNotice(), text("Saved"));
    const auto waiting = hold("/v1/settings");
    const QCoro::Task<bool> saving = store.saveModel(text("new"), Engine::Claude, {});
    EXPECT_EQ(store.savedNotice(), std::nullopt);
    ASSERT_TRUE(waitUntil([&] { return waiting->size() == 1; }));
    waiting->first().respond(200, R"({"model":"m"})");
    ASSERT_TRUE(waitUntil([&] { return store.savedNotice().has_value(); }));
    store.reset();
    EXPECT_EQ(store.savedNotice(), std::nullopt);
}

TEST_F(VeltoSettingsStoreTest, AScreenSavesByTheKeyOfAnOption)
{
    const auto settings = hold("/v1/settings");
    store.startSaveModel(text("codex:my-own"), text("acme"));
    store.startSaveModel(text("codex:gpt-5.4"), text(""));
    ASSERT_TRUE(waitUntil([&] { return settings->size() == 1; }));
    EXPECT_EQ(asked(), Lines{R"(PUT /v1/settings {"codexModel":"gpt-5.4","provider":"codex"})"});
    const auto workspace = hold("/v1/admin/workspaces/acme");
    store.startSaveModel(text("claude:glm-5.2"), text("acme"));
    ASSERT_TRUE(waitUntil([&] { return workspace->size() == 1; }));
    EXPECT_EQ(asked(), Lines{R"(PATCH /v1/admin/workspaces/acme {"model":"glm-5.2"})"});
    store.startSaveModel(text("claude:glm-5.2"), text(""));
    ASSERT_TRUE(waitUntil([&] { return settings->size() == 2; }));
    EXPECT_EQ(asked(), Lines{"GET /v1/settings"});
}

// --- reset, end

TEST_F(VeltoSettingsStoreTest, ResetForgetsAllButTheRunningLoad)
{
    useProvider("\"codex\"");
    loadSkills(skill("a"));
    server.on("/v1/velto/tools", answer(200, R"({"groups":[]})"));
    await(store.loadTools());
    server.on(statusPath(IntegrationProvider::X), answer(200, R"({"connected":true})"));
    await(store.loadIntegrations());
    EXPECT_TRUE(await(store.saveModel(text("fugu"), Engine::Codex, {})));
    EXPECT_FALSE(await(store.deleteSkill(text("x"))));
    server.on("/v1/velto/tools", answer(500));
    await(store.loadTools());
    store.reset();
    EXPECT_EQ(store.agentConfig(), std::nullopt);
    EXPECT_EQ(store.settings(), std::nullopt);
    EXPECT_FALSE(store.skills()->isLoaded());
    EXPECT_FALSE(store.subagents()->isLoaded());
    EXPECT_EQ(store.tools(), std::nullopt);
    EXPECT_TRUE(store.integrations().isEmpty());
    EXPECT_FALSE(store.rows()->records()->last().connected);
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(store.actionError(), std::nullopt);
    EXPECT_EQ(store.savedNotice(), std::nullopt);
    const auto waiting = hold("/v1/velto/tools");
    store.startLoadTools();
    store.reset();
    EXPECT_TRUE(store.isLoading());
    ASSERT_TRUE(waitUntil([&] { return waiting->size() == 1; }));
    waiting->first().respond(500);
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
}

TEST_F(VeltoSettingsStoreTest, AnEqualAnswerIsNoNews)
{
    useProvider("\"codex\"");
    loadSkills(skill("a"));
    QSignalSpy config(&store, &VeltoSettingsStore::agentConfigChanged);
    QSignalSpy settings(&store, &VeltoSettingsStore::settingsChanged);
    QSignalSpy rows(store.skills(), &QAbstractItemModel::dataChanged);
    QSignalSpy inserted(store.skills(), &QAbstractItemModel::rowsInserted);
    await(store.loadAgent());
    await(store.loadLibrary());
    EXPECT_EQ(config.count() + settings.count() + rows.count() + inserted.count(), 0);
}

TEST_F(VeltoSettingsStoreTest, AnExpiredSessionShowsAsTheErrorOfTheLoad)
{
    auth.failure = base::AuthError{base::AuthError::Kind::SessionExpired, {}};
    server.on("/v1/velto/tools", answer(401));
    await(store.loadTools());
    EXPECT_EQ(store.loadError(), text("Your session expired. Please sign in again."));
    EXPECT_EQ(api.accessToken(), text("token"));
}

TEST_F(VeltoSettingsStoreTest, MayGoWhileItWaits)
{
    auto doomed = std::make_unique<VeltoSettingsStore>(api);
    const auto configs = hold("/v1/agent/config");
    const auto settings = hold("/v1/settings");
    const auto google = hold(statusPath(IntegrationProvider::Google));
    const auto workspace = hold("/v1/admin/workspaces/acme");
    const auto skill = hold("/v1/settings/skills/a");
    const auto slack = hold(statusPath(IntegrationProvider::Slack));
    const auto tools = hold("/v1/velto/tools");
    QCoro::Task<void> agent = doomed->loadAgent();
    QCoro::Task<void> integrations = doomed->loadIntegrations();
    QCoro::Task<void> loadingTools = doomed->loadTools();
    QCoro::Task<bool> saving = doomed->saveModel(text("new"), Engine::Claude, text("acme"));
    QCoro::Task<bool> deleting = doomed->deleteSkill(text("a"));
    QCoro::Task<bool> disconnecting = doomed->disconnectIntegration(IntegrationProvider::Slack);
    ASSERT_TRUE(waitUntil([&] {
        return configs->size() + settings->size() + google->size() + workspace->size() +
                   skill->size() + slack->size() + tools->size() ==
               7;
    }));
    doomed.reset();
    configs->first().respond(500);
    google->first().respond(200, R"({"connected":true})");
    tools->first().respond(200, R"({"groups":[]})");
    workspace->first().respond(204);
    skill->first().respond(204);
    slack->first().respond(204);
    await(std::move(agent));
    await(std::move(integrations));
    await(std::move(loadingTools));
    EXPECT_TRUE(await(std::move(saving)));
    EXPECT_TRUE(await(std::move(deleting)));
    EXPECT_TRUE(await(std::move(disconnecting)));
    // What else they would have asked for is nobody's business any more.
    EXPECT_EQ(server.requests().size(), 7);
}

} // namespace
} // namespace velto::agent
