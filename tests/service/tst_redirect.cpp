// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/redirect.h"
#include "transporttest.h"

namespace velto::service
{
namespace
{

using test::answer;

/// Where the second hop leads, seen from the first.
enum class Where { SameOrigin, OtherName, OtherPort, BackAgain };

using Case = std::tuple<int, const char *, Where>;

class Matrix : public testing::TestWithParam<Case>
{
protected:
    [[nodiscard]] static int status() { return std::get<0>(GetParam()); }
    [[nodiscard]] static QByteArray method() { return std::get<1>(GetParam()); }
    [[nodiscard]] static Where where() { return std::get<2>(GetParam()); }

    /// Makes "/start" lead to "/end" by the road of the case.
    void lay()
    {
        const QUrl end = m_first.url(QStringLiteral("/end"));
        switch (where()) {
        case Where::SameOrigin:
            return link(m_first, "/start", end);
        case Where::OtherName:
            return link(m_first, "/start",
                        m_first.url(QStringLiteral("/end"), QStringLiteral("localhost")));
        case Where::OtherPort:
            return link(m_first, "/start", m_second.url(QStringLiteral("/end")));
        case Where::BackAgain:
            link(m_first, "/start", m_second.url(QStringLiteral("/middle")));
            return link(m_second, "/middle", end);
        }
    }

    void link(test::ScriptedServer &server, const QByteArray &path, const QUrl &target)
    {
        server.on(path, answer(status(), "moved", {{"Location", target.toEncoded()}}));
    }

    test::ScriptedServer m_first;
    test::ScriptedServer m_second;
    Transport m_transport;
};

TEST_P(Matrix, MethodBodyAndAuthorizationFollowTheRule)
{
    lay();
    for (test::ScriptedServer *server : {&m_first, &m_second})
        server->on("/end", answer(200, "end"));
    const bool sendsBody = method() != "GET";
    HTTPRequest request = requestTo(m_first.url(QStringLiteral("/start")), method());
    request.headers = {{"Authorization", "Bearer secret"}, {"X-Kept", "1"}};
    if (sendsBody) {
        request.body = "body";
        request.headers.emplaceBack("Content-Type", "text/x");
    }
    const auto response = test::await(m_transport.send(request));
    ASSERT_TRUE(response);
    EXPECT_EQ(response->body, "end");
    EXPECT_EQ(response->head.url.path(), QStringLiteral("/end"));

    const test::RecordedRequest last =
        (where() == Where::OtherPort ? m_second : m_first).requests().last();
    const bool becomesGet =
        method() == "GET" || status() == 303 || (method() == "POST" && status() <= 302);
    EXPECT_EQ(last.target, "/end");
    EXPECT_EQ(last.method, becomesGet ? "GET" : method());
    EXPECT_EQ(last.body, becomesGet ? "" : "body");
    EXPECT_EQ(last.header("Content-Type").has_value(), !becomesGet);
    EXPECT_EQ(last.header("Content-Length").has_value(), !becomesGet);
    EXPECT_EQ(last.header("X-Kept"), "1");
    EXPECT_EQ(last.header("Authorization").has_value(), where() == Where::SameOrigin);
    EXPECT_EQ(m_first.requests().first().header("Authorization"), "Bearer secret");
    for (const test::RecordedRequest &foreign : m_second.requests())
        EXPECT_EQ(foreign.header("Authorization"), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(All, Matrix,
                         testing::Combine(testing::Values(301, 302, 303, 307, 308),
                                          testing::Values("GET", "POST", "PUT", "DELETE"),
                                          testing::Values(Where::SameOrigin, Where::OtherName,
                                                          Where::OtherPort, Where::BackAgain)));

TEST_F(TransportTest, ARedirectMayBeRelative)
{
    const QList<std::pair<QByteArray, QByteArray>> rows{{"next", "/a/next"},
                                                        {"/root", "/root"},
                                                        {"../up?q=1", "/up?q=1"},
                                                        {"?only=q", "/a/b?only=q"}};
    for (const auto &[location, target] : rows) {
        m_server.on("/a/b", [location = location](const test::RecordedRequest &request,
                                                  const test::Exchange &exchange) {
            if (request.target == "/a/b")
                exchange.respond(302, {}, {{"Location", location}});
            else
                exchange.respond(200);
        });
        ASSERT_TRUE(send(requestTo(m_server.url(QStringLiteral("/a/b")))));
        EXPECT_EQ(m_server.requests().last().target, target);
    }
}

TEST_F(TransportTest, ARedirectWithoutAPlaceIsAnAnswer)
{
    m_server.on("/a", answer(302, "nowhere"));
    const auto response = send(requestTo(m_server.url(QStringLiteral("/a"))));
    ASSERT_TRUE(response);
    EXPECT_EQ(response->head.status, 302);
    EXPECT_EQ(response->body, "nowhere");
}

TEST_F(TransportTest, OtherStatusesWithAPlaceAreAnswers)
{
    for (const int status : {200, 201, 300, 304, 305, 306, 400}) {
        m_server.on("/a", answer(status, {}, {{"Location", "/b"}}));
        const auto response = send(requestTo(m_server.url(QStringLiteral("/a"))));
        ASSERT_TRUE(response) << status;
        EXPECT_EQ(response->head.status, status);
    }
    EXPECT_EQ(m_server.count("/b"), 0);
}

TEST_F(TransportTest, ARedirectWhoseBodyNeverEndsIsFollowed)
{
    m_server.on("/a", [](const test::RecordedRequest &, const test::Exchange &exchange) {
        exchange.beginStream(302, {{"Location", "/b"}});
        exchange.send("and so on");
    });
    m_server.on("/b", answer(200, "b"));
    const auto response = send(requestTo(m_server.url(QStringLiteral("/a"))));
    ASSERT_TRUE(response);
    EXPECT_EQ(response->body, "b");
}

TEST_F(TransportTest, TwentyRedirectsAreFollowedAndNoMore)
{
    for (int i = 0; i <= 21; ++i)
        m_server.on('/' + QByteArray::number(i),
                    answer(302, {}, {{"Location", '/' + QByteArray::number(i + 1)}}));
    m_server.on("/20", answer(200, "there"));
    ASSERT_EQ(send(requestTo(m_server.url(QStringLiteral("/0")))).value().body, "there");
    EXPECT_EQ(m_server.requests().size(), 21);

    m_server.on("/20", answer(302, {}, {{"Location", "/21"}}));
    EXPECT_EQ(kindOf(send(requestTo(m_server.url(QStringLiteral("/0"))))), Kind::TooManyRedirects);
    EXPECT_EQ(m_server.requests().size(), 42);
    EXPECT_EQ(m_server.count("/21"), 0);
}

TEST_F(TransportTest, ARedirectOutOfTheWebIsRefused)
{
    for (const char *place :
         {"file:///etc/hostname", "ftp://127.0.0.1/", "http://h:99999/", "javascript:alert(1)"}) {
        m_server.on("/a", answer(302, {}, {{"Location", place}}));
        EXPECT_EQ(kindOf(send(requestTo(m_server.url(QStringLiteral("/a"))))), Kind::BadURL)
            << place;
    }
}

HTTPHead movedTo(const QByteArray &place)
{
    HTTPHead head;
    head.status = 302;
    head.headers = {{"location", place}};
    return head;
}

const QUrl secure(QStringLiteral("https://a.example/x"));

TEST(NextHop, NeverLeadsFromHttpsToHttp)
{
    const auto next = nextHop(requestTo(secure), secure, movedTo("http://a.example/y"));
    ASSERT_FALSE(next);
    EXPECT_EQ(std::get<base::TransportError>(next.error()).kind, Kind::InsecureRedirect);
}

TEST(NextHop, MayLeadFromHttpToHttpsWithoutTheToken)
{
    HTTPRequest request = requestTo(QUrl(QStringLiteral("http://a.example/x")));
    request.headers = {{"AUTHORIZATION", "Bearer t"}};
    const auto next = nextHop(request, request.url, movedTo("https://a.example/y"));
    ASSERT_TRUE(next && *next);
    EXPECT_EQ((**next).url, QUrl(QStringLiteral("https://a.example/y")));
    EXPECT_TRUE((**next).headers.isEmpty());
}

TEST(SameOrigin, ComparesSchemeHostAndPort)
{
    const auto same = [](const char *a, const char *b) {
        return isSameOrigin(QUrl(QLatin1StringView(a)), QUrl(QLatin1StringView(b)));
    };
    EXPECT_TRUE(same("https://a.example/x", "https://A.example:443/y?z"));
    EXPECT_TRUE(same("http://a.example", "http://a.example:80"));
    EXPECT_FALSE(same("http://a.example", "https://a.example"));
    EXPECT_FALSE(same("http://a.example", "http://b.a.example"));
    EXPECT_FALSE(same("http://a.example", "http://a.example:81"));
    EXPECT_FALSE(same("https://a.example", "https://a.example.evil"));
}

} // namespace
} // namespace velto::service
