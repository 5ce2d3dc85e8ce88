// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/appstate.h"

#include "support/coroutinetest.h"
#include "support/memorysecretstore.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QUrlQuery>

#include <gtest/gtest.h>

using namespace velto;
using namespace velto::chat;
using test::await;
using test::waitUntil;

namespace
{

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// Reads the page of consent and presses the button that approves.
class ConsentingBrowser final : public platform::URLLauncher
{
public:
    QCoro::Task<bool> launch(QUrl url) override
    {
        service::HTTPRequest open;
        open.url = url;
        const auto page = co_await m_transport.send(open);
        if (!page)
            co_return false;
        static const QRegularExpression id(text(R"re(name="request_id" value="([^"]+)")re"));
        QUrlQuery form;
        form.addQueryItem(text("request_id"), id.match(QString::fromUtf8(page->body)).captured(1));
        form.addQueryItem(text("decision"), text("approve"));
        service::HTTPRequest approve;
        approve.method = "POST";
        approve.url = url.adjusted(QUrl::RemoveQuery);
        approve.headers = {{"Content-Type", "application/x-www-form-urlencoded"}};
        approve.body = form.toString(QUrl::FullyEncoded).toUtf8();
        // The answer redirects to the client, which the transport follows as a browser would.
        const auto answer = co_await m_transport.send(approve);
        co_return answer.has_value();
    }

private:
    service::Transport m_transport;
};

/// The real AppState, signed in at the real service in one of its three roles.
class StoresAtTheService : public testing::TestWithParam<const char *>
{
protected:
    void SetUp() override
    {
        service.start(QStringLiteral(VELTO_LOCAL_PROGRAM),
                      {text("--port"), text("0"), text("--data"), home.filePath(text("data")),
                       text("--as"), text(GetParam())});
        static const QRegularExpression greeting(text("listening on (http://127.0.0.1:[0-9]+)"));
        QString output;
        ASSERT_TRUE(waitUntil([&] {
            output += QString::fromUtf8(service.readAllStandardOutput());
            return greeting.match(output).hasMatch();
        })) << qPrintable(output);
        state = std::make_unique<AppState>(
            AppState::Environment{secrets, browser, QUrl(greeting.match(output).captured(1)),
                                  home.filePath(text("cache/last-conversation.json"))});
        await(state->signIn());
        ASSERT_EQ(state->authStatusKind(), AuthStatus::Kind::LoggedIn)
            << qPrintable(state->authError());
        slug = state->currentWorkspace().value().slug;
    }
    void TearDown() override
    {
        state.reset();
        service.terminate();
        EXPECT_TRUE(waitUntil([&] { return service.state() == QProcess::NotRunning; }));
    }

    [[nodiscard]] bool isOwner() const { return GetParam() == std::string_view("owner"); }
    [[nodiscard]] bool mayChange() const { return GetParam() != std::string_view("member"); }
    /// What a store has to say after a change that members may not make.
    void expectRights(bool done, const std::optional<QString> &error, bool allowed) const
    {
        EXPECT_EQ(done, allowed) << qPrintable(error.value_or(QString()));
        EXPECT_EQ(error.has_value(), !allowed);
        EXPECT_EQ(error && error->startsWith(text("Request failed (HTTP 403): ")), !allowed);
    }

    QTemporaryDir home;
    QProcess service;
    test::MemorySecretStore secrets;
    platform::URLOpener browser{std::make_unique<ConsentingBrowser>()};
    std::unique_ptr<AppState> state;
    QString slug;
};

} // namespace

TEST_P(StoresAtTheService, TheAgentIsSetUp)
{
    agent::VeltoSettingsStore &store = *state->veltoSettings();
    await(store.loadAgent());
    ASSERT_EQ(store.loadError(), std::nullopt);
    EXPECT_FALSE(store.agentConfig()->model.isEmpty());
    ASSERT_TRUE(store.settings().has_value());
    await(store.loadTools());
    ASSERT_EQ(store.loadError(), std::nullopt);
    EXPECT_FALSE(store.tools()->groups.isEmpty());
    await(store.loadLibrary());
    ASSERT_EQ(store.loadError(), std::nullopt);
    ASSERT_GE(store.skills()->count(), 2);
    ASSERT_GE(store.subagents()->count(), 2);

    const agent::LibrarySkill skill = store.skills()->records()->first();
    expectRights(await(store.setSkillEnabled(skill.id, !skill.enabled)), store.actionError(),
                 mayChange());
    const auto &skills = *store.skills()->records();
    const auto same = std::ranges::find(skills, skill.id, &agent::LibrarySkill::id);
    ASSERT_NE(same, skills.end());
    EXPECT_EQ(same->enabled, mayChange() ? !skill.enabled : skill.enabled);
    const int skillCount = store.skills()->count();
    expectRights(await(store.deleteSkill(skill.id)), store.actionError(), mayChange());
    EXPECT_EQ(store.skills()->count(), mayChange() ? skillCount - 1 : skillCount);

    const agent::LibrarySubagent subagent = store.subagents()->records()->first();
    expectRights(await(store.setSubagentEnabled(subagent.id, !subagent.enabled)),
                 store.actionError(), mayChange());
    const int subagentCount = store.subagents()->count();
    expectRights(await(store.deleteSubagent(subagent.id)), store.actionError(), mayChange());
    EXPECT_EQ(store.subagents()->count(), mayChange() ? subagentCount - 1 : subagentCount);
}

TEST_P(StoresAtTheService, AModelIsChosen)
{
    agent::VeltoSettingsStore &store = *state->veltoSettings();
    using Engine = agent::ModelOption::Engine;
    await(store.loadAgent());
    EXPECT_TRUE(await(store.saveModel(text("gpt-5.4"), Engine::Codex, slug)));
    EXPECT_EQ(agent::currentSelectionKey(*store.settings()), text("codex:gpt-5.4"));
    EXPECT_EQ(store.savedNotice(), text("Saved"));
    expectRights(await(store.saveModel(text("claude-haiku-4-5"), Engine::Claude, slug)),
                 store.actionError(), mayChange());
    EXPECT_EQ(agent::currentSelectionKey(*store.settings()),
              mayChange() ? text("claude:claude-haiku-4-5") : text("codex:gpt-5.4"));
    EXPECT_EQ(store.savedNotice().has_value(), mayChange());
}

TEST_P(StoresAtTheService, IntegrationsAreInMixedStates)
{
    agent::VeltoSettingsStore &store = *state->veltoSettings();
    await(store.loadIntegrations());
    ASSERT_EQ(store.integrations().size(), 10);
    const auto &rows = *store.rows()->records();
    const auto connected = std::ranges::find(rows, true, &agent::IntegrationRow::connected);
    ASSERT_NE(connected, rows.end());
    EXPECT_NE(std::ranges::find(rows, false, &agent::IntegrationRow::connected), rows.end());
    EXPECT_TRUE(connected->account.has_value());
    const agent::IntegrationProvider provider = connected->provider;
    expectRights(await(store.disconnectIntegration(provider)), store.actionError(), mayChange());
    EXPECT_EQ(store.integrations()[provider].connected, !mayChange());
}

TEST_P(StoresAtTheService, BundlesAreInstalled)
{
    agent::MarketplaceStore &store = *state->marketplace();
    await(store.load());
    ASSERT_EQ(store.loadError(), std::nullopt);
    const auto isInstalled = [&](const QString &id) {
        const auto &items = *store.items()->records();
        const auto item = std::ranges::find(items, id, &agent::MarketplaceItem::id);
        return item != items.end() && item->isInstalled();
    };
    const auto &items = *store.items()->records();
    const auto offered = std::ranges::find_if_not(items, &agent::MarketplaceItem::isInstalled);
    ASSERT_NE(offered, items.end());
    EXPECT_GT(offered->agentCount() + offered->skillCount(), 0);
    const QString id = offered->id;
    expectRights(await(store.install(id)), store.actionError(), mayChange());
    EXPECT_EQ(isInstalled(id), mayChange());
    if (mayChange()) {
        EXPECT_TRUE(await(store.uninstall(id)));
    }
    EXPECT_FALSE(isInstalled(id));
    EXPECT_FALSE(await(store.uninstall(text("no such bundle"))));
    EXPECT_TRUE(store.actionError()->startsWith(mayChange() ? text("Request failed (HTTP 404)")
                                                            : text("Request failed (HTTP 403)")));
    EXPECT_TRUE(store.busy().isEmpty());
}

TEST_P(StoresAtTheService, AWorkspaceHasMembersInvitesAndALog)
{
    workspace::WorkspaceStore &store = *state->workspaceStore();
    await(store.loadDetail(slug));
    ASSERT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(store.detail()->workspace.slug, slug);
    EXPECT_EQ(store.detail()->membership.role, text(GetParam()));
    await(store.loadMembers(slug));
    ASSERT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(store.members()->count(), store.detail()->memberCount);
    EXPECT_EQ(store.invites()->isLoaded(), mayChange());

    const int invites = store.invites()->count();
    expectRights(await(store.createInvite(slug, text("new@example.com"), text("member"))),
                 store.actionError(), mayChange());
    EXPECT_EQ(store.invites()->count(), mayChange() ? invites + 1 : 0);
    await(store.loadAudit(slug));
    EXPECT_EQ(store.loadError().has_value(), !mayChange());
    if (mayChange()) {
        EXPECT_EQ(store.audit()->records()->first().actorEmail,
                  state->authStatus().me()->user.email);
    }
    await(store.loadDetail(text("no/such place")));
    EXPECT_TRUE(store.loadError()->startsWith(text("Request failed (HTTP 404)")));
}

TEST_P(StoresAtTheService, TheProfileFollowsTheWorkspace)
{
    workspace::ProfileStore &store = *state->profile();
    await(store.load());
    ASSERT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(store.isSuperAdmin(), isOwner());
    EXPECT_EQ(store.profile()->currentWorkspace->slug, slug);
    ASSERT_GE(store.profile()->memberships.size(), 2);
    const auto &all = store.profile()->memberships;
    const auto other = std::ranges::find_if(all, [&](const workspace::ProfileMembership &one) {
        return !store.profile()->isCurrent(one);
    });
    ASSERT_NE(other, all.end());
    const workspace::ProfileMembership wanted = *other;
    await(state->marketplace()->load());
    EXPECT_EQ(await(state->switchWorkspace(wanted.workspaceId)), std::nullopt);
    EXPECT_EQ(store.profile()->currentWorkspace->id, wanted.workspaceId);
    EXPECT_EQ(store.profile()->currentMembership->role, wanted.role);
    EXPECT_EQ(state->currentWorkspace()->slug, wanted.workspaceSlug);
    EXPECT_FALSE(state->marketplace()->items()->isLoaded());
    const auto refused = await(state->switchWorkspace(text("nowhere")));
    ASSERT_TRUE(refused.has_value());
    EXPECT_TRUE(refused->startsWith(text("Request failed (HTTP 404)")));
    EXPECT_EQ(state->currentWorkspace()->slug, wanted.workspaceSlug);
    await(state->signOut());
    EXPECT_EQ(store.profile(), std::nullopt);
    EXPECT_EQ(store.isSuperAdmin(), isOwner());
}

TEST_P(StoresAtTheService, TheConsoleIsForAdministratorsOfTheService)
{
    workspace::AdminStore &store = *state->admin();
    for (const auto load :
         {&workspace::AdminStore::loadOverview, &workspace::AdminStore::loadUsers,
          &workspace::AdminStore::loadWorkspaces, &workspace::AdminStore::loadCatalog}) {
        await((store.*load)());
        expectRights(!store.loadError(), store.loadError(), isOwner());
    }
    await(store.loadWorkspaceDetail(slug));
    EXPECT_EQ(store.workspaceDetail().has_value(), isOwner());
    if (!isOwner())
        return;
    EXPECT_EQ(store.overview()->totals.users, store.users()->count());
    EXPECT_EQ(store.overview()->totals.workspaces, store.workspaces()->count());
    EXPECT_TRUE(store.workspaceDetail()->usageSummary.has_value());
    const int entries = store.catalog()->count();
    ASSERT_GE(entries, 1);
    EXPECT_TRUE(await(store.deleteCatalogEntry(store.catalog()->records()->first().id)));
    EXPECT_EQ(store.catalog()->count(), entries - 1);
    EXPECT_FALSE(await(store.deleteCatalogEntry(text("no such"))));
    EXPECT_TRUE(store.actionError()->startsWith(text("Request failed (HTTP 404)")));
}

INSTANTIATE_TEST_SUITE_P(As, StoresAtTheService, testing::Values("member", "admin", "owner"),
                         [](const auto &info) { return std::string(info.param); });
