// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "runningservice.h"

#include "local/media/mediafiles.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <thread>

using namespace velto::local;
using namespace velto::local::test;
using nlohmann::json;

namespace
{

constexpr auto Picture = "charts/arrivals.png";

std::string bytesOf(const std::string &path)
{
    const MediaFile *file = findMedia(path);
    return file != nullptr ? std::string(file->content) : std::string();
}

httplib::Result media(const Visitor &visitor, const httplib::Headers &more = {},
                      const std::string &path = Picture)
{
    httplib::Headers headers = visitor.bearer();
    headers.insert(more.begin(), more.end());
    return visitor.client().Get("/v1/media/" + path, headers);
}

std::string fileAt(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A path that fits the route.
std::string somePath(const Route &route)
{
    std::string path = route.pattern;
    for (auto open = path.find('{'); open != std::string::npos; open = path.find('{'))
        path.replace(open, path.find('}', open) - open + 1, "x");
    return path;
}

std::string tokenColumn(Access access)
{
    switch (access) {
    case Access::Open:
        return "no";
    case Access::Bearer:
        return "yes";
    case Access::Administrator:
        return "administrator";
    }
    return {};
}

// The rows of the endpoint table: method, path, token, limit.
std::set<std::string> documentedRoutes()
{
    std::istringstream readme(fileAt(VELTO_LOCAL_README));
    std::set<std::string> rows;
    for (std::string line; std::getline(readme, line);) {
        std::istringstream cells(line);
        std::string bar;
        std::string method;
        std::string path;
        std::string token;
        std::string limit;
        cells >> bar >> method >> bar >> path >> bar >> token >> bar >> limit;
        if (path.starts_with("`/"))
            rows.insert(method + " " + path + " " + token + " " + limit);
    }
    return rows;
}

} // namespace

TEST(Host, AnythingButLoopbackWithThePortIsMisdirected)
{
    RunningService running;
    const std::string port = std::to_string(running.visitor().port());
    const auto statusFor = [&](const std::string &headers) {
        const std::string answer = rawExchange(
            running.visitor().port(), "GET / HTTP/1.1\r\n" + headers + "Connection: close\r\n\r\n");
        return answer.substr(0, 12);
    };
    EXPECT_EQ(statusFor("Host: 127.0.0.1:" + port + "\r\n"), "HTTP/1.1 200");
    EXPECT_EQ(statusFor("Host: localhost:" + port + "\r\n"), "HTTP/1.1 200");
    EXPECT_EQ(statusFor("Host: LocalHost:" + port + "\r\n"), "HTTP/1.1 200");
    EXPECT_EQ(statusFor("Host: evil.example:" + port + "\r\n"), "HTTP/1.1 421");
    EXPECT_EQ(statusFor("Host: 127.0.0.1\r\n"), "HTTP/1.1 421");
    EXPECT_EQ(statusFor("Host: 127.0.0.1:1\r\n"), "HTTP/1.1 421");
    EXPECT_EQ(statusFor("Host: 127.0.0.1:" + port + ".evil.example\r\n"), "HTTP/1.1 421");
    EXPECT_EQ(statusFor(""), "HTTP/1.1 421");
    EXPECT_EQ(statusFor("Host: 127.0.0.1:" + port + "\r\nHost: evil.example\r\n"), "HTTP/1.1 421");
}

TEST(Host, IsCheckedBeforeTheBodyOfAPostIsRead)
{
    RunningService running;
    const std::string answer = rawExchange(
        running.visitor().port(), "POST /auth/oauth2/token HTTP/1.1\r\nHost: evil.example\r\n"
                                  "Content-Length: 1000000\r\n\r\nclient_id=");
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 421"));
    EXPECT_NE(answer.find("Connection: close"), std::string::npos);
}

TEST(Listening, IsOnLoopbackOnly)
{
    RunningService running;
    std::istringstream table(fileAt("/proc/net/tcp"));
    std::array<char, 16> hex{};
    std::snprintf(hex.data(), hex.size(), ":%04X", running.visitor().port());
    std::size_t listeners = 0;
    for (std::string line; std::getline(table, line);) {
        std::istringstream cells(line);
        std::string number;
        std::string local;
        std::string remote;
        std::string state;
        cells >> number >> local >> remote >> state;
        if (state != "0A" || !local.ends_with(hex.data()))
            continue;
        ++listeners;
        EXPECT_EQ(local, "0100007F" + std::string(hex.data()));
    }
    EXPECT_EQ(listeners, 1U);
    EXPECT_EQ(fileAt("/proc/net/tcp6").find(std::string(hex.data()) + " "), std::string::npos);
}

TEST(Routes, TableOfTheReadmeIsTheTableOfTheService)
{
    RunningService running;
    std::set<std::string> served;
    for (const Route &route : running.service().routes())
        served.insert(route.method + " `" + route.pattern + "` " + tokenColumn(route.access) + " " +
                      std::to_string(route.bodyLimit));
    EXPECT_EQ(served, documentedRoutes());
    EXPECT_EQ(served.size(), running.service().routes().size());
}

TEST(Routes, EveryMarkedOneWantsAToken)
{
    RunningService running;
    std::size_t marked = 0;
    for (const Route &route : running.service().routes()) {
        if (route.access == Access::Open)
            continue;
        ++marked;
        httplib::Request request;
        request.method = route.method;
        request.path = somePath(route);
        const auto answer = running.visitor().client().send(request);
        ASSERT_TRUE(answer) << route.pattern;
        EXPECT_EQ(answer->status, 401) << route.pattern;
    }
    EXPECT_GE(marked, 40U);
}

TEST(Routes, UnknownPathsAndMethodsAreTold)
{
    RunningService running;
    for (const char *path : {"/v1/nothing", "/v1/me/", "//v1/me", "/v1/conversations//messages",
                             "/v1/conversations/x/y/messages", "/v1/media/", "/v1"})
        EXPECT_EQ(running.visitor().get(path)->status, 404) << path;
    const auto wrong = running.visitor().client().Put(
        "/v1/conversations/x", running.visitor().bearer(), "{}", "application/json");
    ASSERT_TRUE(wrong);
    EXPECT_EQ(wrong->status, 405);
    EXPECT_EQ(wrong->get_header_value("Allow"), "DELETE, PATCH");
}

TEST(Body, BeyondTheLimitIsRefused)
{
    RunningService running;
    for (const Route &route : running.service().routes()) {
        if (route.bodyLimit == 0)
            continue;
        httplib::Request request;
        request.method = route.method;
        request.path = somePath(route);
        request.headers = running.visitor().bearer();
        request.body = std::string(route.bodyLimit + 1, 'x');
        const auto over = running.visitor().client().send(request);
        ASSERT_TRUE(over) << route.pattern;
        EXPECT_EQ(over->status, 413) << route.pattern;
        request.body.pop_back();
        const auto within = running.visitor().client().send(request);
        ASSERT_TRUE(within) << route.pattern;
        EXPECT_NE(within->status, 413) << route.pattern;
    }
}

TEST(Body, ChunkedOneIsBoundedAsWell)
{
    RunningService running;
    std::string request = "POST /auth/oauth2/token HTTP/1.1\r\nHost: localhost:" +
                          std::to_string(running.visitor().port()) +
                          "\r\nTransfer-Encoding: chunked\r\n\r\n";
    for (int i = 0; i < 40; ++i)
        request += "400\r\n" + std::string(1024, 'a') + "\r\n";
    const std::string answer = rawExchange(running.visitor().port(), request + "0\r\n\r\n");
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 413")) << answer.substr(0, 40);
}

TEST(Body, CompressedOneIsBoundedByWhatComesOut)
{
    RunningService running;
    httplib::Client client = running.visitor().client();
    client.set_compress(true);
    const auto answer = client.Post("/auth/oauth2/token", std::string(1'000'000, 'a'),
                                    "application/x-www-form-urlencoded");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 413);
}

TEST(Body, WithoutALengthIsRefused)
{
    RunningService running;
    const std::string answer =
        rawExchange(running.visitor().port(),
                    "POST /auth/oauth2/token HTTP/1.1\r\nHost: localhost:" +
                        std::to_string(running.visitor().port()) + "\r\n\r\n",
                    "\r\n\r\n");
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 411")) << answer;
}

TEST(Body, MultipartIsRefused)
{
    RunningService running;
    const auto answer = running.visitor().client().Post(
        "/auth/oauth2/token", httplib::MultipartFormDataItems{{"a", "b", "", ""}});
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 415);
}

TEST(Connections, ServeSeveralRequestsEvenWhenTheyArriveTogether)
{
    RunningService running;
    const std::string one =
        "GET / HTTP/1.1\r\nHost: localhost:" + std::to_string(running.visitor().port()) + "\r\n";
    const std::string answer = rawExchange(
        running.visitor().port(), one + "\r\n" + one + "\r\n" + one + "Connection: close\r\n\r\n");
    std::size_t count = 0;
    for (auto at = answer.find("HTTP/1.1 200"); at != std::string::npos;
         at = answer.find("HTTP/1.1 200", at + 1))
        ++count;
    EXPECT_EQ(count, 3U);
}

TEST(Connections, SixtyKeptOnesDoNotStarveFiftyMore)
{
    RunningService running;
    std::vector<std::unique_ptr<httplib::Client>> kept;
    for (int i = 0; i < 60; ++i) {
        kept.push_back(std::make_unique<httplib::Client>("127.0.0.1", running.visitor().port()));
        kept.back()->set_keep_alive(true);
        ASSERT_TRUE(kept.back()->Get("/"));
        ASSERT_TRUE(kept.back()->is_socket_open());
    }
    const auto start = std::chrono::steady_clock::now();
    std::atomic<int> good = 0;
    std::vector<std::jthread> threads;
    for (int i = 0; i < 50; ++i)
        threads.emplace_back([&] {
            const auto answer = running.visitor().get("/v1/me");
            good += answer && answer->status == 200 ? 1 : 0;
        });
    threads.clear();
    EXPECT_EQ(good, 50);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    for (const auto &client : kept)
        EXPECT_EQ(client->Get("/")->status, 200);
}

TEST(Connections, IdleOnesDoNotHoldUpTheEnd)
{
    RunningService running;
    httplib::Client client("127.0.0.1", running.visitor().port());
    client.set_keep_alive(true);
    ASSERT_TRUE(client.Get("/"));
    const auto start = std::chrono::steady_clock::now();
    running.service().stop();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST(Connections, NonsenseIsRefused)
{
    RunningService running;
    for (const std::string &bytes :
         {std::string("nonsense\r\n\r\n"), "GET " + std::string(9000, 'x') + " HTTP/1.1\r\n\r\n",
          std::string("\0\0\0\0\r\n\r\n", 8)}) {
        const std::string answer = rawExchange(running.visitor().port(), bytes, "\r\n\r\n");
        EXPECT_TRUE(answer.starts_with("HTTP/1.1 4")) << answer;
    }
    EXPECT_EQ(running.visitor().get("/v1/" + std::string(2000, 'x'))->status, 414);
    EXPECT_EQ(running.visitor().get("/v1/me%0A")->status, 400);
    EXPECT_EQ(running.visitor().get("/v1/me")->status, 200);
}

TEST(Log, HasMethodPathStatusAndTime)
{
    RunningService running;
    (void)running.visitor().client().Get("/v1/me?secret=1");
    running.waitForLog("GET /v1/me");
    const std::string start = "GET /v1/me 401 ";
    const std::vector<std::string> lines = running.log();
    const auto line = std::find_if(lines.begin(), lines.end(),
                                   [&](const auto &one) { return one.starts_with(start); });
    ASSERT_NE(line, lines.end());
    const std::string time = line->substr(start.size());
    EXPECT_TRUE(time.ends_with(" ms")) << *line;
    EXPECT_EQ(time.find_first_not_of("0123456789"), time.size() - 3) << *line;
}

TEST(Me, HasTheShapeThatTheClientReads)
{
    RunningService running;
    const json me = running.visitor().getJson("/v1/me");
    EXPECT_TRUE(me["userId"].is_string());
    EXPECT_TRUE(me["user"]["name"].is_string());
    EXPECT_TRUE(me["user"]["email"].is_string());
    ASSERT_TRUE(me["workspaces"].is_array());
    ASSERT_GE(me["workspaces"].size(), 2U);
    for (const json &workspace : me["workspaces"]) {
        for (const char *key : {"id", "slug", "name", "role"})
            EXPECT_TRUE(workspace[key].is_string()) << key;
    }
    EXPECT_EQ(me["workspaceId"], me["workspaces"][0]["id"]);
    EXPECT_TRUE(me["isAdmin"].is_boolean());
    EXPECT_TRUE(me["pendingAgreements"].is_array());
}

TEST(Conversations, AreListedNewestFirstWithinTheLimit)
{
    RunningService running;
    std::vector<std::string> ids;
    for (int i = 0; i < 4; ++i) {
        ids.insert(ids.begin(), ask(running.visitor(), "long 9").conversationId);
        running.passSeconds(i == 1 ? 0 : 1);
    }
    const auto idsOf = [](const json &rows) {
        std::vector<std::string> found;
        for (const json &row : rows)
            found.push_back(row["id"]);
        return found;
    };
    EXPECT_EQ(idsOf(running.visitor().getJson("/v1/conversations")), ids);
    EXPECT_EQ(idsOf(running.visitor().getJson("/v1/conversations?limit=2")),
              std::vector<std::string>(ids.begin(), ids.begin() + 2));
    EXPECT_EQ(running.visitor().getJson("/v1/conversations?channel=other").size(), 0U);
    for (const char *limit : {"0", "-1", "x", "1x", ""})
        EXPECT_EQ(running.visitor().get(std::string("/v1/conversations?limit=") + limit)->status,
                  400)
            << limit;
}

TEST(Conversations, CanBeRenamed)
{
    RunningService running;
    const std::string id = ask(running.visitor(), "long 9").conversationId;
    const auto patch = [&](const std::string &at, const std::string &body) {
        const auto answer = running.visitor().client().Patch(
            "/v1/conversations/" + at, running.visitor().bearer(), body, "application/json");
        return answer ? answer->status : 0;
    };
    EXPECT_EQ(patch(id, R"({"title": " Größe 日本 "})"), 200);
    EXPECT_EQ(running.visitor().getJson("/v1/conversations")[0]["title"], "Größe 日本");
    EXPECT_EQ(patch("conv_none", R"({"title": "x"})"), 404);
    EXPECT_EQ(patch(id, R"({"title": "  "})"), 400);
    EXPECT_EQ(patch(id, R"({"title": 7})"), 400);
    EXPECT_EQ(patch(id, R"({})"), 400);
    EXPECT_EQ(patch(id, "nonsense"), 400);
    EXPECT_EQ(patch(id, R"({"title": ")" + std::string(501, 'x') + "\"}"), 400);
    EXPECT_EQ(running.visitor().getJson("/v1/conversations")[0]["title"], "Größe 日本");
}

TEST(Conversations, CanBeDeleted)
{
    RunningService running;
    const std::string id = ask(running.visitor(), "long 9").conversationId;
    const std::string path = "/v1/conversations/" + id;
    // Without a Content-Length, as most clients send it.
    const std::string answer = rawExchange(
        running.visitor().port(),
        "DELETE " + path +
            " HTTP/1.1\r\nHost: localhost:" + std::to_string(running.visitor().port()) +
            "\r\nAuthorization: " + running.visitor().bearer().begin()->second + "\r\n\r\n",
        "\r\n\r\n");
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 204")) << answer;
    EXPECT_EQ(running.visitor().get(path + "/messages")->status, 404);
    EXPECT_TRUE(running.visitor().getJson("/v1/conversations").empty());
    const auto again = running.visitor().client().Delete(path, running.visitor().bearer());
    ASSERT_TRUE(again);
    EXPECT_EQ(again->status, 404);
    EXPECT_TRUE(json::parse(again->body, nullptr, false)["message"].is_string());
}

TEST(Media, IsGivenWholeWithItsType)
{
    RunningService running;
    for (const auto &[path, type] :
         std::map<std::string, std::string>{{Picture, "image/png"},
                                            {"pictures/harbour.jpg", "image/jpeg"},
                                            {"clips/tide.webm", "video/webm"}}) {
        const auto answer = media(running.visitor(), {}, path);
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, 200);
        EXPECT_EQ(answer->get_header_value("Content-Type"), type);
        EXPECT_EQ(answer->get_header_value("Accept-Ranges"), "bytes");
        EXPECT_EQ(answer->body, fileAt(std::string(VELTO_LOCAL_MEDIA) + "/" + path)) << path;
        EXPECT_FALSE(answer->body.empty());
    }
}

TEST(Media, IsGivenInSingleRanges)
{
    RunningService running;
    const std::string whole = bytesOf(Picture);
    const auto size = std::to_string(whole.size());
    const std::string last = std::to_string(whole.size() - 1);
    struct Case
    {
        std::string header;
        std::string range;
        std::string body;
    };
    const std::vector<Case> cases{
        {"bytes=0-9", "bytes 0-9/" + size, whole.substr(0, 10)},
        {"bytes=100-", "bytes 100-" + last + "/" + size, whole.substr(100)},
        {"bytes=-5", "bytes " + std::to_string(whole.size() - 5) + "-" + last + "/" + size,
         whole.substr(whole.size() - 5)},
        {"bytes=5-99999999", "bytes 5-" + last + "/" + size, whole.substr(5)},
        {"bytes=-99999999", "bytes 0-" + last + "/" + size, whole},
        {"bytes=" + last + "-" + last, "bytes " + last + "-" + last + "/" + size,
         whole.substr(whole.size() - 1)},
    };
    for (const Case &one : cases) {
        const auto answer = media(running.visitor(), {{"Range", one.header}});
        ASSERT_TRUE(answer) << one.header;
        EXPECT_EQ(answer->status, 206) << one.header;
        EXPECT_EQ(answer->get_header_value("Content-Range"), one.range);
        EXPECT_EQ(answer->body, one.body) << one.header;
    }
}

TEST(Media, RangeBeyondTheEndIsUnsatisfiable)
{
    RunningService running;
    const std::string size = std::to_string(bytesOf(Picture).size());
    for (const std::string &range : {"bytes=" + size + "-", std::string("bytes=-0")}) {
        const auto answer = media(running.visitor(), {{"Range", range}});
        ASSERT_TRUE(answer) << range;
        EXPECT_EQ(answer->status, 416);
        EXPECT_EQ(answer->get_header_value("Content-Range"), "bytes */" + size);
    }
}

TEST(Media, SeveralRangesGiveTheWhole)
{
    RunningService running;
    const auto answer = media(running.visitor(), {{"Range", "bytes=0-1,4-5"}});
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(answer->body, bytesOf(Picture));
}

TEST(Media, RangesAreReadStrictly)
{
    using Kind = RangeAnswer::Kind;
    const auto kindOf = [](std::string_view header) { return readRange(header, 100).kind; };
    EXPECT_EQ(kindOf("bytes=0-0"), Kind::Part);
    EXPECT_EQ(kindOf("bytes=5-4"), Kind::Whole);
    EXPECT_EQ(kindOf("bytes=a-4"), Kind::Whole);
    EXPECT_EQ(kindOf("bytes=-"), Kind::Whole);
    EXPECT_EQ(kindOf("lines=0-4"), Kind::Whole);
    EXPECT_EQ(kindOf("bytes=0-99999999999999999999999"), Kind::Whole);
    EXPECT_EQ(kindOf("bytes=100-"), Kind::Unsatisfiable);
    EXPECT_EQ(readRange("bytes=0-", 0).kind, Kind::Unsatisfiable);
    EXPECT_EQ(readRange("bytes=-3", 0).kind, Kind::Unsatisfiable);
}

TEST(Media, KnownVersionIsNotSentAgain)
{
    RunningService running;
    const std::string tag = media(running.visitor())->get_header_value("ETag");
    ASSERT_FALSE(tag.empty());
    for (const std::string &known : {tag, "\"other\", W/" + tag, std::string("*")}) {
        const auto answer = media(running.visitor(), {{"If-None-Match", known}});
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, 304) << known;
        EXPECT_TRUE(answer->body.empty());
        EXPECT_EQ(answer->get_header_value("ETag"), tag);
    }
    EXPECT_EQ(media(running.visitor(), {{"If-None-Match", "\"other\""}})->status, 200);
}

TEST(Media, RangeCountsOnlyForTheVersionThatIsThere)
{
    RunningService running;
    const std::string tag = media(running.visitor())->get_header_value("ETag");
    EXPECT_EQ(media(running.visitor(), {{"Range", "bytes=0-1"}, {"If-Range", tag}})->status, 206);
    EXPECT_EQ(media(running.visitor(), {{"Range", "bytes=0-1"}, {"If-Range", "\"x\""}})->status,
              200);
}

TEST(Media, HeadGivesTheSizeAndNoBytes)
{
    RunningService running;
    const auto answer = running.visitor().client().Head("/v1/media/" + std::string(Picture),
                                                        running.visitor().bearer());
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(answer->get_header_value("Content-Length"), std::to_string(bytesOf(Picture).size()));
    EXPECT_TRUE(answer->body.empty());
}

TEST(Media, PathIsANameAndNothingElse)
{
    RunningService running;
    for (const char *path :
         {"../../etc/passwd", "..%2f..%2fetc%2fpasswd", "%2e%2e/%2e%2e/etc/passwd",
          "charts/../charts/arrivals.png", "/etc/passwd", "charts", "charts/",
          "./charts/arrivals.png", "charts//arrivals.png", "charts/arrivals.png%00",
          "CHARTS/arrivals.png"}) {
        const auto answer = media(running.visitor(), {}, path);
        ASSERT_TRUE(answer) << path;
        EXPECT_TRUE(answer->status == 404 || answer->status == 400) << path << answer->status;
        EXPECT_EQ(answer->body.find("root:"), std::string::npos);
    }
}
