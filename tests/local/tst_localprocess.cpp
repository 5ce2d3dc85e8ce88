// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "localprogram.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <iterator>
#include <thread>

using namespace velto::local;
using namespace velto::local::test;
using nlohmann::json;

namespace
{

/// Posts a prompt whose answer takes minutes, and runs `onFirstDelta` when it has begun.
std::string interrupted(const Visitor &visitor, const json &turns, const std::string &conversation,
                        const std::function<void()> &onFirstDelta)
{
    std::string id;
    httplib::Request request;
    request.method = "POST";
    request.path = "/v1/chat";
    request.headers = visitor.bearer();
    json body{{"messages", turns}};
    if (!conversation.empty())
        body["conversation_id"] = conversation;
    request.body = body.dump();
    bool begun = false;
    request.response_handler = [&](const httplib::Response &response) {
        id = response.get_header_value("x-conversation-id");
        return true;
    };
    request.content_receiver = [&](const char *, std::size_t, std::uint64_t, std::uint64_t) {
        if (!begun)
            onFirstDelta();
        begun = true;
        return true;
    };
    httplib::Response response;
    httplib::Error error = httplib::Error::Success;
    EXPECT_FALSE(visitor.client().send(request, response, error));
    EXPECT_TRUE(begun);
    return id;
}

std::string contentOf(const std::filesystem::path &file)
{
    std::ifstream input(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(input), {}};
}

} // namespace

TEST(Program, GreetsWithItsPortAndWritesThePortFile)
{
    TemporaryFolder folder;
    auto arguments = plainArguments(folder);
    const auto portFile = folder.path() / "port";
    arguments.insert(arguments.end(), {"--port-file", portFile.string()});
    Process process(arguments);
    const int port = process.port();
    ASSERT_GT(port, 0);
    EXPECT_EQ(Visitor(port).client().Get("/")->status, 200);
    // The file is written after the greeting; the end comes after both.
    EXPECT_EQ(process.kill(SIGTERM), 0);
    EXPECT_EQ(contentOf(portFile), std::to_string(port) + "\n");
    EXPECT_FALSE(std::filesystem::exists(portFile.string() + ".part"));
}

TEST(Program, EndsCleanlyOnSigtermAndSigint)
{
    for (const int signal : {SIGTERM, SIGINT}) {
        TemporaryFolder folder;
        Process process(plainArguments(folder));
        Visitor visitor(process.port());
        visitor.signIn();
        const auto start = std::chrono::steady_clock::now();
        const std::string id =
            interrupted(visitor, json::array({spokenTurn("user", "slow long 4000")}), {},
                        [&] { EXPECT_EQ(process.kill(signal), 0); });
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
        EXPECT_TRUE(process.output().ends_with("velto-local stopped\n")) << process.output();
        Process again(plainArguments(folder));
        Visitor later(again.port());
        later.signIn();
        EXPECT_EQ(later.getJson("/v1/conversations/" + id + "/messages").size(), 2U);
    }
}

TEST(Program, KillLosesNothingButTheAnswerInFlight)
{
    TemporaryFolder folder;
    SignedIn tokens;
    std::string finished;
    std::string open;
    json before;
    std::string shown;
    {
        Process process(plainArguments(folder));
        Visitor visitor(process.port());
        tokens = visitor.signIn();
        finished = ask(visitor, "tools").conversationId;
        const auto first = ask(visitor, "table");
        before = visitor.getJson("/v1/conversations/" + finished + "/messages");
        open = interrupted(
            visitor,
            json::array({spokenTurn("user", "table"), spokenTurn("assistant", first.text()),
                         spokenTurn("user", "slow long 4000")}),
            first.conversationId, [&] { process.kill(SIGKILL); });
    }
    Process process(plainArguments(folder));
    Visitor visitor(process.port());
    visitor.useToken(tokens.accessToken);
    EXPECT_EQ(visitor.getJson("/v1/conversations/" + finished + "/messages"), before);
    const json messages = visitor.getJson("/v1/conversations/" + open + "/messages");
    ASSERT_EQ(messages.size(), 3U);
    EXPECT_EQ(messages[2]["parts"][0]["text"], "slow long 4000");
    EXPECT_EQ(visitor.refresh(tokens.refreshToken)->status, 200);
}

TEST(Program, KillInALoopNeverLosesAFinishedAnswer)
{
    TemporaryFolder folder;
    std::vector<std::string> ids;
    for (int round = 0; round < 10; ++round) {
        Process process(plainArguments(folder));
        Visitor visitor(process.port());
        visitor.signIn();
        ids.push_back(ask(visitor, "long 500").conversationId);
        process.kill(SIGKILL);
    }
    Process process(plainArguments(folder));
    Visitor visitor(process.port());
    visitor.signIn();
    for (const std::string &id : ids)
        EXPECT_EQ(visitor.getJson("/v1/conversations/" + id + "/messages").size(), 2U);
}

TEST(Program, TellsThatThePortIsInUse)
{
    TemporaryFolder folder;
    TemporaryFolder other;
    Process first(plainArguments(folder));
    const std::string port = std::to_string(first.port());
    Process second({"--port", port, "--data", other.path().string()});
    EXPECT_NE(second.output().find("127.0.0.1:" + port), std::string::npos) << second.output();
    EXPECT_EQ(second.exitStatus(), 1);
}

TEST(Program, TellsThatTheDataCannotBeUsed)
{
    Process process({"--port", "0", "--data", "/proc/nothing/here"});
    EXPECT_NE(process.output().find("/proc/nothing/here"), std::string::npos) << process.output();
    EXPECT_EQ(process.exitStatus(), 1);
    TemporaryFolder folder;
    std::ofstream(folder.path() / "velto-local.sqlite") << std::string(4096, 'x');
    Process damaged({"--port", "0", "--data", folder.path().string()});
    EXPECT_NE(damaged.output().find("velto-local.sqlite"), std::string::npos) << damaged.output();
    EXPECT_EQ(damaged.exitStatus(), 1);
}

TEST(Program, RefusesBadOptions)
{
    Process process({"--port", "many"});
    EXPECT_NE(process.output().find("--port many"), std::string::npos) << process.output();
    EXPECT_EQ(process.exitStatus(), 2);
}

TEST(Program, HelpsAndTellsItsVersion)
{
    Process help({"--help"});
    for (const char *option : {"--port", "--data", "--access-token-seconds", "--token-rate",
                               "--port-file", "--reset", "--as", "--help", "--version"})
        EXPECT_NE(help.output().find(option), std::string::npos) << option;
    EXPECT_EQ(help.exitStatus(), 0);
    Process version({"--version"});
    EXPECT_EQ(version.output(), "velto-local " VELTO_VERSION "\n");
    EXPECT_EQ(version.exitStatus(), 0);
}

TEST(Program, KeepsItsDataToTheUser)
{
    TemporaryFolder folder;
    Process process(plainArguments(folder));
    ASSERT_GT(process.port(), 0);
    using std::filesystem::perms;
    constexpr auto others = perms::group_all | perms::others_all;
    const auto data = folder.path() / "data";
    EXPECT_EQ(std::filesystem::status(data).permissions() & others, perms::none);
    for (const auto &entry : std::filesystem::directory_iterator(data))
        EXPECT_EQ(entry.status().permissions() & others, perms::none) << entry.path();
}

TEST(Program, LogsNoTokenAndNoCode)
{
    TemporaryFolder folder;
    Process process(plainArguments(folder));
    Visitor visitor(process.port());
    const std::string code = visitor.approvedCode();
    const auto answer = visitor.exchange(code);
    const json tokens = json::parse(answer->body, nullptr, false);
    visitor.useToken(tokens["access_token"]);
    (void)ask(visitor, "table");
    process.kill(SIGTERM);
    const std::string &output = process.output();
    EXPECT_NE(output.find("POST /v1/chat 200 "), std::string::npos) << output;
    const std::vector<std::string> secrets{code, tokens["access_token"], tokens["refresh_token"]};
    for (const std::string &secret : secrets)
        EXPECT_EQ(output.find(secret), std::string::npos);
}
