// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/workspacestore.h"

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

QByteArray detailOf(const QByteArray &name)
{
    return R"({"workspace":{"id":"w","slug":"s","name":")" + name +
           R"("},"membership":{"workspace_id":"w","user_id":"u","role":"owner"},)"
           R"("member_count":2})";
}

QByteArray membersOf(const QByteArray &id)
{
    return R"({"members":[{"user_id":")" + id + R"(","display_name":"N","email":"e","role":"r"}]})";
}

QByteArray invitesOf(const QByteArray &id)
{
    return R"({"invites":[{"id":")" + id + R"(","email":"e","role":"member"}]})";
}

const QByteArray invited = R"({"invited":[{"email":"e","invite_id":"i"}],"failed":[]})";

class WorkspaceStoreTest : public test::StoreTest
{
protected:
    void loadMembers(const QByteArray &member, const QByteArray &invite)
    {
        server.on("/v1/workspaces/s/members", answer(200, membersOf(member)));
        server.on("/v1/workspaces/s/invites", answer(200, invitesOf(invite)));
        await(store.loadMembers(text("s")));
        ASSERT_TRUE(store.invites()->isLoaded());
        (void)asked();
    }
    [[nodiscard]] QString member() { return store.members()->records()->first().userId; }
    [[nodiscard]] QString invite() { return store.invites()->records()->first().id; }

    WorkspaceStore store{api};
};

TEST_F(WorkspaceStoreTest, StartsWithNothing)
{
    EXPECT_EQ(store.detail(), std::nullopt);
    EXPECT_FALSE(store.members()->isLoaded());
    EXPECT_FALSE(store.invites()->isLoaded());
    EXPECT_FALSE(store.audit()->isLoaded());
    EXPECT_FALSE(store.isLoading());
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(WorkspaceStoreTest, LoadsTheRecordByAnEncodedPath)
{
    server.on("/v1/workspaces/a/b%20c", answer(200, detailOf("Acme")));
    QSignalSpy loading(&store, &WorkspaceStore::isLoadingChanged);
    await(store.loadDetail(text("a/b c")));
    EXPECT_EQ(asked(), Lines{"GET /v1/workspaces/a/b%20c"});
    EXPECT_EQ(store.detail()->workspace.name, text("Acme"));
    EXPECT_EQ(store.detail()->memberCount, 2);
    EXPECT_EQ(loading.count(), 2);
}

TEST_F(WorkspaceStoreTest, KeepsTheOldRecordWhenALoadFails)
{
    server.on("/v1/workspaces/s", answer(200, detailOf("Acme")));
    await(store.loadDetail(text("s")));
    await(store.loadDetail(text("other")));
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 404)"));
    EXPECT_EQ(store.detail()->workspace.name, text("Acme"));
    EXPECT_FALSE(store.isLoading());
}

TEST_F(WorkspaceStoreTest, LoadsTheLatestHundredOfTheAuditLog)
{
    server.on("/v1/workspaces/a/b%20c/audit",
              answer(200, R"({"entries":[{"id":2,"action":"x","metadata":{"a":{"b":[1]}}},)"
                          R"({"id":1,"action":"y"}]})"));
    await(store.loadAudit(text("a/b c")));
    EXPECT_EQ(asked(), Lines{"GET /v1/workspaces/a/b%20c/audit?limit=100"});
    EXPECT_EQ(store.audit()->count(), 2);
    EXPECT_EQ(store.audit()->records()->first().id, 2);
    EXPECT_TRUE(store.audit()->records()->first().metadata.has_value());
    server.on("/v1/workspaces/a/b%20c/audit", answer(403, "no"));
    await(store.loadAudit(text("a/b c")));
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 403): no"));
    EXPECT_EQ(store.audit()->count(), 2);
}

TEST_F(WorkspaceStoreTest, LoadsMembersAndInvitesAtOnce)
{
    const auto members = hold("/v1/workspaces/s/members");
    const auto invites = hold("/v1/workspaces/s/invites");
    store.startLoadMembers(text("s"));
    ASSERT_TRUE(waitUntil([&] { return members->size() == 1 && invites->size() == 1; }));
    EXPECT_EQ(askedInAnyOrder(),
              (Lines{"GET /v1/workspaces/s/invites", "GET /v1/workspaces/s/members"}));
    members->first().respond(200, membersOf("m"));
    ASSERT_TRUE(waitUntil([&] { return store.members()->isLoaded(); }));
    EXPECT_FALSE(store.invites()->isLoaded());
    EXPECT_TRUE(store.isLoading());
    invites->first().respond(200, invitesOf("i"));
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
    EXPECT_EQ(member(), text("m"));
    EXPECT_EQ(invite(), text("i"));
}

TEST_F(WorkspaceStoreTest, LowersTheFlagWithTheFirstLoadThatEnds)
{
    const auto details = hold("/v1/workspaces/s");
    server.on("/v1/workspaces/s/audit", answer(200, R"({"entries":[]})"));
    store.startLoadDetail(text("s"));
    ASSERT_TRUE(waitUntil([&] { return details->size() == 1; }));
    await(store.loadAudit(text("s")));
    EXPECT_FALSE(store.isLoading());
    details->first().respond(200, detailOf("Acme"));
    ASSERT_TRUE(waitUntil([&] { return store.detail().has_value(); }));
    EXPECT_FALSE(store.isLoading());
}

TEST_F(WorkspaceStoreTest, ReplacesTheListsOfAnEarlierWorkspace)
{
    loadMembers("m", "i");
    server.on("/v1/workspaces/other/members", answer(200, membersOf("m2")));
    server.on("/v1/workspaces/other/invites", answer(200, R"({"invites":[]})"));
    await(store.loadMembers(text("other")));
    EXPECT_EQ(store.members()->count(), 1);
    EXPECT_EQ(member(), text("m2"));
    EXPECT_TRUE(store.invites()->isLoaded());
    EXPECT_EQ(store.invites()->count(), 0);
}

TEST_F(WorkspaceStoreTest, ShowsTheMembersToWhoMayNotSeeTheInvites)
{
    loadMembers("m", "i");
    server.on("/v1/workspaces/s/members", answer(200, membersOf("m2")));
    server.on("/v1/workspaces/s/invites", answer(403, "no"));
    await(store.loadMembers(text("s")));
    EXPECT_EQ(member(), text("m2"));
    EXPECT_FALSE(store.invites()->isLoaded());
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_FALSE(store.isLoading());
}

TEST_F(WorkspaceStoreTest, LeavesTheInvitesWhenTheMembersFail)
{
    loadMembers("m", "i");
    server.on("/v1/workspaces/s/members", answer(500, "broken"));
    const auto invites = hold("/v1/workspaces/s/invites");
    store.startLoadMembers(text("s"));
    ASSERT_TRUE(waitUntil([&] { return store.loadError().has_value(); }));
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 500): broken"));
    ASSERT_TRUE(waitUntil([&] { return invites->size() == 1; }));
    // It is let end, not cut off.
    EXPECT_TRUE(store.isLoading());
    invites->first().respond(200, invitesOf("i2"));
    ASSERT_TRUE(waitUntil([&] { return !store.isLoading(); }));
    EXPECT_EQ(member(), text("m"));
    EXPECT_EQ(invite(), text("i"));
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 500): broken"));
}

TEST_F(WorkspaceStoreTest, InvitesAndLoadsTheMembersAgain)
{
    server.on("/v1/workspaces/a/b%20c/members", answer(200, membersOf("m")));
    server.on("/v1/workspaces/a/b%20c/invites",
              byMethod({{"POST", answer(200, invited)}, {"GET", answer(200, invitesOf("i"))}}));
    EXPECT_TRUE(await(store.createInvite(text("a/b c"), text(" e@x "), text("member"))));
    const Lines lines = asked();
    EXPECT_EQ(lines.first(),
              R"(POST /v1/workspaces/a/b%20c/invites {"email":" e@x ","role":"member"})");
    EXPECT_EQ(QSet<QByteArray>(lines.begin() + 1, lines.end()),
              (QSet<QByteArray>{"GET /v1/workspaces/a/b%20c/members",
                                "GET /v1/workspaces/a/b%20c/invites"}));
    EXPECT_EQ(invite(), text("i"));
}

TEST_F(WorkspaceStoreTest, TakesAnAddressThatCouldNotBeInvitedForASuccess)
{
    loadMembers("m", "i");
    server.on("/v1/workspaces/s/invites",
              byMethod({{"POST", answer(200, R"({"invited":[],)"
                                             R"("failed":[{"email":"e","reason":"r"}]})")},
                        {"GET", answer(200, invitesOf("i"))}}));
    EXPECT_TRUE(await(store.createInvite(text("s"), text("e"), text("admin"))));
    EXPECT_EQ(store.actionError(), std::nullopt);
}

TEST_F(WorkspaceStoreTest, ReportsAnInviteThatTheServiceDidNotTake)
{
    loadMembers("m", "i");
    const QList<std::pair<int, QByteArray>> answers{
        {403, invited}, {200, R"({"invited":[]})"}, {200, "nonsense"}};
    for (const auto &[status, body] : answers) {
        store.setActionError({});
        server.on("/v1/workspaces/s/invites", answer(status, body));
        EXPECT_FALSE(await(store.createInvite(text("s"), text("e"), text("member"))));
        EXPECT_TRUE(store.actionError().has_value());
        EXPECT_EQ(asked().size(), 1);
    }
    EXPECT_EQ(member(), text("m"));
    EXPECT_EQ(store.loadError(), std::nullopt);
}

TEST_F(WorkspaceStoreTest, SucceedsInInvitingAlsoWhenTheMembersFail)
{
    server.on("/v1/workspaces/s/invites", byMethod({{"POST", answer(200, invited)}}));
    EXPECT_TRUE(await(store.createInvite(text("s"), text("e"), text("member"))));
    EXPECT_EQ(store.actionError(), std::nullopt);
    EXPECT_EQ(store.loadError(), text("Request failed (HTTP 404)"));
}

TEST_F(WorkspaceStoreTest, ClearsTheErrorWhenAnInviteStarts)
{
    store.setActionError(text("of a screen"));
    const auto waiting = hold("/v1/workspaces/s/invites");
    const QCoro::Task<bool> inviting = store.createInvite(text("s"), text("e"), text("member"));
    EXPECT_EQ(store.actionError(), std::nullopt);
}

TEST_F(WorkspaceStoreTest, ResetForgetsAllButTheRunningLoad)
{
    loadMembers("m", "i");
    server.on("/v1/workspaces/s", answer(200, detailOf("Acme")));
    server.on("/v1/workspaces/s/audit", answer(200, R"({"entries":[]})"));
    await(store.loadDetail(text("s")));
    await(store.loadAudit(text("s")));
    store.setActionError(text("x"));
    await(store.loadDetail(text("other")));
    store.reset();
    EXPECT_EQ(store.detail(), std::nullopt);
    EXPECT_FALSE(store.members()->isLoaded());
    EXPECT_FALSE(store.invites()->isLoaded());
    EXPECT_FALSE(store.audit()->isLoaded());
    EXPECT_EQ(store.loadError(), std::nullopt);
    EXPECT_EQ(store.actionError(), std::nullopt);
    const auto waiting = hold("/v1/workspaces/s");
    store.startLoadDetail(text("s"));
    store.reset();
    EXPECT_TRUE(store.isLoading());
}

TEST_F(WorkspaceStoreTest, MayGoWhileItWaits)
{
    auto doomed = std::make_unique<WorkspaceStore>(api);
    const auto members = hold("/v1/workspaces/s/members");
    const auto invites = hold("/v1/workspaces/s/invites");
    QCoro::Task<void> loading = doomed->loadMembers(text("s"));
    QCoro::Task<bool> inviting = doomed->createInvite(text("s"), text("e"), text("member"));
    ASSERT_TRUE(waitUntil([&] { return members->size() == 1 && invites->size() == 2; }));
    doomed.reset();
    members->first().respond(200, membersOf("m"));
    // Which of the two came first is open, so each gets an answer for both.
    for (const test::Exchange &exchange : *invites)
        exchange.respond(200, R"({"invited":[],"failed":[],"invites":[]})");
    await(std::move(loading));
    EXPECT_TRUE(await(std::move(inviting)));
    EXPECT_EQ(members->size(), 1);
}

} // namespace
} // namespace velto::workspace
