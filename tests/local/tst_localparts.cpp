// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/http/body.h"
#include "local/http/route.h"
#include "local/options.h"
#include "local/store/turns.h"
#include "local/text.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace velto::local;
using nlohmann::json;

namespace
{

using Captures = std::vector<std::string>;

Turn user(const std::string &text)
{
    return {"u", "user", json::array({textPart(text)})};
}

Turn assistant(json parts)
{
    return {"a", "assistant", std::move(parts)};
}

Turn said(const std::string &text)
{
    return {"posted", "assistant", json::array({textPart(text)})};
}

json tool(const std::string &name)
{
    return {{"type", "dynamic-tool"}, {"toolName", name}, {"toolCallId", "c"}};
}

std::string flawOf(const std::vector<std::string> &arguments)
{
    const auto line = parseCommandLine(arguments);
    return line ? std::string() : line.error();
}

} // namespace

TEST(MatchPath, TakesWholeSegments)
{
    Captures captures;
    EXPECT_TRUE(matchPath("/", "/", captures));
    EXPECT_TRUE(matchPath("/v1/me", "/v1/me", captures));
    EXPECT_FALSE(matchPath("/v1/me", "/v1/me/", captures));
    EXPECT_FALSE(matchPath("/v1/me", "/v1", captures));
    EXPECT_FALSE(matchPath("/v1/me", "/v1/men", captures));
    EXPECT_TRUE(matchPath("/c/{id}/m", "/c/7/m", captures));
    EXPECT_EQ(captures, Captures{"7"});
    EXPECT_FALSE(matchPath("/c/{id}/m", "/c//m", captures));
    EXPECT_FALSE(matchPath("/c/{id}", "/c/7/8", captures));
    EXPECT_TRUE(matchPath("/m/{path...}", "/m/a/b.png", captures));
    EXPECT_EQ(captures, Captures{"a/b.png"});
    EXPECT_FALSE(matchPath("/m/{path...}", "/m/", captures));
    EXPECT_FALSE(matchPath("/m/{path...}", "/m", captures));
    EXPECT_TRUE(matchPath("/a/{b}/c/{d}/e", "/a/1/c/2/e", captures));
    EXPECT_EQ(captures, (Captures{"1", "2"}));
}

TEST(ParseForm, DecodesAndRefusesDoubt)
{
    const auto form = parseForm("a=1+2&b=%C3%BC%26&c=&d&&e=x=y");
    ASSERT_TRUE(form);
    EXPECT_EQ(*form, (Form{{"a", "1 2"}, {"b", "ü&"}, {"c", ""}, {"d", ""}, {"e", "x=y"}}));
    EXPECT_TRUE(parseForm("")->empty());
    EXPECT_FALSE(parseForm("a=1&a=2"));
    EXPECT_FALSE(parseForm("a=%"));
    EXPECT_FALSE(parseForm("a=%4"));
    EXPECT_FALSE(parseForm("a=%4x"));
}

TEST(PercentEncoded, LeavesOnlyUnreservedCharacters)
{
    EXPECT_EQ(percentEncoded("aZ0-._~"), "aZ0-._~");
    EXPECT_EQ(percentEncoded(" &=+/ü"), "%20%26%3D%2B%2F%C3%BC");
}

TEST(Text, IsShortenedBetweenCharacters)
{
    EXPECT_EQ(shortened("  one\n two ", 20), "one two");
    EXPECT_EQ(shortened("exactly ten", 11), "exactly ten");
    EXPECT_EQ(shortened("one two three four", 10), "one two…");
    EXPECT_EQ(shortened("日本語日本語", 4), "日本語…");
    EXPECT_EQ(shortened("", 4), "");
}

TEST(Text, GistIsTheFirstLineOfProse)
{
    EXPECT_EQ(gist("# Title\n\n```\ncode\n```\n| a |\n\n**Bold** `words`.\nMore", 40),
              "Bold words.");
    EXPECT_EQ(gist("# Title", 40), "");
}

TEST(Text, TimesAreIsoInUtc)
{
    EXPECT_EQ(isoTime(0), "1970-01-01T00:00:00Z");
    EXPECT_EQ(isoTime(1'790'000'000), "2026-09-21T14:13:20Z");
}

TEST(MergeTurns, RepeatedAnswersKeepTheirTools)
{
    const std::vector<Turn> stored{
        user("q"), assistant(json::array({textPart("a"), tool("t"), textPart("b")}))};
    const auto merged = mergeTurns(stored, {user("q"), said("ab"), user("next")});
    ASSERT_EQ(merged.size(), 3U);
    EXPECT_EQ(merged[1], stored[1]);
    EXPECT_EQ(merged[2], user("next"));
}

TEST(MergeTurns, OtherTextTakesTheirPlace)
{
    const std::vector<Turn> stored{user("q"), assistant(json::array({tool("t"), textPart("b")}))};
    const auto merged = mergeTurns(stored, {user("q"), said("other"), user("next")});
    EXPECT_EQ(merged, (std::vector<Turn>{user("q"), said("other"), user("next")}));
}

TEST(MergeTurns, EditedTurnEndsWhatIsKept)
{
    const std::vector<Turn> stored{user("q"), assistant(json::array({tool("t"), textPart("b")})),
                                   user("r"), assistant(json::array({textPart("c")}))};
    EXPECT_EQ(mergeTurns(stored, {user("edited")}), (std::vector<Turn>{user("edited")}));
    const auto merged = mergeTurns(stored, {user("q"), said("b"), user("edited")});
    EXPECT_EQ(merged, (std::vector<Turn>{stored[0], stored[1], user("edited")}));
}

TEST(MergeTurns, StoppedNoteIsAddedToWhatWasShown)
{
    const std::vector<Turn> stored{
        user("q"), assistant(json::array({textPart("abc"), tool("t"), textPart("defgh")}))};
    const auto inText = mergeTurns(stored, {user("q"), said("abcde\n\n_stopped_"), user("r")});
    EXPECT_EQ(inText[1].parts,
              json::array({textPart("abc"), tool("t"), textPart("de\n\n_stopped_")}));
    const auto beforeTool = mergeTurns(stored, {user("q"), said("ab\n\n_stopped_"), user("r")});
    EXPECT_EQ(beforeTool[1].parts, json::array({textPart("ab\n\n_stopped_")}));
    const auto inTool = mergeTurns(stored, {user("q"), said("abc_stopped_"), user("r")});
    EXPECT_EQ(inTool[1].parts, json::array({textPart("abc"), tool("t"), textPart("_stopped_")}));
}

TEST(MergeTurns, AnswersWithoutTextStayThoughTheyAreNotPosted)
{
    const std::vector<Turn> stored{user("q"), assistant(json::array({tool("t")}))};
    const auto merged = mergeTurns(stored, {user("q"), user("r")});
    EXPECT_EQ(merged, (std::vector<Turn>{stored[0], stored[1], user("r")}));
    EXPECT_EQ(mergeTurns(stored, {user("q")}), (std::vector<Turn>{stored[0]}));
}

TEST(CommandLine, HasDefaults)
{
    ::setenv("XDG_DATA_HOME", "/somewhere", 1);
    const auto line = parseCommandLine({});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->service.port, 7717);
    EXPECT_EQ(line->service.accessTokenSeconds, 900);
    EXPECT_EQ(line->service.tokenRate, 80);
    EXPECT_EQ(line->service.dataFolder, "/somewhere/velto-local");
    EXPECT_TRUE(line->portFile.empty());
    EXPECT_EQ(line->service.signInAs, Role::Owner);
    EXPECT_FALSE(line->service.reset);
}

TEST(CommandLine, TakesRoleAndReset)
{
    const auto line = parseCommandLine({"--as", "member", "--reset"});
    ASSERT_TRUE(line) << line.error();
    EXPECT_EQ(line->service.signInAs, Role::Member);
    EXPECT_TRUE(line->service.reset);
    EXPECT_EQ(parseCommandLine({"--as=admin"})->service.signInAs, Role::Admin);
    for (const char *role : {"", "king", "Owner"})
        EXPECT_NE(flawOf({"--as", role}), "") << role;
    EXPECT_NE(flawOf({"--reset=yes"}), "");
}

TEST(CommandLine, DataFolderFallsBackToHome)
{
    ::unsetenv("XDG_DATA_HOME");
    ::setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(defaultDataFolder(), "/home/someone/.local/share/velto-local");
    ::setenv("XDG_DATA_HOME", "relative", 1);
    EXPECT_EQ(defaultDataFolder(), "/home/someone/.local/share/velto-local");
}

TEST(CommandLine, ReadsBothFormsOfAValue)
{
    const auto line = parseCommandLine({"--port", "0", "--data=/d", "--access-token-seconds", "5",
                                        "--token-rate=0", "--port-file", "/p"});
    ASSERT_TRUE(line) << line.error();
    EXPECT_EQ(line->service.port, 0);
    EXPECT_EQ(line->service.dataFolder, "/d");
    EXPECT_EQ(line->service.accessTokenSeconds, 5);
    EXPECT_EQ(line->service.tokenRate, 0);
    EXPECT_EQ(line->portFile, "/p");
}

TEST(CommandLine, NamesWhatIsWrong)
{
    EXPECT_NE(flawOf({"--nonsense"}).find("--nonsense"), std::string::npos);
    EXPECT_NE(flawOf({"stray"}).find("stray"), std::string::npos);
    EXPECT_NE(flawOf({"--port"}).find("--port"), std::string::npos);
    for (const char *port : {"-1", "65536", "x", "1x", ""})
        EXPECT_NE(flawOf({"--port", port}), "") << port;
    for (const char *seconds : {"0", "-5", "86401", "x"})
        EXPECT_NE(flawOf({"--access-token-seconds", seconds}), "") << seconds;
    for (const char *rate : {"-1", "1.5", "x"})
        EXPECT_NE(flawOf({"--token-rate", rate}), "") << rate;
    EXPECT_NE(flawOf({"--data="}), "");
    EXPECT_NE(flawOf({"--help=x"}), "");
}
