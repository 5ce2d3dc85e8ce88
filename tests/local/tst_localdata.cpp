// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "localprogram.h"

#include "local/auth/secrets.h"
#include "local/store/database.h"
#include "local/store/rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <fstream>
#include <set>
#include <thread>

#include <sqlite3.h>

using namespace velto::local;
using namespace velto::local::test;
using nlohmann::json;

namespace
{

// A file as velto-local 0.1 wrote it, with a conversation and a sign-in.
constexpr auto FormerFile = R"(
CREATE TABLE conversations (id TEXT PRIMARY KEY, channel TEXT NOT NULL,
    title TEXT NOT NULL DEFAULT '', summary TEXT NOT NULL DEFAULT '', created_at INTEGER NOT NULL,
    revision INTEGER NOT NULL DEFAULT 0);
CREATE TABLE messages (
    conversation_id TEXT NOT NULL REFERENCES conversations(id) ON DELETE CASCADE,
    position INTEGER NOT NULL, id TEXT NOT NULL, role TEXT NOT NULL, parts TEXT NOT NULL,
    PRIMARY KEY (conversation_id, position)) WITHOUT ROWID;
CREATE TABLE grants (id TEXT PRIMARY KEY, client_id TEXT NOT NULL, scope TEXT NOT NULL,
    created_at INTEGER NOT NULL, revoked INTEGER NOT NULL DEFAULT 0);
CREATE TABLE codes (hash TEXT PRIMARY KEY,
    grant_id TEXT NOT NULL REFERENCES grants(id) ON DELETE CASCADE, redirect_uri TEXT NOT NULL,
    challenge TEXT NOT NULL, expires_at INTEGER NOT NULL, used INTEGER NOT NULL DEFAULT 0);
CREATE TABLE refresh_tokens (hash TEXT PRIMARY KEY,
    grant_id TEXT NOT NULL REFERENCES grants(id) ON DELETE CASCADE,
    used INTEGER NOT NULL DEFAULT 0);
CREATE TABLE access_tokens (hash TEXT PRIMARY KEY,
    grant_id TEXT NOT NULL REFERENCES grants(id) ON DELETE CASCADE, expires_at INTEGER NOT NULL);
INSERT INTO conversations VALUES ('conv_old', 'chat_ui', 'Tide tables', 'Done.', 1780000000, 2);
INSERT INTO messages VALUES ('conv_old', 0, 'm0', 'user', '[{"type":"text","text":"Hello"}]');
INSERT INTO messages VALUES ('conv_old', 1, 'm1', 'assistant', '[{"type":"text","text":"Hi"}]');
INSERT INTO grants VALUES ('grant_old', 'velto-apple', '', 1780000000, 0);
PRAGMA user_version = 1;
)";

std::filesystem::path databaseIn(const TemporaryFolder &folder)
{
    return folder.path() / "data/velto-local.sqlite";
}

void runSql(const std::filesystem::path &file, const std::string &sql)
{
    std::filesystem::create_directories(file.parent_path());
    sqlite3 *handle = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &handle), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(handle);
    sqlite3_close(handle);
}

void writeFormerFile(const TemporaryFolder &folder)
{
    runSql(databaseIn(folder),
           FormerFile + ("INSERT INTO access_tokens VALUES ('" + sha256Text("old-access") +
                         "', 'grant_old', 9999999999);"
                         "INSERT INTO refresh_tokens VALUES ('" +
                         sha256Text("old-refresh") + "', 'grant_old', 0);"));
}

std::vector<std::string> with(std::vector<std::string> arguments,
                              const std::vector<std::string> &more)
{
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

// Everything that a client can see of the company, and something of each kind is changed.
const std::vector<std::string> Views{
    "/v1/me",
    "/v1/me/profile",
    "/v1/settings",
    "/v1/settings/skills",
    "/v1/settings/subagents",
    "/v1/velto/tools",
    "/v1/integrations/slack/status",
    "/v1/marketplace/catalog",
    "/v1/workspaces/harbourlight",
    "/v1/workspaces/harbourlight/members",
    "/v1/workspaces/harbourlight/invites",
    "/v1/workspaces/harbourlight/audit?limit=100",
    "/v1/admin/overview",
    "/v1/admin/users",
    "/v1/admin/workspaces",
    "/v1/admin/workspaces/harbourlight",
    "/v1/admin/catalog",
    "/v1/conversations",
};

json everything(const Visitor &visitor)
{
    json all;
    for (const std::string &view : Views)
        all[view] = visitor.getJson(view);
    return all;
}

void changeSomeOfAll(const Visitor &visitor)
{
    const std::string studio = "/v1/workspaces/harbourlight";
    const std::vector<std::tuple<std::string, std::string, json>> changes{
        {"PUT", "/v1/settings", {{"provider", "codex"}, {"codexModel", "fugu"}}},
        {"PATCH", "/v1/admin/workspaces/harbourlight", {{"model", "glm-5.2"}}},
        {"PATCH", "/v1/settings/skills/alt-text", {{"enabled", false}}},
        {"DELETE", "/v1/settings/subagents/proofreader", nullptr},
        {"DELETE", "/v1/integrations/slack/status", nullptr},
        {"POST", "/v1/marketplace/install", {{"catalogId", "sales-desk"}}},
        {"DELETE", "/v1/marketplace/installed/research-kit", nullptr},
        {"POST", studio + "/invites", {{"email", "x@example.org"}, {"role", "member"}}},
        {"DELETE", studio + "/invites/inv_dmitri", nullptr},
        {"PATCH", studio + "/members/usr_zoe/role", {{"role", "admin"}}},
        {"DELETE", studio + "/members/usr_noor", nullptr},
        {"DELETE", "/v1/workspaces/quay-archive", nullptr},
        {"DELETE", "/v1/admin/catalog/bookkeeper", nullptr},
        {"POST", "/v1/workspaces/switch", {{"workspace_id", "ws_lantern"}}},
        {"POST", "/v1/workspaces/switch", {{"workspace_id", "ws_harbourlight"}}},
    };
    for (const auto &[method, path, body] : changes) {
        const int status = visitor.call(method, path, body).status;
        EXPECT_TRUE(status == 200 || status == 204) << method << " " << path << " " << status;
    }
    (void)ask(visitor, "tools");
}

// The log gives out no more than 200 lines.
constexpr int MostInvites = 30;

// Invites one after the other until nobody answers; the ids that were told. Counts them on the way.
std::vector<std::string> inviteUntilRefused(const Visitor &visitor, int round,
                                            std::atomic<int> &count)
{
    std::vector<std::string> ids;
    httplib::Client client = visitor.client();
    for (int i = 0; i < MostInvites; ++i) {
        const json body{{"email", "guest" + std::to_string(round * 1000 + i) + "@example.org"},
                        {"role", "member"}};
        const auto answer = client.Post("/v1/workspaces/harbourlight/invites", visitor.bearer(),
                                        body.dump(), "application/json");
        if (!answer || answer->status != 200)
            break;
        ids.push_back(json::parse(answer->body)["invited"][0]["invite_id"]);
        ++count;
        count.notify_one();
    }
    // Whoever waits must not wait for ever when it never began.
    count = std::max(count.load(), 5);
    count.notify_one();
    return ids;
}

// The ids that the service has made up itself.
std::set<std::string> newIds(const json &list, const std::string &key)
{
    std::set<std::string> ids;
    for (const json &entry : list) {
        const auto id = entry[key].get<std::string>();
        if (id.size() == std::string("inv_").size() + 32 && id.starts_with("inv_"))
            ids.insert(id);
    }
    return ids;
}

} // namespace

TEST(Data, OutlivesARestartAndAKill)
{
    for (const int signal : {SIGTERM, SIGKILL}) {
        TemporaryFolder folder;
        SignedIn tokens;
        json before;
        {
            Process process(plainArguments(folder));
            Visitor visitor(process.port());
            tokens = visitor.signIn();
            const json untouched = everything(visitor);
            changeSomeOfAll(visitor);
            before = everything(visitor);
            for (const std::string &view : Views)
                EXPECT_NE(before[view], untouched[view]) << view;
            process.kill(signal);
        }
        Process process(plainArguments(folder));
        Visitor visitor(process.port());
        visitor.useToken(tokens.accessToken);
        EXPECT_EQ(everything(visitor), before);
    }
}

TEST(Data, KillDuringChangesLeavesEachWholeOrUndone)
{
    TemporaryFolder folder;
    const std::string studio = "/v1/workspaces/harbourlight";
    std::set<std::string> acknowledged;
    for (int round = 0; round < 5; ++round) {
        Process process(plainArguments(folder));
        Visitor visitor(process.port());
        visitor.signIn();
        std::atomic<int> count = 0;
        std::jthread inviting([&] {
            for (const std::string &id : inviteUntilRefused(visitor, round, count))
                acknowledged.insert(id);
        });
        for (int seen = 0; seen < 5; seen = count)
            count.wait(seen);
        process.kill(SIGKILL);
    }
    Process process(plainArguments(folder));
    Visitor visitor(process.port());
    visitor.signIn();
    const std::set<std::string> stored =
        newIds(visitor.getJson(studio + "/invites")["invites"], "id");
    // An invite and its line in the log are one change.
    EXPECT_EQ(newIds(visitor.getJson(studio + "/audit?limit=200")["entries"], "target_id"), stored);
    EXPECT_GE(acknowledged.size(), 25U);
    EXPECT_TRUE(
        std::includes(stored.begin(), stored.end(), acknowledged.begin(), acknowledged.end()));
}

TEST(Data, ResetStartsAfresh)
{
    TemporaryFolder folder;
    json fresh;
    SignedIn tokens;
    {
        Process process(plainArguments(folder));
        Visitor visitor(process.port());
        tokens = visitor.signIn();
        fresh = visitor.getJson("/v1/workspaces/harbourlight/members");
        changeSomeOfAll(visitor);
        EXPECT_NE(visitor.getJson("/v1/workspaces/harbourlight/members"), fresh);
        process.kill(SIGKILL);
    }
    std::ofstream(folder.path() / "data/keyring") << "somebody else's";
    Process process(with(plainArguments(folder), {"--reset"}));
    Visitor visitor(process.port());
    visitor.useToken(tokens.accessToken);
    EXPECT_EQ(visitor.get("/v1/me")->status, 401);
    visitor.signIn();
    EXPECT_EQ(visitor.getJson("/v1/workspaces/harbourlight/members"), fresh);
    EXPECT_TRUE(visitor.getJson("/v1/conversations").empty());
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "data/keyring"));
}

TEST(Data, ResetHelpsADamagedFile)
{
    TemporaryFolder folder;
    std::filesystem::create_directories(folder.path() / "data");
    std::ofstream(databaseIn(folder)) << std::string(4096, 'x');
    Process process(with(plainArguments(folder), {"--reset"}));
    Visitor visitor(process.port());
    visitor.signIn();
    EXPECT_EQ(visitor.get("/v1/me")->status, 200);
}

TEST(Data, ResetIsRefusedUnderAnotherService)
{
    TemporaryFolder folder;
    Process first(plainArguments(folder));
    Visitor visitor(first.port());
    visitor.signIn();
    Process second(with(plainArguments(folder), {"--reset"}));
    EXPECT_NE(second.output().find("--reset"), std::string::npos) << second.output();
    EXPECT_EQ(second.exitStatus(), 1);
    EXPECT_EQ(visitor.get("/v1/me")->status, 200);
}

TEST(Data, RoleChoosesWhoSignsIn)
{
    TemporaryFolder folder;
    for (const std::string role : {"member", "admin", "owner"}) {
        Process process(with(plainArguments(folder), {"--as", role}));
        Visitor visitor(process.port());
        visitor.signIn();
        EXPECT_EQ(visitor.getJson("/v1/me")["workspaces"][0]["role"], role);
        process.kill(SIGTERM);
    }
}

TEST(Migration, KeepsConversationsAndSignIns)
{
    TemporaryFolder folder;
    writeFormerFile(folder);
    Process process(with(plainArguments(folder), {"--as", "member"}));
    Visitor visitor(process.port());
    visitor.useToken("old-access");
    EXPECT_EQ(visitor.getJson("/v1/me")["user"]["name"], "Robin Okafor");
    const json history = visitor.getJson("/v1/conversations?limit=50&channel=chat_ui");
    ASSERT_EQ(history.size(), 1U);
    EXPECT_EQ(history[0]["id"], "conv_old");
    EXPECT_EQ(history[0]["title"], "Tide tables");
    EXPECT_EQ(history[0]["messageCount"], 2);
    const json messages = visitor.getJson("/v1/conversations/conv_old/messages");
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[1]["parts"][0]["text"], "Hi");
    // What was asked before counts with what the company had used.
    TemporaryFolder other;
    Process fresh(plainArguments(other));
    Visitor newcomer(fresh.port());
    newcomer.signIn();
    const std::string usage = "/v1/admin/workspaces/harbourlight";
    EXPECT_EQ(visitor.getJson(usage)["user_messages"],
              newcomer.getJson(usage)["user_messages"].get<int>() + 1);
    const auto again = chat(visitor,
                            json::array({spokenTurn("user", "Hello"), spokenTurn("assistant", "Hi"),
                                         spokenTurn("user", "table")}),
                            "conv_old");
    EXPECT_EQ(again.status, 200);
    EXPECT_EQ(visitor.getJson("/v1/conversations/conv_old/messages").size(), 4U);
    EXPECT_EQ(visitor.refresh("old-refresh")->status, 200);
    EXPECT_EQ(visitor.getJson("/v1/admin/overview")["totals"]["users"], 13);
}

TEST(Migration, ThatFailsLeavesTheFileAsItWas)
{
    TemporaryFolder folder;
    writeFormerFile(folder);
    runSql(databaseIn(folder), "CREATE TABLE workspaces (other TEXT)");
    Process process(plainArguments(folder));
    EXPECT_NE(process.output().find("workspaces"), std::string::npos) << process.output();
    EXPECT_EQ(process.exitStatus(), 1);
    runSql(databaseIn(folder), "DROP TABLE workspaces");
    Process again(plainArguments(folder));
    Visitor visitor(again.port());
    visitor.useToken("old-access");
    EXPECT_EQ(visitor.getJson("/v1/conversations").size(), 1U);
}

TEST(Migration, FileOfANewerServiceIsLeftAlone)
{
    TemporaryFolder folder;
    runSql(databaseIn(folder), "PRAGMA user_version = 99");
    Process process(plainArguments(folder));
    EXPECT_NE(process.output().find("newer"), std::string::npos) << process.output();
    EXPECT_EQ(process.exitStatus(), 1);
}

TEST(Transaction, IsNotCommittedAfterAStatementThatFailed)
{
    TemporaryFolder folder;
    std::string error;
    const auto database = Database::open(folder.path() / "test.sqlite", error);
    ASSERT_TRUE(database) << error;
    const auto count = [&] {
        Statement query(*database, "SELECT count(*) AS n FROM grants");
        return rowOf(query)["n"].get<int>();
    };
    const std::string insert = "INSERT INTO grants VALUES ('g', 'c', '', 1, 0, 'u')";
    {
        Transaction transaction(*database);
        EXPECT_TRUE(Statement(*database, insert.c_str()).done());
        EXPECT_FALSE(Statement(*database, insert.c_str()).done());
        EXPECT_FALSE(transaction.commit());
        EXPECT_NE(database->reason().find("UNIQUE"), std::string::npos) << database->reason();
    }
    EXPECT_EQ(count(), 0);
    Transaction transaction(*database);
    EXPECT_TRUE(Statement(*database, insert.c_str()).done());
    EXPECT_TRUE(transaction.commit());
    EXPECT_EQ(count(), 1);
}

TEST(Rows, BecomeRecordsByTheNamesOfTheirColumns)
{
    TemporaryFolder folder;
    std::string error;
    const auto database = Database::open(folder.path() / "test.sqlite", error);
    ASSERT_TRUE(database) << error;
    Statement query(*database,
                    "SELECT 1 AS n, 'x' AS s, NULL AS none, 0 AS \"off:bool\", 1 AS \"on:bool\","
                    " 0 AS \"at:time\", '[1]' AS \"list:json\", NULL AS \"gone:time\"");
    EXPECT_EQ(rowsOf(query), json::array({{{"n", 1},
                                           {"s", "x"},
                                           {"none", nullptr},
                                           {"off", false},
                                           {"on", true},
                                           {"at", "1970-01-01T00:00:00Z"},
                                           {"list", {1}},
                                           {"gone", nullptr}}}));
    Statement nothing(*database, "SELECT id FROM grants");
    EXPECT_TRUE(rowOf(nothing).is_null());
}
