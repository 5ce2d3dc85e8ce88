// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/marketplacestore.h"
#include "support/storetest.h"

#include <QSignalSpy>

namespace velto::agent
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

QByteArray entry(const QByteArray &id, bool installed = false)
{
    return R"({"id":")" + id + R"(","version":"1.0","name":"N","tagline":"t","what_it_does":"w")" +
           (installed ? R"(,"installed":{"enabled":true}})" : "}");
}

QByteArray catalogOf(const QByteArray &entries)
{
    return R"({"entries":[)" + entries + "]}";
}

class MarketplaceStoreTest : public test::StoreTest
{
protected:
    void load(const QByteArray &entries)
    {
        server.on("/v1/marketplace/catalog", answer(200, catalogOf(entries)));
        await(store.load());
        ASSERT_TRUE(store.items()->isLoaded());
        (void)asked();
    }
    [[nodiscard]] QStringList installed()
    {
        QStringList ids;
        for (const MarketplaceItem &item : store.items()->records().value()) {
            if (item.isInstalled())
                ids.append(item.id);
        }
        return ids;
    }

    MarketplaceStore store{api};
};

TEST_F(MarketplaceStoreTest, StartsWithNothing)
{
    EXPECT_EQ(store.items()->records(), std::nullopt);
    EXPECT_FALSE(store.isLoading());
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(store.actionError(), std::nullopt);
    EXPECT_TRUE(store.busy().isEmpty());
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(MarketplaceStoreTest, LoadsTheCatalogInItsOrder)
{
    server.on("/v1/marketplace/catalog", answer(200, catalogOf(entry("b") + "," + entry("a"))));
    QSignalSpy loading(&store, &MarketplaceStore::isLoadingChanged);
    const QCoro::Task<void> running = store.load();
    EXPECT_TRUE(store.isLoading());
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
    EXPECT_EQ(asked(), Lines{"GET /v1/marketplace/catalog"});
    EXPECT_EQ(store.items()->count(), 2);
    EXPECT_EQ(store.items()->records()->first().id, text("b"));
    EXPECT_EQ(loading.count(), 2);
}

TEST_F(MarketplaceStoreTest, TellsAnEmptyCatalogFromNone)
{
    load("");
    EXPECT_EQ(store.items()->records(), QList<MarketplaceItem>());
    EXPECT_EQ(store.items()->count(), 0);
}

TEST_F(MarketplaceStoreTest, KeepsTheOldCatalogWhenALoadFails)
{
    load(entry("a"));
    server.on("/v1/marketplace/catalog", answer(503));
    await(store.load());
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 503)"));
    EXPECT_EQ(store.items()->count(), 1);
    EXPECT_FALSE(store.isLoading());
    server.on("/v1/marketplace/catalog", answer(200, catalogOf(entry("a") + R"(,{"id":"x"})")));
    await(store.load());
    EXPECT_TRUE(store.loadError()->contains(text("entries[1].version")))
        << qPrintable(*store.loadError());
    EXPECT_EQ(store.items()->count(), 1);
}

TEST_F(MarketplaceStoreTest, ClearsTheErrorWhenALoadStarts)
{
    await(store.load());
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 404)"));
    const auto waiting = hold("/v1/marketplace/catalog");
    store.startLoad();
    EXPECT_EQ(store.loadError(), std::nullopt);
}

TEST_F(MarketplaceStoreTest, InstallsAndReadsTheCatalogAgain)
{
    load(entry("a/b c"));
    server.on("/v1/marketplace/install", answer(200, "whatever"));
    server.on("/v1/marketplace/catalog", answer(200, catalogOf(entry("a/b c", true))));
    EXPECT_TRUE(await(store.install(text("a/b c"))));
    EXPECT_EQ(asked(), (Lines{R"(POST /v1/marketplace/install {"catalogId":"a/b c"})",
                              "GET /v1/marketplace/catalog"}));
    EXPECT_EQ(installed(), QStringList{text("a/b c")});
    EXPECT_TRUE(store.busy().isEmpty());
    EXPECT_FALSE(store.isLoading());
}

TEST_F(MarketplaceStoreTest, UninstallsByAnEncodedPath)
{
    load(entry("a/b c", true));
    server.on("/v1/marketplace/installed/a/b%20c", answer(204));
    server.on("/v1/marketplace/catalog", answer(200, catalogOf(entry("a/b c"))));
    EXPECT_TRUE(await(store.uninstall(text("a/b c"))));
    EXPECT_EQ(asked(),
              (Lines{"DELETE /v1/marketplace/installed/a/b%20c", "GET /v1/marketplace/catalog"}));
    EXPECT_TRUE(installed().isEmpty());
}

TEST_F(MarketplaceStoreTest, ShowsAFailedUninstallAndLeavesTheRow)
{
    load(entry("a", true));
    server.on("/v1/marketplace/installed/a", answer(404, " no such bundle\n"));
    EXPECT_FALSE(await(store.uninstall(text("a"))));
    EXPECT_EQ(asked(), Lines{"DELETE /v1/marketplace/installed/a"});
    EXPECT_EQ(store.actionError(), text("Request failed (HTTP 404): no such bundle"));
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(installed(), QStringList{text("a")});
    EXPECT_TRUE(store.busy().isEmpty());
}

TEST_F(MarketplaceStoreTest, ShowsTheBodyOfARefusedInstallAsItCame)
{
    load(entry("a"));
    server.on("/v1/marketplace/install", answer(409, " taken\n"));
    EXPECT_FALSE(await(store.install(text("a"))));
    EXPECT_EQ(store.actionError(), text("Request failed (HTTP 409):  taken\n"));
    server.on("/v1/marketplace/install", answer(409, "\xff"));
    EXPECT_FALSE(await(store.install(text("a"))));
    EXPECT_EQ(store.actionError(), text("Request failed (HTTP 409)"));
}

TEST_F(MarketplaceStoreTest, StillOffersABundleWhoseCatalogCouldNotBeRead)
{
    load(entry("a"));
    server.on("/v1/marketplace/install", answer(200));
    server.on("/v1/marketplace/catalog", answer(500, "later"));
    EXPECT_FALSE(await(store.install(text("a"))));
    EXPECT_EQ(store.actionError(), text("Request failed (HTTP 500): later"));
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_TRUE(installed().isEmpty());
    EXPECT_TRUE(store.busy().isEmpty());
    load(entry("a", true));
    EXPECT_EQ(installed(), QStringList{text("a")});
}

TEST_F(MarketplaceStoreTest, ClearsTheErrorWhenAnActionStarts)
{
    load(entry("a"));
    EXPECT_FALSE(await(store.install(text("a"))));
    EXPECT_TRUE(store.actionError().has_value());
    const auto waiting = hold("/v1/marketplace/install");
    store.startInstall(text("a"));
    EXPECT_EQ(store.actionError(), std::nullopt);
}

TEST_F(MarketplaceStoreTest, WorksOnSeveralBundlesAtOnce)
{
    load(entry("a") + "," + entry("b"));
    const auto installs = hold("/v1/marketplace/install");
    QSignalSpy busy(&store, &MarketplaceStore::busyChanged);
    store.startInstall(text("b"));
    store.startInstall(text("a"));
    EXPECT_EQ(store.busyIds(), (QStringList{text("a"), text("b")}));
    EXPECT_EQ(busy.count(), 2);
    ASSERT_TRUE(waitUntil([&] { return installs->size() == 2; }));
    // The first request to have come is answered first, whichever bundle it is for.
    const bool firstIsB = server.requests()[server.requests().size() - 2].body.contains("\"b\"");
    server.on("/v1/marketplace/catalog",
              answer(200, catalogOf(entry("a", !firstIsB) + "," + entry("b", firstIsB))));
    installs->at(0).respond(200);
    ASSERT_TRUE(waitUntil([&] { return store.busy().size() == 1; }));
    EXPECT_EQ(store.busyIds(), QStringList{firstIsB ? text("a") : text("b")});
    EXPECT_EQ(installed(), QStringList{firstIsB ? text("b") : text("a")});
    installs->at(1).respond(500);
    ASSERT_TRUE(waitUntil([&] { return store.busy().isEmpty(); }));
    EXPECT_TRUE(store.actionError().has_value());
}

TEST_F(MarketplaceStoreTest, ResetForgetsAllButTheRunningLoad)
{
    load(entry("a"));
    EXPECT_FALSE(await(store.install(text("a"))));
    server.on("/v1/marketplace/catalog", answer(500));
    await(store.load());
    store.reset();
    EXPECT_EQ(store.items()->records(), std::nullopt);
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(store.actionError(), std::nullopt);
    const auto loads = hold("/v1/marketplace/catalog");
    const auto installs = hold("/v1/marketplace/install");
    store.startInstall(text("a"));
    store.startLoad();
    store.reset();
    EXPECT_TRUE(store.busy().isEmpty());
    EXPECT_TRUE(store.isLoading());
    ASSERT_TRUE(waitUntil([&] { return loads->size() == 1; }));
    loads->first().respond(200, catalogOf(""));
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
}

TEST_F(MarketplaceStoreTest, MayGoWhileItWaits)
{
    auto doomed = std::make_unique<MarketplaceStore>(api);
    const auto loads = hold("/v1/marketplace/catalog");
    const auto installs = hold("/v1/marketplace/install");
    QCoro::Task<void> load = doomed->load();
    QCoro::Task<bool> install = doomed->install(text("a"));
    ASSERT_TRUE(waitUntil([&] { return loads->size() == 1 && installs->size() == 1; }));
    doomed.reset();
    loads->first().respond(200, catalogOf(""));
    installs->first().respond(200);
    await(std::move(load));
    EXPECT_TRUE(await(std::move(install)));
    // Nobody is there any more to read the catalog again for.
    EXPECT_EQ(loads->size(), 1);
}

} // namespace
} // namespace velto::agent
