// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/marketplacestore.h"
#include "agent/veltosettingsstore.h"
#include "support/interleaving.h"
#include "support/storetest.h"

namespace velto::agent
{
namespace
{

using test::Interleaving;
using test::UnreliableService;
using test::WatchedField;

constexpr int steps = 150;

/// Each test is one run, whose seed is in its name.
class AgentInterleaving : public test::StoreTest, public testing::WithParamInterface<int>
{
protected:
    [[nodiscard]] static std::optional<int> numberOf(const auto &record, auto member)
    {
        return record ? std::optional(((*record).*member).toInt()) : std::nullopt;
    }
    [[nodiscard]] static std::optional<int> firstNumber(const auto &list, auto member)
    {
        return list->records() ? std::optional((list->records()->first().*member).toInt())
                               : std::nullopt;
    }
    void serveSettings()
    {
        const auto model = [](int n) { return R"({"model":")" + QByteArray::number(n) + "\"}"; };
        const auto library = [](int n) {
            return R"([{"id":")" + QByteArray::number(n) +
                   R"(","name":"n","description":"d","enabled":true}])";
        };
        service.serve("/v1/agent/config", model);
        service.serve("/v1/settings", model);
        service.serve("/v1/settings/skills", library);
        service.serve("/v1/settings/subagents", library);
        service.serve("/v1/velto/tools", [](int n) {
            return R"({"groups":[{"key":")" + QByteArray::number(n) +
                   R"(","label":"l","available":true,"tools":[]}]})";
        });
        for (const QByteArray path :
             {"/v1/settings/skills/a", "/v1/settings/subagents/a", "/v1/admin/workspaces/w"})
            service.serve(path, [](int) { return QByteArray("{}"); });
        for (const IntegrationProvider provider : integrationProviders())
            service.serve(
                "/v1/integrations/" + rawValue(provider).toLatin1() + "/status", [](int n) {
                    return R"({"connected":true,"username":")" + QByteArray::number(n) + "\"}";
                });
    }

    void serveMarketplace()
    {
        service.serve("/v1/marketplace/catalog", [](int n) {
            return R"({"entries":[{"id":")" + QByteArray::number(n) +
                   R"(","version":"1","name":"n","tagline":"t","whatItDoes":"w"}]})";
        });
        const auto nothing = [](int) { return QByteArray("{}"); };
        for (const QByteArray path : {"/v1/marketplace/install", "/v1/marketplace/installed/a",
                                      "/v1/marketplace/installed/b"})
            service.serve(path, nothing);
    }

    UnreliableService service{server, static_cast<unsigned>(GetParam())};
};

TEST_P(AgentInterleaving, TheSettingsOnlyShowWhatTheServiceHasSent)
{
    serveSettings();
    VeltoSettingsStore store(api);
    const QString a = QStringLiteral("a");
    const auto groupNumber = [&]() -> std::optional<int> {
        return store.tools() ? std::optional(store.tools()->groups.first().key.toInt())
                             : std::nullopt;
    };
    // An integration may lose its entry: a load brings only those that answered.
    const auto xNumber = [&]() -> std::optional<int> {
        const auto x = store.integrations().constFind(IntegrationProvider::X);
        return x == store.integrations().cend() ? std::nullopt
                                                : std::optional(x->username->toInt());
    };
    Interleaving run(
        service,
        {{"/v1/agent/config", [&] { return numberOf(store.agentConfig(), &AgentConfig::model); }},
         {"/v1/settings", [&] { return numberOf(store.settings(), &AppSettings::model); }},
         {"/v1/settings/skills", [&] { return firstNumber(store.skills(), &LibrarySkill::id); }},
         {"/v1/settings/subagents",
          [&] { return firstNumber(store.subagents(), &LibrarySubagent::id); }},
         {"/v1/velto/tools", groupNumber},
         {"/v1/integrations/x/status", xNumber, true}});
    run.run(
        steps,
        {[&] { run.start(store.loadAgent()); }, [&] { run.start(store.loadLibrary()); },
         [&] { run.start(store.loadTools()); }, [&] { run.start(store.loadIntegrations()); },
         [&] { run.start(store.disconnectIntegration(IntegrationProvider::X)); },
         [&] { run.start(store.setSkillEnabled(a, true)); },
         [&] { run.start(store.deleteSkill(a)); },
         [&] { run.start(store.setSubagentEnabled(a, false)); },
         [&] { run.start(store.deleteSubagent(a)); },
         [&] { run.start(store.saveModel(a, ModelOption::Engine::Codex, {})); },
         [&] { run.start(store.saveModel(a, ModelOption::Engine::Claude, QStringLiteral("w"))); }},
        [&] { store.reset(); }, [&] { return store.isLoading(); });
}

TEST_P(AgentInterleaving, TheMarketplaceOnlyShowsWhatTheServiceHasSent)
{
    serveMarketplace();
    MarketplaceStore store(api);
    Interleaving run(service, {{"/v1/marketplace/catalog",
                                [&] { return firstNumber(store.items(), &MarketplaceItem::id); }}});
    run.run(
        steps,
        {[&] { run.start(store.load()); }, [&] { run.start(store.install(QStringLiteral("a"))); },
         [&] { run.start(store.install(QStringLiteral("b"))); },
         [&] { run.start(store.uninstall(QStringLiteral("a"))); },
         [&] { run.start(store.uninstall(QStringLiteral("b"))); }},
        [&] { store.reset(); }, [&] { return store.isLoading(); });
    EXPECT_TRUE(store.busy().isEmpty());
}

TEST_P(AgentInterleaving, TheSettingsMayGoAtAnyMoment)
{
    serveSettings();
    auto store = std::make_unique<VeltoSettingsStore>(api);
    Interleaving run(service, {});
    const QString a = QStringLiteral("a");
    run.abandon(
        {[&] { run.start(store->loadAgent()); }, [&] { run.start(store->loadIntegrations()); },
         [&] { run.start(store->loadLibrary()); }, [&] { run.start(store->loadTools()); },
         [&] { run.start(store->disconnectIntegration(IntegrationProvider::X)); },
         [&] { run.start(store->saveModel(a, ModelOption::Engine::Claude, QStringLiteral("w"))); },
         [&] { run.start(store->deleteSkill(a)); },
         [&] { run.start(store->setSubagentEnabled(a, true)); }},
        [&] { store.reset(); });
}

TEST_P(AgentInterleaving, TheMarketplaceMayGoAtAnyMoment)
{
    serveMarketplace();
    auto store = std::make_unique<MarketplaceStore>(api);
    Interleaving run(service, {});
    run.abandon({[&] { run.start(store->load()); },
                 [&] { run.start(store->install(QStringLiteral("a"))); },
                 [&] { run.start(store->uninstall(QStringLiteral("b"))); }},
                [&] { store.reset(); });
}

INSTANTIATE_TEST_SUITE_P(Seed, AgentInterleaving, testing::Range(0, 15));

} // namespace
} // namespace velto::agent
