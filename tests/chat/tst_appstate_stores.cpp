// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "appstatetest.h"

using namespace velto;
using namespace velto::chat;
using test::answer;
using test::AppStateTest;
using test::await;
using test::Exchange;
using test::RecordedRequest;
using test::text;
using test::waitUntil;

namespace
{

/// A session in which every store holds something and shows an error.
class AppStateStores : public AppStateTest
{
protected:
    void SetUp() override
    {
        signedIn();
        server.on("/v1/agent/config", answer(200, R"({"model":"m"})"));
        server.on("/v1/settings", answer(200, R"({"model":"m"})"));
        server.on("/v1/marketplace/catalog", answer(200, R"({"entries":[]})"));
        server.on("/v1/workspaces/s/audit", answer(200, R"({"entries":[]})"));
        server.on("/v1/admin/users", answer(200, R"({"users":[]})"));
        await(state->veltoSettings()->loadAgent());
        await(state->marketplace()->load());
        await(state->workspaceStore()->loadAudit(text("s")));
        await(state->admin()->loadUsers());
        await(state->profile()->load());
        (void)await(state->veltoSettings()->deleteSkill(text("x")));
        (void)await(state->marketplace()->uninstall(text("x")));
        await(state->workspaceStore()->loadDetail(text("x")));
        (void)await(state->admin()->deleteCatalogEntry(text("x")));
        ASSERT_EQ(loadedStores(), 5);
        ASSERT_TRUE(state->veltoSettings()->actionError().has_value());
        ASSERT_TRUE(state->workspaceStore()->loadError().has_value());
        ASSERT_TRUE(state->profile()->isSuperAdmin().has_value());
    }

    [[nodiscard]] int loadedStores()
    {
        return int(state->veltoSettings()->settings().has_value()) +
               int(state->marketplace()->items()->isLoaded()) +
               int(state->workspaceStore()->audit()->isLoaded()) +
               int(state->admin()->users()->isLoaded()) +
               int(state->profile()->profile().has_value());
    }
    [[nodiscard]] bool hasErrors()
    {
        return state->veltoSettings()->actionError() || state->marketplace()->actionError() ||
               state->workspaceStore()->loadError() || state->admin()->actionError() ||
               state->profile()->loadError();
    }
    /// The targets of the requests since `from`, in their order.
    [[nodiscard]] QList<QByteArray> askedSince(qsizetype from) const
    {
        QList<QByteArray> lines;
        for (qsizetype i = from; i < server.requests().size(); ++i)
            lines.append(server.requests()[i].method + ' ' + server.requests()[i].target);
        return lines;
    }
};

} // namespace

TEST_F(AppStateStores, SigningOutEmptiesThem)
{
    await(state->signOut());
    EXPECT_EQ(loadedStores(), 0);
    EXPECT_FALSE(hasErrors());
    EXPECT_EQ(state->profile()->isSuperAdmin(), false);
}

TEST_F(AppStateStores, ApplyingAnAccountEmptiesThem)
{
    state->applyMe(service::Me{text("u2"), {}, {}, {}, {}, {}, {}});
    EXPECT_EQ(loadedStores(), 0);
    EXPECT_FALSE(hasErrors());
    EXPECT_EQ(state->profile()->isSuperAdmin(), false);
    EXPECT_EQ(state->authStatus().me()->userId, text("u2"));
}

TEST_F(AppStateStores, SwitchingTheWorkspaceEndsWithTheNewProfile)
{
    server.on("/v1/workspaces/switch", answer(200));
    server.on("/v1/me/profile",
              answer(200, R"({"memberships":[],"integrations":{"googleConnected":true}})"));
    const qsizetype before = server.requests().size();
    EXPECT_EQ(await(state->switchWorkspace(text("w2"))), std::nullopt);
    EXPECT_TRUE(state->profile()->profile()->integrations.googleConnected);
    EXPECT_EQ(loadedStores(), 1);
    EXPECT_FALSE(hasErrors());
    const QList<QByteArray> asked = askedSince(before);
    EXPECT_EQ(asked.first(2), (QList<QByteArray>{"POST /v1/workspaces/switch", "GET /v1/me"}));
    // The history is listed at the same time; whether somebody is an administrator is known.
    EXPECT_EQ(
        QSet<QByteArray>(asked.begin() + 2, asked.end()),
        (QSet<QByteArray>{"GET /v1/conversations?limit=50&channel=chat_ui", "GET /v1/me/profile"}));
}

TEST_F(AppStateStores, SwitchingShowsNoOldProfileMeanwhile)
{
    server.on("/v1/workspaces/switch", answer(200));
    std::optional<Exchange> pending;
    server.on("/v1/me/profile",
              [&](const RecordedRequest &, const Exchange &exchange) { pending = exchange; });
    QCoro::Task<std::optional<QString>> switching = state->switchWorkspace(text("w2"));
    ASSERT_TRUE(waitUntil([&] { return pending.has_value(); }));
    EXPECT_EQ(loadedStores(), 0);
    pending->respond(500, "broken");
    // The switch has happened, whatever the profile says.
    EXPECT_EQ(await(std::move(switching)), std::nullopt);
    EXPECT_EQ(state->profile()->loadError(), text("Request failed (HTTP 500): broken"));
}

TEST_F(AppStateStores, ARefusedSwitchLeavesThem)
{
    server.on("/v1/workspaces/switch", answer(403, "not yours"));
    const qsizetype before = server.requests().size();
    EXPECT_EQ(await(state->switchWorkspace(text("w2"))),
              text("Request failed (HTTP 403): not yours"));
    EXPECT_EQ(loadedStores(), 5);
    EXPECT_TRUE(hasErrors());
    EXPECT_EQ(askedSince(before), QList<QByteArray>{"POST /v1/workspaces/switch"});
}

TEST_F(AppStateStores, AnExpiredSessionOfAStoreIsTheStoresOwnAffair)
{
    server.on("/v1/admin/users", answer(401));
    server.on("/auth/oauth2/token", answer(400, R"({"error":"invalid_grant"})"));
    await(state->admin()->loadUsers());
    EXPECT_EQ(state->admin()->loadError(), text("Your session expired. Please sign in again."));
    EXPECT_EQ(state->authStatusKind(), AuthStatus::Kind::LoggedIn);
    EXPECT_EQ(loadedStores(), 5);
}

TEST_F(AppStateStores, QuittingWhileTheyLoadIsSafe)
{
    QList<Exchange> pending;
    const auto hold = [&](const RecordedRequest &, const Exchange &exchange) {
        pending.append(exchange);
    };
    for (const char *path : {"/v1/agent/config", "/v1/settings", "/v1/marketplace/catalog",
                             "/v1/workspaces/s/members", "/v1/workspaces/s/invites",
                             "/v1/admin/users", "/v1/me/profile", "/v1/integrations/google/status"})
        server.on(path, hold);
    server.on("/v1/workspaces/switch", answer(200));
    QCoro::Task<void> agent = state->veltoSettings()->loadAgent();
    QCoro::Task<void> integrations = state->veltoSettings()->loadIntegrations();
    QCoro::Task<void> marketplace = state->marketplace()->load();
    QCoro::Task<void> members = state->workspaceStore()->loadMembers(text("s"));
    QCoro::Task<void> users = state->admin()->loadUsers();
    QCoro::Task<std::optional<QString>> switching = state->switchWorkspace(text("w2"));
    ASSERT_TRUE(waitUntil([&] { return pending.size() == 8; }));
    state.reset();
    await(std::move(agent));
    await(std::move(integrations));
    await(std::move(marketplace));
    await(std::move(members));
    await(std::move(users));
    EXPECT_EQ(await(std::move(switching)), std::nullopt);
}

TEST_F(AppStateStores, AreThereForTheScreens)
{
    EXPECT_EQ(state->property("veltoSettings").value<agent::VeltoSettingsStore *>(),
              state->veltoSettings());
    EXPECT_EQ(state->property("marketplace").value<agent::MarketplaceStore *>(),
              state->marketplace());
    EXPECT_EQ(state->property("workspace").value<workspace::WorkspaceStore *>(),
              state->workspaceStore());
    EXPECT_EQ(state->property("admin").value<workspace::AdminStore *>(), state->admin());
    EXPECT_EQ(state->property("profile").value<workspace::ProfileStore *>(), state->profile());
}
