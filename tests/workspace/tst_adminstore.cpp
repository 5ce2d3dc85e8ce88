// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/adminstore.h"

#include "support/storetest.h"

#include <QSignalSpy>

namespace velto::workspace
{
namespace
{

using test::answer;
using test::await;
using test::byMethod;
using test::waitUntil;
using Lines = QList<QByteArray>;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const QByteArray overview =
    R"({"totals":{"users":7,"workspaces":1,"memberships":1,"workspaces_with_velto":1},)"
    R"("trend":{"users_last_7d":3,"users_last_30d":0,"workspaces_last_7d":0,)"
    R"("workspaces_last_30d":0},"recent_users":[],"recent_workspaces":[]})";
const QByteArray users = R"({"users":[{"id":"u","email":"e","workspace_count":2}]})";
const QByteArray workspaces =
    R"({"workspaces":[{"id":"w","slug":"s","name":"n","member_count":2}]})";
const QByteArray catalog = R"({"entries":[{"id":"a/b c","version":"1","name":"n","tagline":"t",)"
                           R"("what_it_does":"w"}]})";

QByteArray detailOf(const QByteArray &name)
{
    return R"({"workspace":{"id":"w","slug":"s","name":")" + name + R"("},"members":[]})";
}

class AdminStoreTest : public test::StoreTest
{
protected:
    /// The four loads that are alike.
    struct Load
    {
        QByteArray path;
        QByteArray body;
        QCoro::Task<void> (AdminStore::*start)();
        std::function<bool()> isLoaded;
    };
    const QList<Load> loads{
        {"/v1/admin/overview", overview, &AdminStore::loadOverview,
         [this] { return store.overview().has_value(); }},
        {"/v1/admin/users", users, &AdminStore::loadUsers,
         [this] { return store.users()->isLoaded(); }},
        {"/v1/admin/workspaces", workspaces, &AdminStore::loadWorkspaces,
         [this] { return store.workspaces()->isLoaded(); }},
        {"/v1/admin/catalog", catalog, &AdminStore::loadCatalog,
         [this] { return store.catalog()->isLoaded(); }},
    };

    void loadAll()
    {
        for (const Load &load : loads) {
            server.on(load.path, answer(200, load.body));
            await((store.*load.start)());
            ASSERT_TRUE(load.isLoaded()) << load.path.constData();
        }
        (void)asked();
    }

    AdminStore store{api};
};

TEST_F(AdminStoreTest, StartsWithNothing)
{
    for (const Load &load : loads)
        EXPECT_FALSE(load.isLoaded());
    EXPECT_EQ(store.workspaceDetail(), std::nullopt);
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(AdminStoreTest, LoadsByThisTable)
{
    QSignalSpy loading(&store, &AdminStore::isLoadingChanged);
    for (const Load &load : loads) {
        server.on(load.path, answer(200, load.body));
        QCoro::Task<void> running = (store.*load.start)();
        EXPECT_TRUE(store.isLoading());
        await(std::move(running));
        EXPECT_EQ(asked(), Lines{"GET " + load.path});
        EXPECT_TRUE(load.isLoaded());
        EXPECT_FALSE(store.isLoading());
    }
    EXPECT_EQ(loading.count(), 8);
    EXPECT_EQ(store.overview()->totals.users, 7);
    EXPECT_EQ(store.overview()->trend.usersLast7d, 3);
    EXPECT_EQ(store.users()->records()->first().workspaceCount, 2);
    EXPECT_EQ(store.workspaces()->records()->first().slug, text("s"));
    EXPECT_EQ(store.catalog()->records()->first().whatItDoes, text("w"));
    EXPECT_EQ(store.loadError(), std::nullopt);
}

TEST_F(AdminStoreTest, KeepsWhatItHadWhenALoadFails)
{
    loadAll();
    for (const Load &load : loads) {
        server.on(load.path, answer(403, " forbidden\n"));
        await((store.*load.start)());
        EXPECT_EQ(store.loadError(), text("Request failed (HTTP 403): forbidden"));
        server.on(load.path, answer(200, "{}"));
        QCoro::Task<void> running = (store.*load.start)();
        EXPECT_EQ(store.loadError(), std::nullopt);
        await(std::move(running));
        EXPECT_TRUE(store.loadError().has_value());
        EXPECT_TRUE(load.isLoaded());
        EXPECT_FALSE(store.isLoading());
    }
    EXPECT_EQ(store.users()->count(), 1);
    EXPECT_EQ(store.overview()->totals.users, 7);
}

TEST_F(AdminStoreTest, ClearsTheOpenWorkspaceBeforeItLoadsAnother)
{
    server.on("/v1/admin/workspaces/one", answer(200, detailOf("One")));
    await(store.loadWorkspaceDetail(text("one")));
    EXPECT_EQ(asked(), Lines{"GET /v1/admin/workspaces/one"});
    EXPECT_EQ(store.workspaceDetail()->workspace.name, text("One"));
    const auto waiting = hold("/v1/admin/workspaces/a/b%20c");
    QSignalSpy loading(&store, &AdminStore::isLoadingChanged);
    store.startLoadWorkspaceDetail(text("a/b c"));
    EXPECT_EQ(store.workspaceDetail(), std::nullopt);
    EXPECT_FALSE(store.isLoading());
    ASSERT_TRUE(waitUntil([&] { return waiting->size() == 1; }));
    waiting->first().respond(200, detailOf("Two"));
    ASSERT_TRUE(waitUntil([&] { return store.workspaceDetail().has_value(); }));
    EXPECT_EQ(store.workspaceDetail()->workspace.name, text("Two"));
    EXPECT_EQ(loading.count(), 0);
}

TEST_F(AdminStoreTest, LeavesAnEarlierErrorWhenItOpensAWorkspace)
{
    await(store.loadUsers());
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 404)"));
    server.on("/v1/admin/workspaces/one", answer(200, detailOf("One")));
    await(store.loadWorkspaceDetail(text("one")));
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 404)"));
    server.on("/v1/admin/workspaces/one", answer(500, "broken"));
    QCoro::Task<void> failing = store.loadWorkspaceDetail(text("one"));
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 404)"));
    await(std::move(failing));
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 500): broken"));
    EXPECT_EQ(store.workspaceDetail(), std::nullopt);
}

TEST_F(AdminStoreTest, ALateAnswerForAnEarlierWorkspaceOverwrites)
{
    const auto slow = hold("/v1/admin/workspaces/one");
    server.on("/v1/admin/workspaces/two", answer(200, detailOf("Two")));
    store.startLoadWorkspaceDetail(text("one"));
    ASSERT_TRUE(waitUntil([&] { return slow->size() == 1; }));
    await(store.loadWorkspaceDetail(text("two")));
    slow->first().respond(200, detailOf("One"));
    ASSERT_TRUE(waitUntil([&] { return store.workspaceDetail()->workspace.name == text("One"); }));
}

TEST_F(AdminStoreTest, DeletesAnEntryAndReadsTheCatalogAgain)
{
    loadAll();
    server.on("/v1/admin/catalog/a/b%20c", answer(204));
    server.on("/v1/admin/catalog", answer(200, R"({"entries":[]})"));
    EXPECT_TRUE(await(store.deleteCatalogEntry(text("a/b c"))));
    EXPECT_EQ(asked(), (Lines{"DELETE /v1/admin/catalog/a/b%20c", "GET /v1/admin/catalog"}));
    EXPECT_EQ(store.catalog()->records(), QList<CatalogEntry>());
    EXPECT_FALSE(store.isLoading());
}

TEST_F(AdminStoreTest, KeepsTheCatalogWhenADeleteFails)
{
    loadAll();
    server.on("/v1/admin/catalog/x", answer(404, "unknown"));
    EXPECT_FALSE(await(store.deleteCatalogEntry(text("x"))));
    EXPECT_EQ(asked(), Lines{"DELETE /v1/admin/catalog/x"});
    EXPECT_EQ(store.actionError(), text("Request failed (HTTP 404): unknown"));
    server.on("/v1/admin/catalog/x", answer(204));
    server.on("/v1/admin/catalog", answer(500));
    QCoro::Task<bool> deleting = store.deleteCatalogEntry(text("x"));
    EXPECT_EQ(store.actionError(), std::nullopt);
    EXPECT_FALSE(await(std::move(deleting)));
    EXPECT_EQ(store.actionError(), text("Request failed (HTTP 500)"));
    EXPECT_EQ(store.catalog()->count(), 1);
    EXPECT_EQ(store.loadError(), std::nullopt);
}

TEST_F(AdminStoreTest, ResetForgetsAllButTheRunningLoad)
{
    loadAll();
    server.on("/v1/admin/workspaces/one", answer(200, detailOf("One")));
    await(store.loadWorkspaceDetail(text("one")));
    EXPECT_FALSE(await(store.deleteCatalogEntry(text("x"))));
    server.on("/v1/admin/users", answer(500));
    await(store.loadUsers());
    store.reset();
    for (const Load &load : loads)
        EXPECT_FALSE(load.isLoaded());
    EXPECT_EQ(store.workspaceDetail(), std::nullopt);
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(store.actionError(), std::nullopt);
    const auto waiting = hold("/v1/admin/users");
    store.startLoadUsers();
    store.reset();
    EXPECT_TRUE(store.isLoading());
}

TEST_F(AdminStoreTest, MayGoWhileItWaits)
{
    auto doomed = std::make_unique<AdminStore>(api);
    const auto details = hold("/v1/admin/workspaces/one");
    const auto deletes = hold("/v1/admin/catalog/x");
    const auto lists = hold("/v1/admin/users");
    QCoro::Task<void> opening = doomed->loadWorkspaceDetail(text("one"));
    QCoro::Task<bool> deleting = doomed->deleteCatalogEntry(text("x"));
    QCoro::Task<void> loading = doomed->loadUsers();
    ASSERT_TRUE(waitUntil([&] { return details->size() + deletes->size() + lists->size() == 3; }));
    doomed.reset();
    details->first().respond(200, detailOf("One"));
    deletes->first().respond(500);
    lists->first().respond(200, users);
    await(std::move(opening));
    EXPECT_FALSE(await(std::move(deleting)));
    await(std::move(loading));
}

} // namespace
} // namespace velto::workspace
