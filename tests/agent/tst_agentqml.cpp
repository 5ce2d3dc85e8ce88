// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/marketplacestore.h"
#include "agent/veltosettingsstore.h"
#include "support/qmlreader.h"
#include "support/storetest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace velto::agent
{
namespace
{

using test::answer;
using test::await;
using test::QmlReader;
using test::waitUntil;
using Lines = QList<QByteArray>;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const QByteArray config = R"({"model":"m","maxTokens":4096,"maxToolRounds":25,"toolCount":1,)"
                          R"("tools":[{"name":"search","description":"Looks things up"}]})";
const QByteArray settings = R"({"model":"m","provider":"codex","codexModel":"fugu"})";
const QByteArray skills =
    R"([{"id":"s1","name":"Mail","description":"d","enabled":true,"updatedAt":"2026"},)"
    R"({"id":"s2","name":"Notes","description":"e","enabled":false,"updatedAt":"2025"}])";
const QByteArray subagents =
    R"([{"id":"a1","name":"Scout","description":"d","enabled":true,"source":"user","model":"m",)"
    R"("maxTurns":7,"mcpServerNames":["x","y"],"tools":["t"],"updatedAt":"2026"}])";
const QByteArray tools =
    R"({"groups":[{"key":"k","label":"Web","available":false,"availabilityLabel":"off",)"
    R"("note":"n","connectHref":"/c","connectLabel":"Connect","tools":[{"name":"fetch",)"
    R"("description":"d","available":true,"source":"s"}]}]})";
const QByteArray catalog =
    R"({"entries":[{"id":"b","version":"1.2","source":"s","name":"N","tagline":"t",)"
    R"("whatItDoes":"w","iconKey":"i","accent":"red","exampleQueries":["q","r"],"resources":{)"
    R"("agents":[{"slug":"a","description":"d","model":"m","maxTurns":3,"mcpServerNames":["x"],)"
    R"("tools":["t"]}],"skills":[{"slug":"s","description":"d"},{"slug":"u","description":"e"}]},)"
    R"("installed":{"catalogId":"b","enabled":false,"installedAt":"2026"},"integrations":[)"
    R"({"id":"slack","label":"Slack","connectUrl":"http://x","connected":true}]}]})";

QJsonValue json(const QByteArray &document)
{
    const QJsonDocument parsed = QJsonDocument::fromJson(document);
    return parsed.isArray() ? QJsonValue(parsed.array()) : QJsonValue(parsed.object());
}

class AgentQml : public test::StoreTest
{
protected:
    AgentQml()
    {
        server.on("/v1/agent/config", answer(200, config));
        server.on("/v1/settings", answer(200, settings));
        server.on("/v1/settings/skills", answer(200, skills));
        server.on("/v1/settings/subagents", answer(200, subagents));
        server.on("/v1/velto/tools", answer(200, tools));
        server.on("/v1/integrations/slack/status",
                  answer(200, R"({"connected":true,"teamName":"Acme"})"));
        server.on("/v1/marketplace/catalog", answer(200, catalog));
    }
    void loadSettings()
    {
        await(store.loadAgent());
        await(store.loadLibrary());
        await(store.loadTools());
        await(store.loadIntegrations());
    }

    VeltoSettingsStore store{api};
    MarketplaceStore marketplace{api};
};

TEST_F(AgentQml, SettingsAreUndefinedUntilLoaded)
{
    QmlReader qml(store);
    for (const char *name : {"agentConfig", "settings", "tools", "savedNotice"})
        EXPECT_TRUE(qml.read(text("store.") + text(name)).isUndefined()) << name;
    for (const char *name : {"skills", "subagents"}) {
        EXPECT_EQ(qml.read(text("store.%1.isLoaded").arg(text(name))), false) << name;
        EXPECT_EQ(qml.read(text("store.%1.count").arg(text(name))), 0) << name;
    }
    EXPECT_EQ(qml.read(text("store.hasIntegrations")), false);
}

TEST_F(AgentQml, ReadsEveryFieldOfTheSettings)
{
    QmlReader qml(store);
    loadSettings();
    qml.expectSame(text("store.agentConfig"), json(config));
    qml.expectSame(text("store.settings"), json(settings));
    qml.expectSame(text("store.tools"), json(tools));
    qml.showRows(text("skills"));
    qml.expectSame(text("skillsView.row(0)"), json(skills)[0]);
    qml.expectSame(text("skillsView.row(1)"), json(skills)[1]);
    qml.showRows(text("subagents"));
    qml.expectSame(text("subagentsView.row(0)"), json(subagents)[0]);
    qml.showRows(text("integrationRows"));
    const QJsonObject slack{{text("provider"), int(IntegrationProvider::Slack)},
                            {text("label"), text("Slack")},
                            {text("symbol"), text("number")},
                            {text("connected"), true},
                            {text("account"), text("Acme")}};
    qml.expectSame(text("integrationRowsView.row(1)"), slack);
    EXPECT_EQ(qml.read(text("integrationRowsView.count")), 10);
    EXPECT_TRUE(qml.read(text("integrationRowsView.row(0).account")).isUndefined());
    EXPECT_EQ(qml.read(text("store.hasIntegrations")), true);
    EXPECT_TRUE(qml.read(text("store.savedNotice")).isUndefined());
    EXPECT_EQ(qml.read(text("store.isLoading")), false);
    EXPECT_EQ(qml.read(text("store.loadError")), text(""));
    EXPECT_EQ(qml.read(text("store.actionError")), text(""));
    EXPECT_EQ(qml.unusedProperties(), QStringList());
}

TEST_F(AgentQml, ReadsAbsentFieldsAsUndefined)
{
    server.on("/v1/settings", answer(200, R"({"model":"m","provider":null})"));
    QmlReader qml(store);
    await(store.loadAgent());
    EXPECT_EQ(qml.read(text("store.settings.model")), text("m"));
    EXPECT_TRUE(qml.read(text("store.settings.provider")).isUndefined());
    EXPECT_TRUE(qml.read(text("store.settings.codexModel")).isUndefined());
}

TEST_F(AgentQml, BindingsFollowTheSettings)
{
    QmlReader qml(store);
    qml.showRows(text("skills"));
    qml.showRows(text("integrationRows"));
    const QObject *const model = qml.bind(text("store.settings ? store.settings.model : 'none'"));
    const QObject *const limit = qml.bind(text("store.agentConfig?.maxTokens ?? 0"));
    const QObject *const groups = qml.bind(text("store.tools ? store.tools.groups.length : 0"));
    const QObject *const count = qml.bind(text("store.skills.count"));
    const QObject *const loaded = qml.bind(text("store.skills.isLoaded"));
    const QObject *const known = qml.bind(text("store.hasIntegrations"));
    const QObject *const slack = qml.bind(text("integrationRowsView.row(1).connected"));
    EXPECT_EQ(model->property("value"), text("none"));
    loadSettings();
    EXPECT_EQ(model->property("value"), text("m"));
    EXPECT_EQ(limit->property("value"), 4096);
    EXPECT_EQ(groups->property("value"), 1);
    EXPECT_EQ(count->property("value"), 2);
    EXPECT_EQ(loaded->property("value"), true);
    EXPECT_EQ(known->property("value"), true);
    EXPECT_EQ(slack->property("value"), true);
    const QObject *const enabled = qml.bind(text("skillsView.row(1).enabled"));
    EXPECT_EQ(enabled->property("value"), false);
    server.on("/v1/settings/skills",
              answer(200, QByteArray(skills).replace("\"enabled\":false", "\"enabled\":true")));
    await(store.loadLibrary());
    EXPECT_EQ(enabled->property("value"), true);
    store.reset();
    EXPECT_EQ(model->property("value"), text("none"));
    EXPECT_EQ(limit->property("value"), 0);
    EXPECT_EQ(groups->property("value"), 0);
    EXPECT_EQ(count->property("value"), 0);
    EXPECT_EQ(loaded->property("value"), false);
    EXPECT_EQ(known->property("value"), false);
    EXPECT_EQ(slack->property("value"), false);
}

TEST_F(AgentQml, BindingsFollowLoadsAndTheirFailures)
{
    QmlReader qml(store);
    const QObject *const loading = qml.bind(text("store.isLoading"));
    const QObject *const loadError = qml.bind(text("store.loadError"));
    const QObject *const actionError = qml.bind(text("store.actionError"));
    const QObject *const notice = qml.bind(text("store.savedNotice ?? ''"));
    server.on("/v1/velto/tools", answer(500, "broken"));
    QCoro::Task<void> running = store.loadTools();
    EXPECT_EQ(loading->property("value"), true);
    await(std::move(running));
    EXPECT_EQ(loading->property("value"), false);
    EXPECT_EQ(loadError->property("value"), text("Request failed (HTTP 500): broken"));
    EXPECT_FALSE(await(store.deleteSkill(text("unknown"))));
    EXPECT_EQ(actionError->property("value"), text("Request failed (HTTP 404)"));
    EXPECT_TRUE(await(store.saveModel(text("fugu"), ModelOption::Engine::Codex, {})));
    EXPECT_EQ(notice->property("value"), text("Saved"));
    EXPECT_EQ(actionError->property("value"), text(""));
}

TEST_F(AgentQml, StartsEveryOperationOfTheSettings)
{
    QmlReader qml(store);
    qml.showRows(text("integrationRows"));
    const auto starts = [&](const char *expression, const QByteArray &request) {
        (void)asked();
        qml.run(text(expression));
        Lines seen;
        EXPECT_TRUE(waitUntil([&] {
            seen += asked();
            return seen.contains(request);
        })) << expression
            << " asked " << seen.join(", ").constData();
    };
    starts("store.startLoadAgent()", "GET /v1/agent/config");
    starts("store.startLoadLibrary()", "GET /v1/settings/skills");
    starts("store.startLoadTools()", "GET /v1/velto/tools");
    starts("store.startLoadIntegrations()", "GET /v1/integrations/x/status");
    starts("store.startDisconnectIntegration(integrationRowsView.row(2).provider)",
           "DELETE /v1/integrations/linear/status");
    starts("store.startSaveModel('codex:gpt-5.4', '')",
           R"(PUT /v1/settings {"codexModel":"gpt-5.4","provider":"codex"})");
    starts("store.startSetSkillEnabled('a', true)",
           R"(PATCH /v1/settings/skills/a {"enabled":true})");
    starts("store.startDeleteSkill('a')", "DELETE /v1/settings/skills/a");
    starts("store.startSetSubagentEnabled('a', false)",
           R"(PATCH /v1/settings/subagents/a {"enabled":false})");
    starts("store.startDeleteSubagent('a')", "DELETE /v1/settings/subagents/a");
    EXPECT_EQ(qml.unusedMethods(), QStringList());
}

TEST_F(AgentQml, ReadsEveryFieldOfABundle)
{
    QmlReader qml(marketplace);
    EXPECT_EQ(qml.read(text("store.items.isLoaded")), false);
    await(marketplace.load());
    qml.showRows(text("items"));
    qml.expectSame(text("itemsView.row(0)"), json(catalog)[text("entries")][0],
                   {text("isInstalled"), text("agentCount"), text("skillCount")});
    EXPECT_EQ(qml.read(text("itemsView.row(0).isInstalled")), true);
    EXPECT_EQ(qml.read(text("itemsView.row(0).agentCount")), 1);
    EXPECT_EQ(qml.read(text("itemsView.row(0).skillCount")), 2);
}

TEST_F(AgentQml, BindingsFollowTheMarketplace)
{
    QmlReader qml(marketplace);
    await(marketplace.load());
    qml.showRows(text("items"));
    const QObject *const installed = qml.bind(text("itemsView.row(0).isInstalled"));
    const QObject *const busy = qml.bind(text("store.busy.includes('b')"));
    const QObject *const loading = qml.bind(text("store.isLoading"));
    const QObject *const failure = qml.bind(text("store.loadError + store.actionError"));
    EXPECT_EQ(installed->property("value"), true);
    EXPECT_EQ(busy->property("value"), false);
    const auto uninstalls = hold("/v1/marketplace/installed/b");
    qml.run(text("store.startUninstall('b')"));
    EXPECT_EQ(busy->property("value"), true);
    ASSERT_TRUE(waitUntil([&] { return uninstalls->size() == 1; }));
    server.on("/v1/marketplace/catalog",
              answer(200, QByteArray(catalog).replace("\"installed\":", "\"was\":")));
    uninstalls->first().respond(204);
    ASSERT_TRUE(waitUntil([&] { return installed->property("value") == false; }));
    ASSERT_TRUE(waitUntil([&] { return busy->property("value") == false; }));
    qml.run(text("store.startInstall('b')"));
    EXPECT_EQ(busy->property("value"), true);
    ASSERT_TRUE(waitUntil([&] { return busy->property("value") == false; }));
    EXPECT_EQ(failure->property("value"), text("Request failed (HTTP 404)"));
    qml.run(text("store.startLoad()"));
    EXPECT_EQ(loading->property("value"), true);
    ASSERT_TRUE(waitUntil([&] { return loading->property("value") == false; }));
    EXPECT_EQ(qml.unusedProperties(), QStringList());
    EXPECT_EQ(qml.unusedMethods(), QStringList());
}

} // namespace
} // namespace velto::agent
