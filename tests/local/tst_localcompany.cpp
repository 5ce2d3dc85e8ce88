// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "runningservice.h"
#include "shapes.h"

#include "local/company/invites.h"

#include <gtest/gtest.h>

#include <thread>

using namespace velto::local;
using namespace velto::local::test;
using nlohmann::json;

namespace
{

const std::string Studio = "/v1/workspaces/harbourlight";
const std::string Tidal = "/v1/workspaces/tidal-research";

std::string roleOf(const Visitor &visitor, const std::string &workspace, const std::string &userId)
{
    const json member =
        entryWith(visitor.getJson(workspace + "/members")["members"], "user_id", userId);
    return member.is_null() ? "none" : member["role"].get<std::string>();
}

} // namespace

TEST(SignIn, RoleChoosesWhoItIs)
{
    RunningService running;
    const json owner = running.visitor().getJson("/v1/me");
    EXPECT_EQ(owner["workspaces"][0]["role"], "owner");
    EXPECT_EQ(owner["isAdmin"], true);
    for (const Role role : {Role::Admin, Role::Member}) {
        const json me = running.visitorAs(role).getJson("/v1/me");
        EXPECT_NE(me["userId"], owner["userId"]);
        EXPECT_EQ(me["workspaces"][0]["slug"], "harbourlight");
        EXPECT_EQ(me["workspaces"][0]["role"], roleName(role));
        EXPECT_FALSE(me.contains("isAdmin"));
    }
    EXPECT_EQ(running.visitor().getJson("/v1/me"), owner);
}

TEST(SignIn, PageNamesWhoSignsIn)
{
    TemporaryFolder folder;
    Service service({folder.path(), 0, 900, 0, {}, {}, Role::Member});
    std::string error;
    ASSERT_TRUE(service.start(error)) << error;
    const auto page = Visitor(service.port())
                          .client()
                          .Get("/auth/oauth2/authorize?response_type=code&client_id=velto-apple"
                               "&redirect_uri=http%3A%2F%2F127.0.0.1%3A51999%2Fcallback"
                               "&code_challenge_method=S256"
                               "&code_challenge=0123456789012345678901234567890123456789012");
    ASSERT_TRUE(page);
    EXPECT_NE(page->body.find("jonas.lindqvist@example.org"), std::string::npos) << page->body;
}

TEST(Me, KeepsTheNamesThatItHasOnTheWire)
{
    RunningService running;
    for (const Role role : {Role::Owner, Role::Admin, Role::Member}) {
        const json me = running.visitorAs(role).getJson("/v1/me");
        EXPECT_EQ(flawIn(me, "userId:text personId:text? workspaceId:text? workspaces:list "
                             "user:object isAdmin:bool? pendingAgreements:list?"),
                  "");
        EXPECT_EQ(flawInList(me["workspaces"], "id:text slug:text name:text role:text"), "");
        EXPECT_EQ(flawIn(me["user"], "name:text? email:text? image:text?"), "");
    }
    const json agreements = running.visitorAs(Role::Member).getJson("/v1/me")["pendingAgreements"];
    EXPECT_EQ(flawInList(agreements, "kind:text version:text"), "");
}

TEST(Profile, HasTheShapeThatTheClientReads)
{
    RunningService running;
    const json profile = running.visitor().getJson("/v1/me/profile");
    const std::string membership = "workspace_id:text workspace_slug:text workspace_name:text "
                                   "role:text person_id:text? only_owner:bool?";
    EXPECT_EQ(flawIn(profile, "user:object memberships:list current_workspace:object "
                              "current_membership:object integrations:object"),
              "");
    EXPECT_EQ(flawIn(profile["user"],
                     "id:text email:text display_name:text? created_at:text? updated_at:text?"),
              "");
    EXPECT_EQ(flawInList(profile["memberships"], membership), "");
    EXPECT_EQ(flawIn(profile["current_workspace"], "id:text slug:text name:text"), "");
    EXPECT_EQ(flawIn(profile["current_membership"], membership), "");
    EXPECT_EQ(flawIn(profile["integrations"], "google_connected:bool"), "");
    EXPECT_EQ(profile["current_workspace"]["slug"], "harbourlight");
    EXPECT_EQ(profile["memberships"].size(), 4U);
}

TEST(Switch, ChangesTheWorkspaceAndTheHistory)
{
    RunningService running;
    Visitor &visitor = running.visitor();
    const std::string here = ask(visitor, "long 9").conversationId;
    const Reply reply =
        visitor.call("POST", "/v1/workspaces/switch", {{"workspace_id", "ws_tidal"}});
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(visitor.getJson("/v1/me")["workspaceId"], "ws_tidal");
    EXPECT_EQ(visitor.getJson("/v1/me/profile")["current_membership"]["role"], "member");
    EXPECT_TRUE(visitor.getJson("/v1/conversations").empty());
    EXPECT_EQ(visitor.get("/v1/conversations/" + here + "/messages")->status, 404);
    EXPECT_EQ(visitor.call("DELETE", "/v1/conversations/" + here).status, 404);
    EXPECT_EQ(visitor.call("PATCH", "/v1/conversations/" + here, {{"title", "x"}}).status, 404);
    EXPECT_EQ(chat(visitor, json::array({spokenTurn("user", "table")}), here).status, 404);
    const std::string there = ask(visitor, "long 9").conversationId;
    EXPECT_EQ(visitor.getJson("/v1/conversations")[0]["id"], there);
    EXPECT_EQ(
        visitor.call("POST", "/v1/workspaces/switch", {{"workspace_id", "ws_harbourlight"}}).status,
        200);
    const json history = visitor.getJson("/v1/conversations");
    ASSERT_EQ(history.size(), 1U);
    EXPECT_EQ(history[0]["id"], here);
    EXPECT_EQ(latestAudit(visitor)["action"], "workspace.switched");
    EXPECT_EQ(latestAudit(visitor)["actor_email"], "robin.okafor@example.org");
}

TEST(Switch, WantsAWorkspaceOfTheCaller)
{
    RunningService running;
    const Visitor admin = running.visitorAs(Role::Admin);
    const auto post = [&](const json &body) {
        return admin.call("POST", "/v1/workspaces/switch", body);
    };
    expectRefused(post({{"workspace_id", "ws_quay"}}), 404);
    expectRefused(post({{"workspace_id", "ws_none"}}), 404);
    expectRefused(post({{"workspaceId", "ws_tidal"}}), 400);
    expectRefused(post({{"workspace_id", 7}}), 400);
    expectRefused(post("text"), 400);
    EXPECT_EQ(admin.getJson("/v1/me")["workspaceId"], "ws_harbourlight");
}

TEST(Conversations, BelongToOneUser)
{
    RunningService running;
    const std::string id = ask(running.visitor(), "long 9").conversationId;
    const Visitor admin = running.visitorAs(Role::Admin);
    EXPECT_TRUE(admin.getJson("/v1/conversations").empty());
    EXPECT_EQ(admin.get("/v1/conversations/" + id + "/messages")->status, 404);
    EXPECT_EQ(admin.call("DELETE", "/v1/conversations/" + id).status, 404);
    EXPECT_EQ(running.visitor().getJson("/v1/conversations").size(), 1U);
}

TEST(Workspace, HasTheShapeThatTheClientReads)
{
    RunningService running;
    const json detail = running.visitor().getJson(Studio);
    EXPECT_EQ(flawIn(detail, "workspace:object membership:object member_count:int"), "");
    EXPECT_EQ(flawIn(detail["workspace"], WorkspaceShape), "");
    EXPECT_EQ(flawIn(detail["membership"],
                     "workspace_id:text user_id:text person_id:text? role:text joined_at:text?"),
              "");
    EXPECT_EQ(detail["member_count"], 9);
    EXPECT_EQ(detail["membership"]["user_id"], "usr_robin");
}

TEST(Workspace, IsUnknownToOthers)
{
    RunningService running;
    const Visitor admin = running.visitorAs(Role::Admin);
    for (const std::string path : {"", "/members", "/invites", "/audit"}) {
        expectRefused(admin.call("GET", "/v1/workspaces/quay-archive" + path), 404);
        expectRefused(admin.call("GET", "/v1/workspaces/nowhere" + path), 404);
    }
    expectRefused(admin.call("DELETE", "/v1/workspaces/quay-archive"), 404);
}

TEST(Workspace, OnlyOwnersDeleteItWithAllThatIsInIt)
{
    RunningService running;
    Visitor &owner = running.visitor();
    expectRefused(running.visitorAs(Role::Admin).call("DELETE", Studio), 403);
    expectRefused(running.visitorAs(Role::Member).call("DELETE", Studio), 403);
    const std::string id = ask(owner, "long 9").conversationId;
    EXPECT_EQ(owner.call("DELETE", Studio).status, 204);
    expectRefused(owner.call("GET", Studio), 404);
    expectRefused(owner.call("DELETE", Studio), 404);
    // Whoever was in it is in the next one that they joined.
    EXPECT_EQ(owner.getJson("/v1/me")["workspaceId"], "ws_tidal");
    EXPECT_EQ(owner.getJson("/v1/me/profile")["memberships"].size(), 3U);
    EXPECT_EQ(owner.get("/v1/conversations/" + id + "/messages")->status, 404);
    EXPECT_EQ(owner.getJson("/v1/admin/workspaces")["workspaces"].size(), 3U);
}

TEST(Workspace, WithoutAnyOneCanStillLookAround)
{
    RunningService running;
    Visitor &owner = running.visitor();
    for (const char *slug : {"harbourlight", "quay-archive"})
        EXPECT_EQ(owner.call("DELETE", std::string("/v1/workspaces/") + slug).status, 204);
    for (const char *slug : {"tidal-research", "lantern-kitchen"})
        EXPECT_EQ(owner.call("DELETE", std::string("/v1/workspaces/") + slug + "/members/usr_robin")
                      .status,
                  204);
    const json profile = owner.getJson("/v1/me/profile");
    EXPECT_TRUE(profile["current_workspace"].is_null());
    EXPECT_TRUE(profile["current_membership"].is_null());
    EXPECT_TRUE(profile["memberships"].empty());
    EXPECT_FALSE(owner.getJson("/v1/me").contains("workspaceId"));
    EXPECT_EQ(owner.getJson("/v1/settings")["model"], "claude-opus-4-8");
    EXPECT_TRUE(owner.getJson("/v1/settings/skills").empty());
    EXPECT_EQ(owner.getJson("/v1/integrations/google/status")["connected"], false);
    EXPECT_EQ(owner.getJson("/v1/marketplace/catalog")["entries"].size(), 6U);
    expectRefused(owner.call("POST", "/v1/marketplace/install", {{"catalogId", "bookkeeper"}}),
                  404);
    EXPECT_EQ(ask(owner, "long 9").status, 200);
    EXPECT_EQ(owner.getJson("/v1/conversations").size(), 1U);
}

TEST(Members, AreSeenByEveryMember)
{
    RunningService running;
    const json members = running.visitorAs(Role::Member).getJson(Studio + "/members")["members"];
    EXPECT_EQ(flawInList(members, "user_id:text display_name:text email:text role:text"), "");
    EXPECT_EQ(members.size(), 9U);
}

TEST(Members, RoleIsChangedByOwnersAndAdmins)
{
    RunningService running;
    const Visitor admin = running.visitorAs(Role::Admin);
    const std::string path = Studio + "/members/usr_zoe/role";
    expectRefused(running.visitorAs(Role::Member).call("PATCH", path, {{"role", "admin"}}), 403);
    EXPECT_EQ(roleOf(admin, Studio, "usr_zoe"), "member");
    EXPECT_EQ(admin.call("PATCH", path, {{"role", "admin"}}).status, 204);
    EXPECT_EQ(roleOf(admin, Studio, "usr_zoe"), "admin");
    const json entry = latestAudit(admin);
    EXPECT_EQ(entry["action"], "member.role_changed");
    EXPECT_EQ(entry["target_id"], "usr_zoe");
    EXPECT_EQ(entry["metadata"]["from"], "member");
    EXPECT_EQ(entry["metadata"]["to"], "admin");
    // What changes nothing leaves no trace.
    EXPECT_EQ(admin.call("PATCH", path, {{"role", "admin"}}).status, 204);
    EXPECT_EQ(latestAudit(admin), entry);
}

TEST(Members, RoleRequestsAreChecked)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const std::string path = Studio + "/members/usr_zoe/role";
    expectRefused(owner.call("PATCH", path, {{"role", "Admin"}}), 400);
    expectRefused(owner.call("PATCH", path, {{"role", 1}}), 400);
    expectRefused(owner.call("PATCH", path, json::object()), 400);
    expectRefused(owner.call("PATCH", path, json::array()), 400);
    expectRefused(owner.call("PATCH", Studio + "/members/usr_none/role", {{"role", "admin"}}), 404);
    expectRefused(owner.call("PATCH", Studio + "/members/usr_kofi/role", {{"role", "admin"}}), 404);
    EXPECT_EQ(roleOf(owner, Studio, "usr_zoe"), "member");
}

TEST(Members, OwnersAreMadeAndUnmadeByOwners)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const Visitor admin = running.visitorAs(Role::Admin);
    expectRefused(admin.call("PATCH", Studio + "/members/usr_mei/role", {{"role", "owner"}}), 403);
    expectRefused(admin.call("PATCH", Studio + "/members/usr_robin/role", {{"role", "admin"}}),
                  403);
    expectRefused(admin.call("DELETE", Studio + "/members/usr_robin"), 403);
    EXPECT_EQ(owner.call("PATCH", Studio + "/members/usr_mei/role", {{"role", "owner"}}).status,
              204);
    EXPECT_EQ(admin.call("PATCH", Studio + "/members/usr_robin/role", {{"role", "admin"}}).status,
              204);
    EXPECT_EQ(roleOf(owner, Studio, "usr_robin"), "admin");
}

TEST(Members, LastOwnerStays)
{
    RunningService running;
    Visitor &owner = running.visitor();
    expectRefused(owner.call("PATCH", Studio + "/members/usr_robin/role", {{"role", "member"}}),
                  409);
    expectRefused(owner.call("DELETE", Studio + "/members/usr_robin"), 409);
    EXPECT_EQ(roleOf(owner, Studio, "usr_robin"), "owner");
    EXPECT_EQ(owner.call("PATCH", Studio + "/members/usr_robin/role", {{"role", "owner"}}).status,
              204);
}

TEST(Members, TwoOwnersCannotDemoteEachOtherAtOnce)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const Visitor admin = running.visitorAs(Role::Admin);
    for (int round = 0; round < 5; ++round) {
        ASSERT_EQ(owner.call("PATCH", Studio + "/members/usr_mei/role", {{"role", "owner"}}).status,
                  204);
        std::vector<std::jthread> threads;
        threads.emplace_back([&] {
            (void)owner.call("PATCH", Studio + "/members/usr_mei/role", {{"role", "admin"}});
        });
        threads.emplace_back([&] {
            (void)admin.call("PATCH", Studio + "/members/usr_robin/role", {{"role", "admin"}});
        });
        threads.clear();
        const bool robin = roleOf(owner, Studio, "usr_robin") == "owner";
        const bool mei = roleOf(owner, Studio, "usr_mei") == "owner";
        ASSERT_NE(robin, mei);
        const Reply again =
            mei ? admin.call("PATCH", Studio + "/members/usr_robin/role", {{"role", "owner"}})
                : Reply{204, {}};
        ASSERT_EQ(again.status, 204);
    }
}

TEST(Members, AreRemovedByOwnersAndAdminsAndLeaveByThemselves)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const Visitor member = running.visitorAs(Role::Member);
    expectRefused(member.call("DELETE", Studio + "/members/usr_zoe"), 403);
    EXPECT_EQ(running.visitorAs(Role::Admin).call("DELETE", Studio + "/members/usr_zoe").status,
              204);
    EXPECT_EQ(latestAudit(owner)["action"], "member.removed");
    EXPECT_EQ(latestAudit(owner)["actor_email"], "mei.tanaka@example.org");
    expectRefused(owner.call("DELETE", Studio + "/members/usr_zoe"), 404);
    EXPECT_EQ(member.call("DELETE", Studio + "/members/usr_jonas").status, 204);
    EXPECT_EQ(latestAudit(owner)["action"], "member.left");
    expectRefused(member.call("GET", Studio), 404);
    EXPECT_EQ(member.getJson("/v1/me")["workspaceId"], "ws_tidal");
    EXPECT_EQ(owner.getJson(Studio)["member_count"], 7);
}

TEST(Invites, AreSeenByOwnersAndAdminsWhileTheyAreGood)
{
    RunningService running;
    expectRefused(running.visitorAs(Role::Member).call("GET", Studio + "/invites"), 403);
    const json invites = running.visitorAs(Role::Admin).getJson(Studio + "/invites")["invites"];
    EXPECT_EQ(flawInList(invites, "id:text email:text role:text expires_at:text?"), "");
    EXPECT_EQ(invites.size(), 2U);
    running.passSeconds(14 * 86'400);
    running.visitor().signIn();
    EXPECT_TRUE(running.visitor().getJson(Studio + "/invites")["invites"].empty());
}

TEST(Invites, AreCreatedAndRevoked)
{
    RunningService running;
    const Visitor admin = running.visitorAs(Role::Admin);
    const Reply made = admin.call("POST", Studio + "/invites",
                                  {{"email", "  new.one@example.org\t"}, {"role", "admin"}});
    ASSERT_EQ(made.status, 200);
    EXPECT_EQ(flawIn(made.body, "invited:list failed:list"), "");
    EXPECT_EQ(flawInList(made.body["invited"], "email:text invite_id:text"), "");
    EXPECT_TRUE(made.body["failed"].empty());
    const std::string id = made.body["invited"][0]["invite_id"];
    const json invite = entryWith(admin.getJson(Studio + "/invites")["invites"], "id", id);
    EXPECT_EQ(invite["email"], "new.one@example.org");
    EXPECT_EQ(invite["role"], "admin");
    EXPECT_EQ(latestAudit(admin)["action"], "invite.created");
    EXPECT_EQ(admin.call("DELETE", Studio + "/invites/" + id).status, 204);
    EXPECT_TRUE(entryWith(admin.getJson(Studio + "/invites")["invites"], "id", id).is_null());
    EXPECT_EQ(latestAudit(admin)["action"], "invite.revoked");
    EXPECT_EQ(latestAudit(admin)["metadata"]["email"], "new.one@example.org");
    expectRefused(admin.call("DELETE", Studio + "/invites/" + id), 404);
}

TEST(Invites, TellOfEachAddressWhyItFailed)
{
    RunningService running;
    const Reply reply = running.visitor().call(
        "POST", Studio + "/invites",
        {{"email", "nonsense, ZOE.marquez@example.org, paloma.reyes@example.org, a@b.example"},
         {"role", "member"}});
    ASSERT_EQ(reply.status, 200);
    EXPECT_EQ(flawInList(reply.body["failed"], "email:text reason:text"), "");
    EXPECT_EQ(reply.body["failed"].size(), 3U);
    ASSERT_EQ(reply.body["invited"].size(), 1U);
    EXPECT_EQ(reply.body["invited"][0]["email"], "a@b.example");
}

TEST(Invites, ExpiredOneMakesRoomForANewOne)
{
    RunningService running;
    const Reply reply = running.visitor().call(
        "POST", Studio + "/invites", {{"email", "someone.late@example.org"}, {"role", "member"}});
    EXPECT_EQ(reply.body["invited"].size(), 1U);
    EXPECT_EQ(running.visitor().getJson(Studio + "/invites")["invites"].size(), 3U);
}

TEST(Invites, RequestsAreChecked)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const auto post = [&](const json &body) {
        return owner.call("POST", Studio + "/invites", body);
    };
    expectRefused(post({{"email", "a@b.example"}}), 400);
    expectRefused(post({{"role", "member"}}), 400);
    expectRefused(post({{"email", "a@b.example"}, {"role", "owner"}}), 400);
    expectRefused(post({{"email", "  "}, {"role", "member"}}), 400);
    expectRefused(post({{"email", 7}, {"role", "member"}}), 400);
    expectRefused(
        running.visitorAs(Role::Member)
            .call("POST", Studio + "/invites", {{"email", "a@b.example"}, {"role", "member"}}),
        403);
    expectRefused(running.visitorAs(Role::Member).call("DELETE", Studio + "/invites/inv_paloma"),
                  403);
    // An invite of another workspace.
    expectRefused(owner.call("DELETE", Studio + "/invites/inv_sana"), 404);
    EXPECT_EQ(owner.getJson(Studio + "/invites")["invites"].size(), 2U);
}

TEST(Invites, AddressesAreReadStrictly)
{
    for (const char *good : {"a@b.c", "first.last+tag@sub.example.org", "ü@example.org"})
        EXPECT_TRUE(isEmail(good)) << good;
    for (const char *bad :
         {"", "a", "@b.c", "a@", "a@b", "a@b.", "a@.c", "a@b@c.d", "a b@c.d", "<a@b.c>", "a@b.c\n"})
        EXPECT_FALSE(isEmail(bad)) << bad;
    EXPECT_FALSE(isEmail(std::string(251, 'x') + "@b.c"));
}

TEST(Audit, IsForOwnersAndAdmins)
{
    RunningService running;
    expectRefused(running.visitorAs(Role::Member).call("GET", Studio + "/audit?limit=100"), 403);
    const json entries =
        running.visitorAs(Role::Admin).getJson(Studio + "/audit?limit=100")["entries"];
    EXPECT_EQ(flawInList(entries, "id:int action:text actor_email:text? target_type:text? "
                                  "target_id:text? metadata:object? created_at:text?"),
              "");
    for (std::size_t i = 1; i < entries.size(); ++i) {
        EXPECT_GT(entries[i - 1]["id"], entries[i]["id"]);
        EXPECT_GE(entries[i - 1]["created_at"], entries[i]["created_at"]);
    }
    EXPECT_EQ(running.visitor().getJson(Studio + "/audit?limit=2")["entries"].size(), 2U);
    expectRefused(running.visitor().call("GET", Studio + "/audit?limit=none"), 400);
    // The owner of one workspace is a mere member of another.
    expectRefused(running.visitor().call("GET", Tidal + "/audit"), 403);
}

TEST(Audit, RefusedChangesLeaveNoTrace)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const json before = owner.getJson(Studio + "/audit?limit=100");
    (void)owner.call("DELETE", Studio + "/members/usr_robin");
    (void)owner.call("PATCH", Studio + "/members/usr_zoe/role", {{"role", "king"}});
    (void)running.visitorAs(Role::Member).call("DELETE", Studio + "/invites/inv_paloma");
    (void)owner.call("POST", "/v1/marketplace/install", {{"catalogId", "research-kit"}});
    EXPECT_EQ(owner.getJson(Studio + "/audit?limit=100"), before);
}

TEST(Company, ChangesAtOnceAllCount)
{
    RunningService running;
    Visitor &owner = running.visitor();
    constexpr int Threads = 8;
    constexpr int Rounds = 5;
    std::atomic<int> good = 0;
    std::vector<std::jthread> threads;
    for (int t = 0; t < Threads; ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < Rounds; ++i) {
                const std::string email = "guest" + std::to_string(t * Rounds + i) + "@example.org";
                const Reply reply =
                    owner.call("POST", Studio + "/invites", {{"email", email}, {"role", "member"}});
                good += reply.status == 200 && reply.body["invited"].size() == 1 ? 1 : 0;
                good += owner.get(Studio + "/members")->status == 200 ? 1 : 0;
            }
        });
    threads.clear();
    EXPECT_EQ(good, 2 * Threads * Rounds);
    EXPECT_EQ(owner.getJson(Studio + "/invites")["invites"].size(), 2U + Threads * Rounds);
}
