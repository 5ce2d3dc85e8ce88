// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "runningservice.h"
#include "shapes.h"

#include "local/admin/usage.h"

#include <gtest/gtest.h>

#include <thread>

using namespace velto::local;
using namespace velto::local::test;
using nlohmann::json;

namespace
{

const std::string Studio = "/v1/admin/workspaces/harbourlight";

Turn turn(const std::string &role, std::size_t jsonBytes)
{
    // The JSON of one text part is this much longer than its text.
    const std::size_t frame = json::array({textPart("")}).dump().size();
    return {"t", role, json::array({textPart(std::string(jsonBytes - frame, 'x'))})};
}

std::int64_t total(const json &detail, const std::string &key)
{
    return detail["usage_summary"][key].get<std::int64_t>();
}

} // namespace

TEST(Console, IsForAdministratorsOfTheService)
{
    RunningService running;
    const std::vector<Visitor> others{running.visitorAs(Role::Admin),
                                      running.visitorAs(Role::Member)};
    std::size_t count = 0;
    for (const Route &route : running.service().routes()) {
        if (route.access != Access::Administrator)
            continue;
        ++count;
        std::string path = route.pattern;
        if (const auto open = path.find('{'); open != std::string::npos)
            path.replace(open, path.find('}') - open + 1, "harbourlight");
        for (const Visitor &other : others)
            expectRefused(other.call(route.method, path), 403);
    }
    EXPECT_EQ(count, 6U);
    EXPECT_EQ(running.visitor().getJson("/v1/admin/catalog")["entries"].size(), 6U);
}

TEST(Console, OverviewCountsWhatIsStored)
{
    RunningService running;
    Visitor &owner = running.visitor();
    json overview = owner.getJson("/v1/admin/overview");
    EXPECT_EQ(
        flawIn(overview, "totals:object trend:object recent_users:list recent_workspaces:list"),
        "");
    EXPECT_EQ(flawIn(overview["totals"],
                     "users:int workspaces:int memberships:int workspaces_with_velto:int"),
              "");
    EXPECT_EQ(flawIn(overview["trend"], "users_last7d:int users_last30d:int workspaces_last7d:int "
                                        "workspaces_last30d:int"),
              "");
    EXPECT_EQ(flawInList(overview["recent_users"],
                         "id:text email:text display_name:text? created_at:text?"),
              "");
    EXPECT_EQ(flawInList(overview["recent_workspaces"],
                         "id:text slug:text name:text created_by_email:text? member_count:int "
                         "created_at:text?"),
              "");
    EXPECT_EQ(
        overview["totals"],
        (json{
            {"users", 13}, {"workspaces", 4}, {"memberships", 21}, {"workspaces_with_velto", 3}}));
    EXPECT_EQ(overview["trend"], (json{{"users_last7d", 2},
                                       {"users_last30d", 4},
                                       {"workspaces_last7d", 1},
                                       {"workspaces_last30d", 1}}));
    ASSERT_EQ(owner.call("DELETE", "/v1/workspaces/quay-archive").status, 204);
    overview = owner.getJson("/v1/admin/overview");
    EXPECT_EQ(overview["totals"]["workspaces"], 3);
    EXPECT_EQ(overview["totals"]["memberships"], 20);
    running.passSeconds(60 * 86'400);
    owner.signIn();
    EXPECT_EQ(owner.getJson("/v1/admin/overview")["trend"]["users_last30d"], 0);
}

TEST(Console, ListsHaveTheShapesThatTheClientReads)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const json users = owner.getJson("/v1/admin/users");
    EXPECT_EQ(flawIn(users, "users:list"), "");
    EXPECT_EQ(flawInList(users["users"], "id:text email:text display_name:text? "
                                         "workspace_count:int created_at:text? updated_at:text?"),
              "");
    EXPECT_EQ(users["users"].size(), 13U);
    const json workspaces = owner.getJson("/v1/admin/workspaces");
    EXPECT_EQ(flawIn(workspaces, "workspaces:list"), "");
    EXPECT_EQ(flawInList(workspaces["workspaces"],
                         "id:text slug:text name:text velto_email:text? created_by_email:text? "
                         "member_count:int created_at:text?"),
              "");
    const json catalog = owner.getJson("/v1/admin/catalog");
    EXPECT_EQ(flawIn(catalog, "entries:list"), "");
    EXPECT_EQ(flawInList(catalog["entries"],
                         "id:text version:text source:text? name:text tagline:text "
                         "what_it_does:text icon_key:text? accent:text? example_queries:texts?"),
              "");
}

TEST(Console, WorkspaceHasMembersAndUsage)
{
    RunningService running;
    const json detail = running.visitor().getJson(Studio);
    EXPECT_EQ(flawIn(detail, "workspace:object members:list usage_summary:object? "
                             "usage_by_source:list? user_messages:int? cache_savings_usd:number?"),
              "");
    EXPECT_EQ(flawIn(detail["workspace"], WorkspaceShape), "");
    EXPECT_EQ(flawInList(detail["members"],
                         "user_id:text email:text display_name:text? role:text joined_at:text?"),
              "");
    EXPECT_EQ(flawIn(detail["usage_summary"],
                     "total_input:int total_output:int total_cache_creation:int "
                     "total_cache_read:int total_calls:int total_cost_usd:number"),
              "");
    EXPECT_EQ(flawInList(detail["usage_by_source"],
                         "source:text model:text input_tokens:int output_tokens:int "
                         "cache_creation_tokens:int? cache_read_tokens:int? cost_usd:number "
                         "calls:int"),
              "");
    double cost = 0;
    std::int64_t calls = 0;
    for (const json &source : detail["usage_by_source"]) {
        cost += source["cost_usd"].get<double>();
        calls += source["calls"].get<std::int64_t>();
    }
    EXPECT_DOUBLE_EQ(detail["usage_summary"]["total_cost_usd"], cost);
    EXPECT_EQ(total(detail, "total_calls"), calls);
    expectRefused(running.visitor().call("GET", "/v1/admin/workspaces/nowhere"), 404);
}

TEST(Console, WorkspaceThatWasNeverUsedHasNoUsage)
{
    RunningService running;
    const json detail = running.visitor().getJson("/v1/admin/workspaces/quay-archive");
    EXPECT_EQ(flawIn(detail, "workspace:object members:list"), "");
}

TEST(Console, CatalogEntryIsWithdrawnEverywhere)
{
    RunningService running;
    Visitor &owner = running.visitor();
    EXPECT_EQ(owner.call("DELETE", "/v1/admin/catalog/research-kit").status, 204);
    EXPECT_EQ(owner.getJson("/v1/admin/catalog")["entries"].size(), 5U);
    EXPECT_EQ(owner.getJson("/v1/marketplace/catalog")["entries"].size(), 5U);
    for (const json &skill : owner.getJson("/v1/settings/skills"))
        EXPECT_FALSE(skill["id"].get<std::string>().starts_with("research-kit."));
    EXPECT_EQ(owner.getJson("/v1/workspaces/harbourlight/audit?limit=1")["entries"][0]["action"],
              "bundle.withdrawn");
    EXPECT_EQ(owner.call("DELETE", "/v1/admin/catalog/research-kit").status, 404);
    EXPECT_EQ(owner.call("POST", "/v1/marketplace/install", {{"catalogId", "research-kit"}}).status,
              404);
}

TEST(Usage, GrowsWithEachAnswer)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const json before = owner.getJson(Studio);
    const auto answer = ask(owner, "tools");
    const json after = owner.getJson(Studio);
    EXPECT_GT(total(after, "total_input"), total(before, "total_input"));
    EXPECT_GT(total(after, "total_output"), total(before, "total_output"));
    EXPECT_GT(after["usage_summary"]["total_cost_usd"], before["usage_summary"]["total_cost_usd"]);
    // One call for the answer, and one for each of its three tools.
    EXPECT_EQ(total(after, "total_calls"), total(before, "total_calls") + 4);
    EXPECT_EQ(after["user_messages"], before["user_messages"].get<std::int64_t>() + 1);
    // What was used stays used.
    ASSERT_EQ(owner.call("DELETE", "/v1/conversations/" + answer.conversationId).status, 204);
    EXPECT_EQ(owner.getJson(Studio), after);
}

TEST(Usage, CountsUnderTheModelThatAnswered)
{
    RunningService running;
    Visitor &owner = running.visitor();
    ASSERT_EQ(
        owner.call("PUT", "/v1/settings", {{"provider", "codex"}, {"codexModel", "fugu"}}).status,
        200);
    (void)ask(owner, "table");
    std::size_t found = 0;
    const json after = owner.getJson(Studio);
    for (const json &row : after["usage_by_source"])
        found += row["source"] == "chat_ui" && row["model"] == "fugu" && row["calls"] == 1 ? 1 : 0;
    EXPECT_EQ(found, 1U);
}

TEST(Usage, OfManyAnswersAtOnceAllCount)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const json before = owner.getJson(Studio);
    std::vector<std::jthread> threads;
    for (int i = 0; i < 12; ++i)
        threads.emplace_back([&] { (void)ask(owner, "long 300"); });
    threads.clear();
    EXPECT_EQ(owner.getJson(Studio)["user_messages"],
              before["user_messages"].get<std::int64_t>() + 12);
}

TEST(Usage, FirstQuestionWritesTheInstructionsToTheCache)
{
    const TokenCount count = estimateTokens({turn("user", 400)}, turn("assistant", 801).parts);
    EXPECT_EQ(count.input, 100);
    EXPECT_EQ(count.output, 201);
    EXPECT_EQ(count.cacheCreation, 1800);
    EXPECT_EQ(count.cacheRead, 0);
}

TEST(Usage, LaterQuestionsReadWhatWasThereFromTheCache)
{
    const std::vector<Turn> turns{turn("user", 400), turn("assistant", 4000), turn("user", 800),
                                  turn("assistant", 8000), turn("user", 100)};
    const TokenCount count = estimateTokens(turns, json::array());
    EXPECT_EQ(count.input, 25);
    EXPECT_EQ(count.output, 0);
    EXPECT_EQ(count.cacheCreation, 200 + 2000);
    EXPECT_EQ(count.cacheRead, 1800 + 100 + 1000);
}

TEST(Usage, CostsFollowThePrices)
{
    const Model *model = findModel("claude-haiku-4-5");
    ASSERT_NE(model, nullptr);
    EXPECT_DOUBLE_EQ(costOf(*model, {1'000'000, 0, 0, 0}), 1);
    EXPECT_DOUBLE_EQ(costOf(*model, {0, 1'000'000, 0, 0}), 5);
    EXPECT_DOUBLE_EQ(costOf(*model, {0, 0, 1'000'000, 0}), 1.25);
    EXPECT_DOUBLE_EQ(costOf(*model, {0, 0, 0, 1'000'000}), 0.1);
    EXPECT_DOUBLE_EQ(cacheSavings(*model, {7, 7, 7, 1'000'000}), 0.9);
    EXPECT_EQ(findModel("unheard-of"), nullptr);
}
