// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "support/recordtest.h"
#include "workspace/adminrecords.h"
#include "workspace/adminworkspacerecords.h"
#include "workspace/profilerecords.h"
#include "workspace/roles.h"
#include "workspace/workspacerecords.h"

namespace velto::workspace
{
namespace
{

using test::decoded;
using test::expectFields;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const QByteArray info = R"({"id":"i","slug":"s","name":"n"})";
const QByteArray membership = R"({"workspaceId":"w","workspaceSlug":"acme",)"
                              R"("workspaceName":"Acme","role":"owner"})";

TEST(WorkspaceRecords, RequireWhatIsRequiredAndNothingElse)
{
    expectFields<WorkspaceInfo>(
        {"id", "slug", "name"},
        {"veltoEmail", "veltoDisplayName", "createdByUserId", "createdAt", "updatedAt"});
    expectFields<WorkspaceMembership>({"workspaceId", "userId", "role"}, {"personId", "joinedAt"});
    expectFields<WorkspaceDetail>({"workspace:" + info,
                                   R"(membership:{"workspaceId":"w","userId":"u","role":"r"})",
                                   "memberCount:3"},
                                  {});
    expectFields<WorkspaceMember>({"userId", "displayName", "email", "role"}, {});
    expectFields<WorkspaceMembersResponse>({"members:[]"}, {});
    expectFields<WorkspaceInvite>({"id", "email", "role"}, {"expiresAt"});
    expectFields<WorkspaceInvitesResponse>({"invites:[]"}, {});
    expectFields<AuditRow>({"id:7", "action"}, {"actorEmail", "targetType", "targetId",
                                                "metadata:{\"a\":1}", "createdAt"});
    expectFields<AuditLogResponse>({"entries:[]"}, {});
    expectFields<CreateInviteRequest>({"email", "role"}, {});
    expectFields<CreateInviteResult>({"invited:[]", "failed:[]"}, {});
    expectFields<CreateInviteResult::Invited>({"email", "inviteId"}, {});
    expectFields<CreateInviteResult::Failed>({"email", "reason"}, {});
}

TEST(ProfileRecords, RequireWhatIsRequiredAndNothingElse)
{
    expectFields<UserProfile>({"memberships:[]", R"(integrations:{"googleConnected":true})"},
                              {R"(user:{"id":"u","email":"e"})", "currentWorkspace:" + info,
                               "currentMembership:" + membership});
    expectFields<ProfileUser>({"id", "email"}, {"displayName", "createdAt", "updatedAt"});
    expectFields<ProfileMembership>({"workspaceId", "workspaceSlug", "workspaceName", "role"},
                                    {"personId", "onlyOwner:true"});
    expectFields<ProfileWorkspace>({"id", "slug", "name"}, {});
    expectFields<ProfileIntegrations>({"googleConnected:true"}, {});
}

TEST(AdminRecords, RequireWhatIsRequiredAndNothingElse)
{
    const QByteArray totals =
        R"({"users":1,"workspaces":2,"memberships":3,"workspacesWithVelto":4})";
    const QByteArray trend =
        R"({"usersLast7d":1,"usersLast30d":2,"workspacesLast7d":3,"workspacesLast30d":4})";
    expectFields<AdminOverview>(
        {"totals:" + totals, "trend:" + trend, "recentUsers:[]", "recentWorkspaces:[]"}, {});
    expectFields<AdminTotals>({"users:1", "workspaces:2", "memberships:3", "workspacesWithVelto:4"},
                              {});
    expectFields<AdminTrend>(
        {"usersLast7d:1", "usersLast30d:2", "workspacesLast7d:3", "workspacesLast30d:4"}, {});
    expectFields<AdminRecentUser>({"id", "email"}, {"displayName", "createdAt"});
    expectFields<AdminRecentWorkspace>({"id", "slug", "name", "memberCount:1"},
                                       {"createdByEmail", "createdAt"});
    expectFields<AdminUser>({"id", "email", "workspaceCount:1"},
                            {"displayName", "createdAt", "updatedAt"});
    expectFields<AdminUsersResponse>({"users:[]"}, {});
    expectFields<AdminWorkspace>({"id", "slug", "name", "memberCount:1"},
                                 {"veltoEmail", "createdByEmail", "createdAt"});
    expectFields<AdminWorkspacesResponse>({"workspaces:[]"}, {});
    expectFields<CatalogEntry>({"id", "version", "name", "tagline", "whatItDoes"},
                               {"source", "iconKey", "accent", "exampleQueries:[\"q\"]"});
    expectFields<AdminCatalogResponse>({"entries:[]"}, {});
}

const QByteArray usage = R"({"totalInput":1,"totalOutput":2,"totalCacheCreation":3,)"
                         R"("totalCacheRead":4,"totalCalls":5,"totalCostUsd":6.5})";

TEST(AdminRecords, OfOneWorkspaceDoSoToo)
{
    expectFields<AdminWorkspaceDetail>(
        {"workspace:" + info, "members:[]"},
        {"usageSummary:" + usage, "usageBySource:[]", "userMessages:8", "cacheSavingsUsd:0.5"});
    expectFields<AdminWorkspaceMemberRow>({"userId", "email", "role"}, {"displayName", "joinedAt"});
    expectFields<AdminUsageSummary>({"totalInput:1", "totalOutput:2", "totalCacheCreation:3",
                                     "totalCacheRead:4", "totalCalls:5", "totalCostUsd:6.5"},
                                    {});
    expectFields<AdminUsageBySource>(
        {"source", "model", "inputTokens:1", "outputTokens:2", "costUsd:0.5", "calls:3"},
        {"cacheCreationTokens:4", "cacheReadTokens:5"});
}

TEST(AdminRecords, TakeASummaryWithoutItsSources)
{
    const auto detail = decoded<AdminWorkspaceDetail>(
        R"({"workspace":)" + info + R"(,"members":[],"usageSummary":)" + usage + "}");
    ASSERT_TRUE(detail);
    EXPECT_EQ(detail->usageSummary->totalInput, 1);
    EXPECT_EQ(detail->usageBySource, std::nullopt);
}

TEST(AdminRecords, TakeCostsThatAreWholeNumbersAndTokensBeyondThirtyTwoBits)
{
    const auto summary = decoded<AdminUsageSummary>(
        QByteArray(usage).replace("6.5", "6").replace(":1,", ":123456789012,"));
    ASSERT_TRUE(summary);
    EXPECT_EQ(summary->totalCostUsd, 6.0);
    EXPECT_EQ(summary->totalInput, 123456789012);
}

TEST(AuditRow, HoldsNestedMetadata)
{
    const auto row = decoded<AuditRow>(
        R"({"id":1,"action":"a","metadata":{"deep_key":{"list":[1,true,null,{"x":"y"}]}}})");
    ASSERT_TRUE(row);
    const base::AnyJSON deep = row->metadata->value(text("deep_key"));
    EXPECT_EQ(deep.prettyString().simplified(),
              text(R"({ "list": [ 1, true, null, { "x": "y" } ] })"));
}

TEST(CreateInviteResult, NeedsTheKeyFailed)
{
    const auto result = decoded<CreateInviteResult>(R"({"invited":[]})");
    ASSERT_FALSE(result);
    EXPECT_EQ(std::get<base::DecodingError>(result.error()).path, text("failed"));
}

TEST(Roles, ShowWithACapitalLetter)
{
    for (const auto &[role, shown] :
         QList<std::pair<const char *, const char *>>{{"owner", "Owner"},
                                                      {"admin", "Admin"},
                                                      {"OWNER", "Owner"},
                                                      {"", ""},
                                                      {"guest editor", "Guest Editor"},
                                                      {"éditeur", "Éditeur"}})
        EXPECT_EQ(capitalized(text(role)), text(shown));
}

UserProfile profile(const QByteArray &more)
{
    return decoded<UserProfile>(R"({"memberships":[)" + membership +
                                R"(],"integrations":{"googleConnected":false})" + more + "}")
        .value();
}

TEST(UserProfile, IsCalledByNameElseByEmailElseNotAtAll)
{
    const UserProfile named = profile(R"(,"user":{"id":"u","email":"e","displayName":"Ada"})");
    EXPECT_EQ(named.name(), text("Ada"));
    EXPECT_EQ(named.email(), text("e"));
    const UserProfile unnamed = profile(R"(,"user":{"id":"u","email":"e"})");
    EXPECT_EQ(unnamed.name(), text("e"));
    EXPECT_EQ(unnamed.email(), text("e"));
    EXPECT_EQ(profile("").name(), text("—"));
    EXPECT_EQ(profile("").email(), QString());
}

TEST(UserProfile, ShowsTheRoleInTheCurrentWorkspaceIfItHasOne)
{
    EXPECT_EQ(profile("").currentRole(), QString());
    EXPECT_EQ(profile(R"(,"currentMembership":)" + membership).currentRole(), text("Owner"));
    const QByteArray blank = QByteArray(membership).replace("owner", "");
    EXPECT_EQ(profile(R"(,"currentMembership":)" + blank).currentRole(), QString());
}

TEST(UserProfile, KnowsWhichMembershipIsCurrent)
{
    const UserProfile nowhere = profile("");
    EXPECT_FALSE(nowhere.isCurrent(nowhere.memberships.first()));
    const UserProfile here = profile(R"(,"currentWorkspace":{"id":"w","slug":"s","name":"n"})");
    EXPECT_TRUE(here.isCurrent(here.memberships.first()));
    const UserProfile there = profile(R"(,"currentWorkspace":{"id":"x","slug":"s","name":"n"})");
    EXPECT_FALSE(there.isCurrent(there.memberships.first()));
}

TEST(ProfileMembership, HasALineOfSlugAndRole)
{
    EXPECT_EQ(profile("").memberships.first().subtitle(), text("acme · Owner"));
}

} // namespace
} // namespace velto::workspace
