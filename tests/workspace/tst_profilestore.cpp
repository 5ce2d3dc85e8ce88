// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/profilestore.h"

#include "support/storetest.h"

#include <QSignalSpy>

namespace velto::workspace
{
namespace
{

using test::answer;
using test::await;
using test::Exchange;
using test::waitUntil;
using Lines = QList<QByteArray>;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const QByteArray profileDocument =
    R"({"user":{"id":"u","email":"ada@acme.example","display_name":"Ada"},"memberships":[],)"
    R"("integrations":{"google_connected":true}})";
const QByteArray overviewDocument =
    R"({"totals":{"users":1,"workspaces":1,"memberships":1,"workspaces_with_velto":1},)"
    R"("trend":{"users_last_7d":0,"users_last_30d":0,"workspaces_last_7d":0,)"
    R"("workspaces_last_30d":0},"recent_users":[],"recent_workspaces":[]})";

class ProfileStoreTest : public test::StoreTest
{
protected:
    ProfileStoreTest()
    {
        server.on("/v1/me/profile", answer(200, profileDocument));
        server.on("/v1/admin/overview", answer(403, "no"));
    }

    ProfileStore store{api};
};

TEST_F(ProfileStoreTest, StartsWithNothing)
{
    EXPECT_EQ(store.profile(), std::nullopt);
    EXPECT_EQ(store.isSuperAdmin(), std::nullopt);
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_FALSE(store.isLoading());
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(ProfileStoreTest, LoadsTheProfileAndThenProbes)
{
    QSignalSpy loading(&store, &ProfileStore::isLoadingChanged);
    const QCoro::Task<void> running = store.load();
    EXPECT_TRUE(store.isLoading());
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
    EXPECT_EQ(asked(), (Lines{"GET /v1/me/profile", "GET /v1/admin/overview"}));
    EXPECT_EQ(store.profile()->name(), text("Ada"));
    EXPECT_TRUE(store.profile()->integrations.googleConnected);
    EXPECT_EQ(store.isSuperAdmin(), false);
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(loading.count(), 2);
}

TEST_F(ProfileStoreTest, ShowsTheProfileWhileTheProbeRuns)
{
    const auto probes = hold("/v1/admin/overview");
    store.startLoad();
    ASSERT_TRUE(waitUntil([&] { return probes->size() == 1; }));
    EXPECT_TRUE(store.profile().has_value());
    EXPECT_TRUE(store.isLoading());
    probes->first().respond(403);
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
}

TEST_F(ProfileStoreTest, ReportsAFailedProfileWhileTheProbeRuns)
{
    await(store.load());
    ProfileStore other(api);
    server.on("/v1/me/profile", answer(500, "broken"));
    const auto probes = hold("/v1/admin/overview");
    other.startLoad();
    ASSERT_TRUE(waitUntil([&] { return probes->size() == 1; }));
    EXPECT_EQ(other.loadError(), text("Request failed (HTTP 500): broken"));
    EXPECT_TRUE(other.isLoading());
    probes->first().respond(200, overviewDocument);
    ASSERT_TRUE(waitUntil([&] { return !other.isLoading(); }));
    EXPECT_EQ(other.isSuperAdmin(), true);
    EXPECT_EQ(other.loadError(), text("Request failed (HTTP 500): broken"));
}

TEST_F(ProfileStoreTest, KeepsTheOldProfileWhenALoadFails)
{
    await(store.load());
    for (const QByteArray body : {R"({"memberships":[]})", "nonsense"}) {
        server.on("/v1/me/profile", answer(200, body));
        await(store.load());
        EXPECT_TRUE(store.loadError().has_value());
        EXPECT_EQ(store.profile()->name(), text("Ada"));
    }
    const auto waiting = hold("/v1/me/profile");
    store.startLoad();
    EXPECT_EQ(store.loadError(), std::nullopt);
}

TEST_F(ProfileStoreTest, ProbesOnlyUntilItKnows)
{
    struct Row
    {
        int status;
        QByteArray body;
        std::optional<bool> known;
    };
    const QList<Row> rows{
        {403, "no", false},
        {200, overviewDocument, true},
        {500, overviewDocument, {}},
        {404, "", {}},
        {400, "403", {}},
        {200, R"({"totals":{}})", {}},
        {200, "nonsense", {}},
    };
    for (const Row &row : rows) {
        ProfileStore fresh(api);
        server.on("/v1/admin/overview", answer(row.status, row.body));
        await(fresh.load());
        EXPECT_EQ(fresh.isSuperAdmin(), row.known) << row.status << row.body.constData();
        EXPECT_EQ(fresh.loadError(), std::nullopt);
        (void)asked();
        await(fresh.load());
        Lines expected{"GET /v1/me/profile"};
        if (!row.known)
            expected.append("GET /v1/admin/overview");
        EXPECT_EQ(asked(), expected);
    }
}

TEST_F(ProfileStoreTest, KnowsNothingFromAProbeThatDidNotArrive)
{
    server.on("/v1/admin/overview",
              [](const auto &, const Exchange &exchange) { exchange.reset(); });
    await(store.load());
    EXPECT_EQ(store.isSuperAdmin(), std::nullopt);
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_FALSE(store.isLoading());
}

TEST_F(ProfileStoreTest, ResetForgetsTheProfileAndNotTheProbe)
{
    await(store.load());
    server.on("/v1/me/profile", answer(500));
    await(store.load());
    store.reset();
    EXPECT_EQ(store.profile(), std::nullopt);
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(store.isSuperAdmin(), false);
    server.on("/v1/admin/overview", answer(200, overviewDocument));
    await(store.load());
    EXPECT_EQ(store.isSuperAdmin(), false);
    EXPECT_EQ(server.count("/v1/admin/overview"), 1);
}

TEST_F(ProfileStoreTest, TheLaterAnswerOfTwoLoadsWins)
{
    const auto waiting = hold("/v1/me/profile");
    store.startLoad();
    ASSERT_TRUE(waitUntil([&] { return waiting->size() == 1; }));
    store.startLoad();
    ASSERT_TRUE(waitUntil([&] { return waiting->size() == 2; }));
    waiting->at(1).respond(200, QByteArray(profileDocument).replace("Ada", "Second"));
    ASSERT_TRUE(waitUntil([&] { return store.profile().has_value(); }));
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
    waiting->at(0).respond(200, QByteArray(profileDocument).replace("Ada", "First"));
    ASSERT_TRUE(waitUntil([&] { return store.profile()->name() == text("First"); }));
}

TEST_F(ProfileStoreTest, MayGoWhileItWaits)
{
    for (const bool whileProbing : {false, true}) {
        auto doomed = std::make_unique<ProfileStore>(api);
        const auto waiting = hold(whileProbing ? "/v1/admin/overview" : "/v1/me/profile");
        QCoro::Task<void> loading = doomed->load();
        ASSERT_TRUE(waitUntil([&] { return waiting->size() == 1; }));
        doomed.reset();
        waiting->first().respond(200, whileProbing ? overviewDocument : profileDocument);
        await(std::move(loading));
        server.on("/v1/me/profile", answer(200, profileDocument));
    }
}

} // namespace
} // namespace velto::workspace
