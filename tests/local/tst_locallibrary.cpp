// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "runningservice.h"
#include "shapes.h"

#include <gtest/gtest.h>

#include <map>
#include <thread>

using namespace velto::local;
using namespace velto::local::test;
using nlohmann::json;

namespace
{

json bundle(const Visitor &visitor, const std::string &id)
{
    return entryWith(visitor.getJson("/v1/marketplace/catalog")["entries"], "id", id);
}

std::string flawUnlessAbsent(const json &record, const std::string &key, const std::string &shape)
{
    const json value = record.is_object() ? record.value(key, json()) : json();
    if (value.is_null())
        return {};
    return value.is_array() ? flawInList(value, shape) : flawIn(value, shape);
}

// What is wrong with the records inside an entry of the catalog.
std::string flawInEntry(const json &entry)
{
    const json &resources = entry["resources"];
    return flawUnlessAbsent(entry, "installed",
                            "catalog_id:text? enabled:bool installed_at:text?") +
           flawUnlessAbsent(entry, "integrations",
                            "id:text label:text connect_url:text? connected:bool") +
           flawUnlessAbsent(entry, "resources", "agents:list? skills:list?") +
           flawUnlessAbsent(resources, "agents",
                            "slug:text description:text model:text? max_turns:int? "
                            "mcp_server_names:texts? tools:texts?") +
           flawUnlessAbsent(resources, "skills", "slug:text description:text");
}

bool hasEntries(const json &list, const std::string &prefix, std::size_t count)
{
    std::size_t found = 0;
    for (const json &entry : list)
        found += entry["id"].get<std::string>().starts_with(prefix) ? 1 : 0;
    return found == count;
}

} // namespace

TEST(AgentConfig, HasTheShapeThatTheClientReads)
{
    RunningService running;
    const json config = running.visitor().getJson("/v1/agent/config");
    EXPECT_EQ(flawIn(config, "model:text max_tokens:int? max_tool_rounds:int? tools:list? "
                             "tool_count:int?"),
              "");
    EXPECT_EQ(flawInList(config["tools"], "name:text description:text"), "");
    EXPECT_EQ(config["tool_count"], config["tools"].size());
}

TEST(Settings, EngineAndCodexModelAreTheUsers)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const std::string shape = "model:text provider:text? codex_model:text?";
    EXPECT_EQ(flawIn(owner.getJson("/v1/settings"), shape), "");
    const Reply reply =
        owner.call("PUT", "/v1/settings", {{"provider", "codex"}, {"codexModel", "fugu-ultra"}});
    ASSERT_EQ(reply.status, 200);
    EXPECT_EQ(flawIn(reply.body, shape), "");
    EXPECT_EQ(reply.body["provider"], "codex");
    EXPECT_EQ(reply.body["codex_model"], "fugu-ultra");
    EXPECT_EQ(owner.getJson("/v1/settings"), reply.body);
    EXPECT_EQ(owner.getJson("/v1/agent/config")["model"], "fugu-ultra");
    EXPECT_EQ(latestAudit(owner)["action"], "settings.changed");
    // A key that isn't sent stays as it was.
    const Reply back = owner.call("PUT", "/v1/settings", {{"provider", "claude"}});
    EXPECT_EQ(back.body["codex_model"], "fugu-ultra");
    EXPECT_EQ(owner.getJson("/v1/agent/config")["model"], "claude-opus-4-8");
    EXPECT_TRUE(running.visitorAs(Role::Admin).getJson("/v1/settings")["provider"].is_null());
}

TEST(Settings, CodexWithoutAModelHasADefault)
{
    RunningService running;
    EXPECT_EQ(running.visitor().call("PUT", "/v1/settings", {{"provider", "codex"}}).status, 200);
    EXPECT_EQ(running.visitor().getJson("/v1/agent/config")["model"], "gpt-5.5");
}

TEST(Settings, BadOnesAreRefused)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const json before = owner.getJson("/v1/settings");
    for (const json &body :
         {json::object(), json::array(), json{{"model", "claude-fable-5"}},
          json{{"provider", "whatever"}}, json{{"provider", nullptr}}, json{{"codexModel", 5}},
          json{{"codexModel", "claude-fable-5"}}, json{{"provider", "codex"}, {"codexModel", "x"}}})
        expectRefused(owner.call("PUT", "/v1/settings", body), 400);
    EXPECT_EQ(owner.getJson("/v1/settings"), before);
}

TEST(Settings, ClaudeModelIsTheWorkspaces)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const Visitor member = running.visitorAs(Role::Member);
    const std::string path = "/v1/admin/workspaces/harbourlight";
    EXPECT_EQ(owner.call("PATCH", path, {{"model", "glm-5.2[1m]"}}).status, 200);
    EXPECT_EQ(member.getJson("/v1/settings")["model"], "glm-5.2[1m]");
    EXPECT_EQ(latestAudit(owner)["action"], "workspace.model_changed");
    switchTo(owner, "ws_tidal");
    EXPECT_EQ(owner.getJson("/v1/settings")["model"], "claude-sonnet-4-6");
}

TEST(Settings, ClaudeModelIsSetByThoseWhoManageTheWorkspace)
{
    RunningService running;
    const json body{{"model", "claude-haiku-4-5"}};
    const std::string path = "/v1/admin/workspaces/";
    expectRefused(running.visitorAs(Role::Member).call("PATCH", path + "harbourlight", body), 403);
    const Visitor admin = running.visitorAs(Role::Admin);
    EXPECT_EQ(admin.call("PATCH", path + "harbourlight", body).status, 200);
    expectRefused(admin.call("PATCH", path + "quay-archive", body), 404);
    // An administrator of the service may be no member at all.
    EXPECT_EQ(running.visitor().call("PATCH", path + "tidal-research", body).status, 200);
    expectRefused(running.visitor().call("PATCH", path + "nowhere", body), 404);
    for (const json &bad : {json::object(), json{{"model", 5}}, json{{"model", ""}},
                            json{{"model", "gpt-5.5"}}, json{{"model", "unheard-of"}}})
        expectRefused(running.visitor().call("PATCH", path + "harbourlight", bad), 400);
}

TEST(Settings, EveryModelOnOfferCanBeChosen)
{
    RunningService running;
    for (const char *model :
         {"claude-fable-5", "claude-opus-4-8", "claude-opus-4-7", "claude-opus-4-6",
          "claude-sonnet-4-6", "claude-haiku-4-5", "deepseek-v4-pro", "glm-5.2[1m]", "glm-5.2"})
        EXPECT_EQ(running.visitor()
                      .call("PATCH", "/v1/admin/workspaces/harbourlight", {{"model", model}})
                      .status,
                  200)
            << model;
    for (const char *model : {"gpt-5.5", "gpt-5.4", "fugu", "fugu-ultra"})
        EXPECT_EQ(running.visitor().call("PUT", "/v1/settings", {{"codexModel", model}}).status,
                  200)
            << model;
}

TEST(Library, ListsHaveTheShapeThatTheClientReads)
{
    RunningService running;
    EXPECT_EQ(flawInList(running.visitor().getJson("/v1/settings/skills"),
                         "id:text name:text description:text enabled:bool updated_at:text?"),
              "");
    EXPECT_EQ(flawInList(running.visitor().getJson("/v1/settings/subagents"),
                         "id:text name:text description:text enabled:bool source:text? model:text? "
                         "max_turns:int? mcp_server_names:texts? tools:texts? updated_at:text?"),
              "");
}

TEST(Library, EntriesAreSwitchedAndDeleted)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const std::map<std::string, std::string> entries{{"skill", "invoice-check"},
                                                     {"subagent", "proofreader"}};
    for (const auto &[noun, id] : entries) {
        const std::string list = "/v1/settings/" + noun + "s";
        const std::string path = list + "/" + id;
        EXPECT_EQ(entryWith(owner.getJson(list), "id", id)["enabled"], true);
        EXPECT_EQ(owner.call("PATCH", path, {{"enabled", false}}).status, 200);
        EXPECT_EQ(entryWith(owner.getJson(list), "id", id)["enabled"], false);
        EXPECT_EQ(latestAudit(owner)["action"], noun + ".disabled");
        EXPECT_EQ(owner.call("PATCH", path, {{"enabled", true}}).status, 200);
        EXPECT_EQ(latestAudit(owner)["action"], noun + ".enabled");
        expectRefused(owner.call("PATCH", path, {{"enabled", 1}}), 400);
        expectRefused(owner.call("PATCH", path, json::object()), 400);
        expectRefused(owner.call("PATCH", list + "/none", {{"enabled", true}}), 404);
        expectRefused(owner.call("DELETE", list + "/none"), 404);
        const std::size_t count = owner.getJson(list).size();
        EXPECT_EQ(owner.call("DELETE", path).status, 204);
        EXPECT_EQ(owner.getJson(list).size(), count - 1);
        EXPECT_EQ(latestAudit(owner)["action"], noun + ".deleted");
        expectRefused(owner.call("DELETE", path), 404);
    }
}

TEST(Library, MembersLookAndDoNotTouch)
{
    RunningService running;
    const Visitor member = running.visitorAs(Role::Member);
    for (const std::string path :
         {"/v1/settings/skills/invoice-check", "/v1/settings/subagents/proofreader"}) {
        expectRefused(member.call("PATCH", path, {{"enabled", false}}), 403);
        expectRefused(member.call("DELETE", path), 403);
    }
    EXPECT_EQ(member.getJson("/v1/settings/skills"),
              running.visitor().getJson("/v1/settings/skills"));
}

TEST(Library, IdsMayHoldSlashesAndBlanks)
{
    RunningService running;
    Visitor &owner = running.visitor();
    EXPECT_EQ(
        owner.call("PATCH", "/v1/settings/skills/brand/voice%20guide", {{"enabled", false}}).status,
        200);
    EXPECT_EQ(entryWith(owner.getJson("/v1/settings/skills"), "id", "brand/voice guide")["enabled"],
              false);
    EXPECT_EQ(owner.call("DELETE", "/v1/settings/skills/brand/voice%20guide").status, 204);
}

TEST(Library, IsTheWorkspacesOwn)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const json here = owner.getJson("/v1/settings/skills");
    switchTo(owner, "ws_lantern");
    EXPECT_NE(owner.getJson("/v1/settings/skills"), here);
    expectRefused(owner.call("DELETE", "/v1/settings/skills/invoice-check"), 404);
    switchTo(owner, "ws_harbourlight");
    EXPECT_EQ(owner.getJson("/v1/settings/skills"), here);
}

TEST(Tools, HaveTheShapeThatTheClientReads)
{
    RunningService running;
    const json catalog = running.visitor().getJson("/v1/velto/tools");
    EXPECT_EQ(flawIn(catalog, "groups:list"), "");
    EXPECT_EQ(flawInList(catalog["groups"],
                         "key:text label:text available:bool availability_label:text? note:text? "
                         "connect_href:text? connect_label:text? tools:list"),
              "");
    for (const json &group : catalog["groups"])
        EXPECT_EQ(
            flawInList(group["tools"], "name:text description:text available:bool source:text?"),
            "");
}

TEST(Tools, FollowTheConnections)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const auto group = [&] {
        return entryWith(owner.getJson("/v1/velto/tools")["groups"], "key", "slack");
    };
    EXPECT_EQ(group()["available"], true);
    EXPECT_FALSE(group().contains("connect_href"));
    const std::size_t before = owner.getJson("/v1/agent/config")["tool_count"];
    ASSERT_EQ(owner.call("DELETE", "/v1/integrations/slack/status").status, 204);
    EXPECT_EQ(group()["available"], false);
    EXPECT_TRUE(group()["note"].is_string());
    EXPECT_TRUE(group()["connect_href"].get<std::string>().ends_with("/slack"));
    const json tools = group()["tools"];
    for (const json &tool : tools)
        EXPECT_EQ(tool["available"], false);
    EXPECT_EQ(owner.getJson("/v1/agent/config")["tool_count"], before - tools.size());
}

TEST(Integrations, AreTenInMixedStates)
{
    RunningService running;
    std::size_t connected = 0;
    for (const char *provider : {"google", "slack", "linear", "notion", "github", "chatwork",
                                 "hubspot", "line", "lark", "x"}) {
        const json status =
            running.visitor().getJson(std::string("/v1/integrations/") + provider + "/status");
        EXPECT_EQ(flawIn(status, "connected:bool velto_email:text? expires_at:text? expired:bool? "
                                 "team_id:text? team_name:text? workspace_id:text? "
                                 "workspace_name:text? installed_at:text? organization_id:text? "
                                 "account_login:text? account_type:text? app_slug:text? "
                                 "account_name:text? hub_domain:text? bot_user_id:text? "
                                 "app_id:text? username:text?"),
                  "");
        connected += status["connected"] ? 1 : 0;
    }
    EXPECT_EQ(connected, 7U);
    EXPECT_EQ(running.visitor().getJson("/v1/integrations/hubspot/status")["expired"], true);
    expectRefused(running.visitor().call("GET", "/v1/integrations/fax/status"), 404);
    expectRefused(running.visitor().call("DELETE", "/v1/integrations/fax/status"), 404);
}

TEST(Integrations, AreDisconnectedByThoseWhoManageTheWorkspace)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const std::string path = "/v1/integrations/google/status";
    expectRefused(running.visitorAs(Role::Member).call("DELETE", path), 403);
    EXPECT_EQ(owner.getJson("/v1/me/profile")["integrations"]["google_connected"], true);
    EXPECT_EQ(running.visitorAs(Role::Admin).call("DELETE", path).status, 204);
    EXPECT_EQ(owner.getJson(path), (json{{"connected", false}}));
    EXPECT_EQ(owner.getJson("/v1/me/profile")["integrations"]["google_connected"], false);
    EXPECT_EQ(latestAudit(owner)["action"], "integration.disconnected");
    EXPECT_EQ(latestAudit(owner)["target_id"], "google");
    expectRefused(owner.call("DELETE", path), 404);
    expectRefused(owner.call("DELETE", "/v1/integrations/x/status"), 404);
}

TEST(Marketplace, HasTheShapeThatTheClientReads)
{
    RunningService running;
    const json catalog = running.visitor().getJson("/v1/marketplace/catalog");
    EXPECT_EQ(flawIn(catalog, "entries:list"), "");
    EXPECT_EQ(flawInList(catalog["entries"],
                         "id:text version:text source:text? name:text tagline:text "
                         "what_it_does:text icon_key:text? accent:text? example_queries:texts? "
                         "resources:object? installed:object? integrations:list?"),
              "");
    std::size_t installed = 0;
    for (const json &entry : catalog["entries"]) {
        installed += entry["installed"].is_null() ? 0 : 1;
        EXPECT_EQ(flawInEntry(entry), "");
    }
    EXPECT_EQ(installed, 2U);
    EXPECT_EQ(bundle(running.visitor(), "front-office")["installed"]["enabled"], false);
    EXPECT_TRUE(bundle(running.visitor(), "welcome-pack")["resources"].is_null());
}

TEST(Marketplace, InstallBringsAgentsAndSkillsAndUninstallTakesThem)
{
    RunningService running;
    Visitor &owner = running.visitor();
    EXPECT_TRUE(bundle(owner, "sales-desk")["installed"].is_null());
    const json skills = owner.getJson("/v1/settings/skills");
    const Reply reply =
        owner.call("POST", "/v1/marketplace/install", {{"catalogId", "sales-desk"}});
    ASSERT_EQ(reply.status, 200);
    EXPECT_EQ(bundle(owner, "sales-desk")["installed"]["enabled"], true);
    EXPECT_TRUE(hasEntries(owner.getJson("/v1/settings/skills"), "sales-desk.", 3));
    EXPECT_TRUE(hasEntries(owner.getJson("/v1/settings/subagents"), "sales-desk.", 2));
    const json writer =
        entryWith(owner.getJson("/v1/settings/subagents"), "id", "sales-desk.offer-writer");
    EXPECT_EQ(writer["name"], "Offer writer");
    EXPECT_EQ(writer["source"], "Sales desk");
    EXPECT_EQ(writer["max_turns"], 20);
    EXPECT_EQ(writer["tools"], (json{"find_contact", "draft_mail"}));
    EXPECT_EQ(latestAudit(owner)["action"], "bundle.installed");
    EXPECT_EQ(owner.call("DELETE", "/v1/marketplace/installed/sales-desk").status, 204);
    EXPECT_TRUE(bundle(owner, "sales-desk")["installed"].is_null());
    EXPECT_EQ(owner.getJson("/v1/settings/skills"), skills);
    EXPECT_EQ(latestAudit(owner)["action"], "bundle.uninstalled");
}

TEST(Marketplace, RequestsAreChecked)
{
    RunningService running;
    Visitor &owner = running.visitor();
    const auto install = [](const Visitor &visitor, const json &body) {
        return visitor.call("POST", "/v1/marketplace/install", body);
    };
    expectRefused(install(owner, {{"catalogId", "none"}}), 404);
    expectRefused(install(owner, {{"catalogId", "research-kit"}}), 409);
    expectRefused(install(owner, {{"catalog_id", "sales-desk"}}), 400);
    expectRefused(install(owner, {{"catalogId", 1}}), 400);
    expectRefused(owner.call("DELETE", "/v1/marketplace/installed/sales-desk"), 404);
    const Visitor member = running.visitorAs(Role::Member);
    expectRefused(install(member, {{"catalogId", "sales-desk"}}), 403);
    expectRefused(member.call("DELETE", "/v1/marketplace/installed/research-kit"), 403);
}

TEST(Marketplace, InstallationsAreTheWorkspacesOwn)
{
    RunningService running;
    Visitor &owner = running.visitor();
    ASSERT_EQ(owner.call("DELETE", "/v1/marketplace/installed/research-kit").status, 204);
    switchTo(owner, "ws_tidal");
    EXPECT_FALSE(bundle(owner, "research-kit")["installed"].is_null());
    EXPECT_TRUE(hasEntries(owner.getJson("/v1/settings/skills"), "research-kit.", 2));
}

TEST(Marketplace, OfManyInstallsAtOnceOneWins)
{
    RunningService running;
    std::atomic<int> good = 0;
    std::atomic<int> refused = 0;
    std::vector<std::jthread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] {
            const Reply reply = running.visitor().call("POST", "/v1/marketplace/install",
                                                       {{"catalogId", "bookkeeper"}});
            good += reply.status == 200 ? 1 : 0;
            refused += reply.status == 409 ? 1 : 0;
        });
    threads.clear();
    EXPECT_EQ(good, 1);
    EXPECT_EQ(refused, 7);
    EXPECT_TRUE(hasEntries(running.visitor().getJson("/v1/settings/skills"), "bookkeeper.", 1));
}
