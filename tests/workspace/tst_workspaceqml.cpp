// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "support/qmlreader.h"
#include "support/storetest.h"
#include "workspace/adminstore.h"
#include "workspace/profilestore.h"
#include "workspace/workspacestore.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace velto::workspace
{
namespace
{

using test::answer;
using test::await;
using test::QmlReader;
using test::waitUntil;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const QByteArray info =
    R"({"id":"w","slug":"acme","name":"Acme","veltoEmail":"v@x","veltoDisplayName":"V",)"
    R"("createdByUserId":"u","createdAt":"2026","updatedAt":"2027"})";
const QByteArray membership =
    R"({"workspaceId":"w","workspaceSlug":"acme","workspaceName":"Acme","role":"owner",)"
    R"("personId":"p","onlyOwner":true})";
const QByteArray profile =
    R"({"user":{"id":"u","email":"ada@x","displayName":"Ada","createdAt":"2025",)"
    R"("updatedAt":"2026"},"memberships":[)" +
    membership + R"(],"currentWorkspace":{"id":"w","slug":"acme","name":"Acme"},)" +
    R"("currentMembership":)" + membership + R"(,"integrations":{"googleConnected":true}})";
const QByteArray detail = R"({"workspace":)" + info +
                          R"(,"membership":{"workspaceId":"w","userId":"u",)" +
                          R"("personId":"p","role":"admin","joinedAt":"2026"},"memberCount":12})";
const QByteArray members =
    R"({"members":[{"userId":"u","displayName":"Ada","email":"ada@x","role":"owner"}]})";
const QByteArray invites =
    R"({"invites":[{"id":"i","email":"new@x","role":"member","expiresAt":"2027"}]})";
const QByteArray audit =
    R"({"entries":[{"id":41,"action":"member.added","actorEmail":"ada@x","targetType":"user",)"
    R"("targetId":"t","createdAt":"2026"}]})";
const QByteArray overview =
    R"({"totals":{"users":7,"workspaces":3,"memberships":9,"workspacesWithVelto":2},"trend":{)"
    R"("usersLast7d":1,"usersLast30d":4,"workspacesLast7d":2,"workspacesLast30d":5},)"
    R"("recentUsers":[{"id":"u","email":"e","displayName":"Ada","createdAt":"2026"}],)"
    R"("recentWorkspaces":[{"id":"w","slug":"s","name":"n","createdByEmail":"e",)"
    R"("memberCount":3,"createdAt":"2026"}]})";
const QByteArray users =
    R"({"users":[{"id":"u","email":"e","displayName":"Ada","workspaceCount":2,)"
    R"("createdAt":"2025","updatedAt":"2026"}]})";
const QByteArray workspaces =
    R"({"workspaces":[{"id":"w","slug":"s","name":"n","veltoEmail":"v","createdByEmail":"e",)"
    R"("memberCount":4,"createdAt":"2026"}]})";
const QByteArray adminDetail =
    R"({"workspace":)" + info + R"(,"members":[{"userId":"u","email":"e","displayName":"Ada",)" +
    R"("role":"owner","joinedAt":"2026"}],"usageSummary":{"totalInput":123456789012,)" +
    R"("totalOutput":2,"totalCacheCreation":3,"totalCacheRead":4,"totalCalls":5,)" +
    R"("totalCostUsd":6.25},"usageBySource":[{"source":"chat","model":"m","inputTokens":1,)" +
    R"("outputTokens":2,"cacheCreationTokens":3,"cacheReadTokens":4,"costUsd":0.5,"calls":6}],)" +
    R"("userMessages":8,"cacheSavingsUsd":1.5})";
const QByteArray catalog =
    R"({"entries":[{"id":"c","version":"1","source":"s","name":"N","tagline":"t",)"
    R"("whatItDoes":"w","iconKey":"i","accent":"red","exampleQueries":["q"]}]})";

QJsonObject json(const QByteArray &document)
{
    return QJsonDocument::fromJson(document).object();
}

class WorkspaceQml : public test::StoreTest
{
protected:
    WorkspaceQml()
    {
        server.on("/v1/me/profile", answer(200, profile));
        server.on("/v1/workspaces/acme", answer(200, detail));
        server.on("/v1/workspaces/acme/members", answer(200, members));
        server.on("/v1/workspaces/acme/invites", answer(200, invites));
        server.on("/v1/workspaces/acme/audit", answer(200, audit));
        server.on("/v1/admin/overview", answer(200, overview));
        server.on("/v1/admin/users", answer(200, users));
        server.on("/v1/admin/workspaces", answer(200, workspaces));
        server.on("/v1/admin/workspaces/acme", answer(200, adminDetail));
        server.on("/v1/admin/catalog", answer(200, catalog));
        server.on("/v1/admin/catalog/c", answer(204));
    }
    /// Runs what a screen would and waits until the service has been asked for `path`.
    static void start(QmlReader &qml, const test::ScriptedServer &server, const char *expression,
                      const QByteArray &path)
    {
        const qsizetype before = server.count(path);
        qml.run(text(expression));
        EXPECT_TRUE(waitUntil([&] { return server.count(path) > before; })) << expression;
    }
    static void expectFirstRow(QmlReader &qml, const char *list, const QJsonValue &record)
    {
        qml.showRows(text(list));
        qml.expectSame(text(list) + text("View.row(0)"), record);
    }
    /// What all stores have in common, when nothing runs and nothing has failed.
    static void expectCalm(QmlReader &qml)
    {
        EXPECT_EQ(qml.read(text("store.isLoading")), false);
        EXPECT_EQ(qml.read(text("store.loadError")), text(""));
        EXPECT_EQ(qml.read(text("store.actionError")), text(""));
    }
};

TEST_F(WorkspaceQml, ReadsEveryFieldOfTheProfile)
{
    ProfileStore store(api);
    QmlReader qml(store);
    EXPECT_TRUE(qml.read(text("store.profile")).isUndefined());
    EXPECT_TRUE(qml.read(text("store.isSuperAdmin")).isUndefined());
    await(store.load());
    expectCalm(qml);
    qml.expectSame(text("store.profile"), json(profile),
                   {text("name"), text("email"), text("currentRole"), text("subtitle")});
    EXPECT_EQ(qml.read(text("store.profile.name")), text("Ada"));
    EXPECT_EQ(qml.read(text("store.profile.email")), text("ada@x"));
    EXPECT_EQ(qml.read(text("store.profile.currentRole")), text("Owner"));
    EXPECT_EQ(qml.read(text("store.profile.memberships[0].subtitle")), text("acme · Owner"));
    EXPECT_EQ(qml.read(text("store.profile.isCurrent(store.profile.memberships[0])")), true);
    EXPECT_EQ(qml.read(text("store.isSuperAdmin")), true);
    start(qml, server, "store.startLoad()", "/v1/me/profile");
    EXPECT_EQ(qml.unusedProperties(), QStringList());
    EXPECT_EQ(qml.unusedMethods(), QStringList());
}

TEST_F(WorkspaceQml, BindingsFollowTheProfile)
{
    ProfileStore store(api);
    QmlReader qml(store);
    const QObject *const name = qml.bind(text("store.profile?.name ?? 'none'"));
    const QObject *const count = qml.bind(text("store.profile?.memberships.length ?? -1"));
    const QObject *const super = qml.bind(text("store.isSuperAdmin ?? 'unknown'"));
    const QObject *const loading = qml.bind(text("store.isLoading"));
    EXPECT_EQ(name->property("value"), text("none"));
    EXPECT_EQ(super->property("value"), text("unknown"));
    QCoro::Task<void> running = store.load();
    EXPECT_EQ(loading->property("value"), true);
    await(std::move(running));
    EXPECT_EQ(loading->property("value"), false);
    EXPECT_EQ(name->property("value"), text("Ada"));
    EXPECT_EQ(count->property("value"), 1);
    EXPECT_EQ(super->property("value"), true);
    server.on("/v1/me/profile", answer(200, QByteArray(profile).replace("Ada", "Eva")));
    await(store.load());
    EXPECT_EQ(name->property("value"), text("Eva"));
    store.reset();
    EXPECT_EQ(name->property("value"), text("none"));
    EXPECT_EQ(super->property("value"), true);
}

TEST_F(WorkspaceQml, ReadsEveryFieldOfAWorkspace)
{
    WorkspaceStore store(api);
    QmlReader qml(store);
    EXPECT_TRUE(qml.read(text("store.detail")).isUndefined());
    for (const char *list : {"members", "invites", "audit"})
        EXPECT_EQ(qml.read(text("store.%1.isLoaded").arg(text(list))), false) << list;
    start(qml, server, "store.startLoadDetail('acme')", "/v1/workspaces/acme");
    start(qml, server, "store.startLoadMembers('acme')", "/v1/workspaces/acme/invites");
    start(qml, server, "store.startLoadAudit('acme')", "/v1/workspaces/acme/audit");
    ASSERT_TRUE(waitUntil([&] {
        return store.detail() && store.invites()->isLoaded() && store.audit()->isLoaded();
    }));
    expectCalm(qml);
    qml.expectSame(text("store.detail"), json(detail));
    expectFirstRow(qml, "members", json(members)[text("members")][0]);
    expectFirstRow(qml, "invites", json(invites)[text("invites")][0]);
    expectFirstRow(qml, "audit", json(audit)[text("entries")][0]);
    EXPECT_EQ(qml.unusedProperties(), QStringList());
    EXPECT_EQ(qml.unusedMethods(), QStringList());
}

TEST_F(WorkspaceQml, BindingsFollowAWorkspace)
{
    WorkspaceStore store(api);
    QmlReader qml(store);
    const QObject *const name = qml.bind(text("store.detail?.workspace.name ?? 'none'"));
    const QObject *const count = qml.bind(text("store.members.count"));
    const QObject *const mayInvite = qml.bind(text("store.invites.isLoaded"));
    const QObject *const failure = qml.bind(text("store.loadError"));
    const QObject *const refusal = qml.bind(text("store.actionError"));
    await(store.loadDetail(text("acme")));
    await(store.loadMembers(text("acme")));
    EXPECT_EQ(name->property("value"), text("Acme"));
    EXPECT_EQ(count->property("value"), 1);
    EXPECT_EQ(mayInvite->property("value"), true);
    qml.showRows(text("members"));
    const QObject *const role = qml.bind(text("membersView.row(0).role"));
    EXPECT_EQ(role->property("value"), text("owner"));
    server.on("/v1/workspaces/acme/members",
              answer(200, QByteArray(members).replace("owner", "admin")));
    server.on("/v1/workspaces/acme/invites", answer(403, "no"));
    await(store.loadMembers(text("acme")));
    EXPECT_EQ(role->property("value"), text("admin"));
    EXPECT_EQ(mayInvite->property("value"), false);
    EXPECT_FALSE(await(store.createInvite(text("acme"), text("e"), text("member"))));
    EXPECT_EQ(refusal->property("value"), text("Request failed (HTTP 403): no"));
    await(store.loadDetail(text("other")));
    EXPECT_EQ(failure->property("value"), text("Request failed (HTTP 404)"));
    store.reset();
    EXPECT_EQ(name->property("value"), text("none"));
    EXPECT_EQ(count->property("value"), 0);
    EXPECT_EQ(failure->property("value"), text(""));
    EXPECT_EQ(refusal->property("value"), text(""));
}

TEST_F(WorkspaceQml, ReadsEveryFieldOfTheAdministration)
{
    AdminStore store(api);
    QmlReader qml(store);
    EXPECT_TRUE(qml.read(text("store.overview")).isUndefined());
    EXPECT_TRUE(qml.read(text("store.workspaceDetail")).isUndefined());
    start(qml, server, "store.startLoadOverview()", "/v1/admin/overview");
    start(qml, server, "store.startLoadUsers()", "/v1/admin/users");
    start(qml, server, "store.startLoadWorkspaces()", "/v1/admin/workspaces");
    start(qml, server, "store.startLoadCatalog()", "/v1/admin/catalog");
    start(qml, server, "store.startLoadWorkspaceDetail('acme')", "/v1/admin/workspaces/acme");
    start(qml, server, "store.startDeleteCatalogEntry('c')", "/v1/admin/catalog/c");
    ASSERT_TRUE(waitUntil([&] {
        return store.overview() && store.users()->isLoaded() && store.workspaces()->isLoaded() &&
               store.catalog()->isLoaded() && store.workspaceDetail();
    }));
    expectCalm(qml);
    qml.expectSame(text("store.overview"), json(overview));
    qml.expectSame(text("store.workspaceDetail"), json(adminDetail));
    expectFirstRow(qml, "users", json(users)[text("users")][0]);
    expectFirstRow(qml, "workspaces", json(workspaces)[text("workspaces")][0]);
    expectFirstRow(qml, "catalog", json(catalog)[text("entries")][0]);
    EXPECT_EQ(qml.unusedProperties(), QStringList());
    EXPECT_EQ(qml.unusedMethods(), QStringList());
}

TEST_F(WorkspaceQml, BindingsFollowTheAdministration)
{
    AdminStore store(api);
    QmlReader qml(store);
    const QObject *const total = qml.bind(text("store.overview?.totals.users ?? -1"));
    const QObject *const cost =
        qml.bind(text("store.workspaceDetail?.usageSummary?.totalCostUsd ?? -1"));
    const QObject *const count = qml.bind(text("store.users.count"));
    await(store.loadOverview());
    await(store.loadUsers());
    await(store.loadWorkspaceDetail(text("acme")));
    EXPECT_EQ(total->property("value"), 7);
    EXPECT_EQ(cost->property("value"), 6.25);
    EXPECT_EQ(count->property("value"), 1);
    const auto waiting = hold("/v1/admin/workspaces/acme");
    const QCoro::Task<void> opening = store.loadWorkspaceDetail(text("acme"));
    EXPECT_EQ(cost->property("value"), -1);
    server.on("/v1/admin/overview",
              answer(200, QByteArray(overview).replace("\"users\":7", "\"users\":8")));
    await(store.loadOverview());
    EXPECT_EQ(total->property("value"), 8);
    store.reset();
    EXPECT_EQ(total->property("value"), -1);
    EXPECT_EQ(count->property("value"), 0);
}

} // namespace
} // namespace velto::workspace
