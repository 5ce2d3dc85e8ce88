// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "apiclienttest.h"
#include "rawserver.h"

namespace velto::service
{
namespace
{

using base::APIError;
using base::AuthError;
using base::DecodingError;
using test::answer;
using test::await;

const QString path = QStringLiteral("/v1/x");

/// Answers 401 to the token "old" and 200 to every other.
test::ScriptedServer::Handler freshTokensOnly()
{
    return [](const test::RecordedRequest &request, const test::Exchange &exchange) {
        exchange.respond(request.header("Authorization") == "Bearer old" ? 401 : 200, "{}");
    };
}

TEST_F(APIClientTest, ARequestCarriesTheTokenAndNothingElse)
{
    m_server.on("/v1/x", answer(200, "ok"));
    const auto response = await(m_api.request("GET", path));
    ASSERT_TRUE(response);
    EXPECT_EQ(response->body, "ok");
    EXPECT_EQ(last().method, "GET");
    EXPECT_EQ(last().target, "/v1/x") << "the path of the base URL is replaced";
    EXPECT_EQ(last().header("Authorization"), "Bearer old");
    EXPECT_EQ(last().headers.size(), 2) << "Host and Authorization";
    EXPECT_EQ(last().body, "");
}

TEST_F(APIClientTest, ABodyIsJSONUnlessSaidOtherwise)
{
    m_server.on("/v1/x", answer(200));
    const QByteArray body = "{}";
    ASSERT_TRUE(await(m_api.request("PUT", path, body)));
    EXPECT_EQ(last().header("Content-Type"), "application/json");
    EXPECT_EQ(last().body, "{}");
    ASSERT_TRUE(await(m_api.request("PUT", path, body, QByteArray("text/plain"))));
    EXPECT_EQ(last().header("Content-Type"), "text/plain");
    ASSERT_TRUE(await(m_api.request("POST", path, {}, QByteArray("text/plain"))));
    EXPECT_EQ(last().header("Content-Type"), std::nullopt);
}

TEST_F(APIClientTest, TheTimeoutIsAMinuteOfSilence)
{
    EXPECT_EQ(m_api.build("GET", path, {}, {}).value().timeout, std::chrono::seconds(60));
}

TEST_F(APIClientTest, EveryStatusIsAnAnswerOfRequest)
{
    for (const int status : {200, 204, 302, 400, 403, 404, 500}) {
        m_server.on("/v1/x", answer(status));
        EXPECT_EQ(await(m_api.request("GET", path)).value().head.status, status);
    }
    EXPECT_EQ(m_auth.calls, 0);
}

TEST_F(APIClientTest, A401IsRefreshedAndAskedAgainOnce)
{
    m_server.on("/v1/x", freshTokensOnly());
    const auto response =
        await(m_api.request("POST", path, QByteArray("body"), QByteArray("text/x")));
    EXPECT_EQ(response.value().head.status, 200);
    EXPECT_EQ(m_auth.calls, 1);
    EXPECT_EQ(m_api.accessToken(), QStringLiteral("fresh-1"));
    ASSERT_EQ(m_server.requests().size(), 2);
    EXPECT_EQ(last().header("Authorization"), "Bearer fresh-1");
    EXPECT_EQ(last().method, "POST");
    EXPECT_EQ(last().target, "/v1/x");
    EXPECT_EQ(last().body, "body");
    EXPECT_EQ(last().header("Content-Type"), "text/x");
}

TEST_F(APIClientTest, ASecond401IsTheCallersAffair)
{
    m_server.on("/v1/x", answer(401, " denied\n"));
    m_server.on("/v1/me", answer(401, "denied"));
    EXPECT_EQ(await(m_api.request("GET", path)).value().head.status, 401);
    EXPECT_EQ(m_auth.calls, 1);
    EXPECT_EQ(m_server.requests().size(), 2);

    const auto sent = await(m_api.send("GET", path));
    ASSERT_NE(failureOf<APIError>(sent), nullptr);
    EXPECT_EQ(*failureOf<APIError>(sent), (APIError{401, QStringLiteral("denied")}));
    EXPECT_NE(failureOf<DecodingError>(await(m_api.fetchMe())), nullptr);
    EXPECT_EQ(m_auth.calls, 3);
}

TEST_F(APIClientTest, ARefreshThatFailsIsTheFailureAndTheTokenStays)
{
    m_server.on("/v1/x", answer(401));
    m_auth.failure = AuthError{AuthError::Kind::SessionExpired, {}};
    const auto response = await(m_api.send("GET", path));
    ASSERT_NE(failureOf<AuthError>(response), nullptr);
    EXPECT_EQ(failureOf<AuthError>(response)->kind, AuthError::Kind::SessionExpired);
    EXPECT_EQ(m_api.accessToken(), QStringLiteral("old"));
    EXPECT_EQ(m_server.requests().size(), 1);
}

TEST_F(APIClientTest, ASignedOutClientAsksWithoutATokenAndThenForOne)
{
    m_server.on("/v1/x", answer(401));
    m_api.setAccessToken(std::nullopt);
    m_auth.failure = AuthError{AuthError::Kind::SessionExpired, {}};
    const auto response = await(m_api.request("GET", path));
    EXPECT_NE(failureOf<AuthError>(response), nullptr);
    ASSERT_EQ(m_server.requests().size(), 1);
    EXPECT_EQ(last().header("Authorization"), std::nullopt);
    EXPECT_EQ(m_auth.calls, 1);
}

TEST_F(APIClientTest, FiftyRequestsThatMeet401AskFiftyTimesAndAreRepeatedOnceEach)
{
    QList<test::Exchange> refused;
    int repeated = 0;
    m_server.on("/v1/x", [&](const test::RecordedRequest &request, const test::Exchange &exchange) {
        if (request.header("Authorization") != "Bearer old") {
            ++repeated;
            return exchange.respond(200, "ok");
        }
        refused.append(exchange);
        if (refused.size() == 50) {
            for (const test::Exchange &one : refused)
                one.respond(401);
        }
    });
    std::vector<QCoro::Task<base::Result<QByteArray>>> tasks;
    for (int i = 0; i < 50; ++i)
        tasks.push_back(m_api.send("GET", path));
    for (auto &task : tasks)
        EXPECT_EQ(await(std::move(task)).value(), "ok");
    EXPECT_EQ(m_auth.calls, 50);
    EXPECT_EQ(repeated, 50);
    EXPECT_EQ(m_server.requests().size(), 100);
}

TEST_F(APIClientTest, APathThatDoesNotResolveIsABadURL)
{
    for (const char *bad : {"v1/x", "/v1/a b", "//evil.example/v1", ""})
        EXPECT_EQ(kindOf(await(m_api.request("GET", QLatin1StringView(bad)))), Kind::BadURL) << bad;
    EXPECT_TRUE(m_server.requests().isEmpty());
}

TEST_F(APIClientTest, ATransportFailureComesThroughUnchanged)
{
    m_server.on("/v1/x", [](const auto &, const test::Exchange &exchange) { exchange.reset(); });
    EXPECT_EQ(kindOf(await(m_api.send("POST", path))), Kind::ConnectionLost);
    EXPECT_EQ(m_server.count("/v1/x"), 1);
    EXPECT_EQ(m_auth.calls, 0);
}

TEST_F(APIClientTest, AnAnswerThatIsNotHTTPIsABadServerResponse)
{
    const test::RawServer server{QByteArray("SSH-2.0-x\r\n")};
    APIClient api(m_transport, m_auth, server.url());
    EXPECT_EQ(kindOf(await(api.request("GET", path))), Kind::BadServerResponse);
}

TEST_F(APIClientTest, ASecondAnswerThatIsNotHTTPIsABadServerResponse)
{
    m_server.script("/v1/x", {answer(401), [](const auto &, const test::Exchange &exchange) {
                                  exchange.send("SSH-2.0-x\r\n");
                                  exchange.close();
                              }});
    EXPECT_EQ(kindOf(await(m_api.request("POST", path))), Kind::BadServerResponse);
    EXPECT_EQ(m_auth.calls, 1);
    EXPECT_EQ(m_server.requests().size(), 2);
}

TEST_F(APIClientTest, SendGivesTheBodyOfASuccess)
{
    for (const int status : {200, 201, 299}) {
        m_server.on("/v1/x", answer(status, " body "));
        EXPECT_EQ(await(m_api.send("GET", path)).value(), " body ");
    }
}

struct ErrorBody
{
    int status;
    QByteArray body;
    QString text;
    QString description;
};

class SendErrors : public APIClientTest, public testing::WithParamInterface<ErrorBody>
{};

TEST_P(SendErrors, CarryTheStatusAndTheTrimmedText)
{
    m_server.on("/v1/x", answer(GetParam().status, GetParam().body));
    const auto sent = await(m_api.send("GET", path));
    ASSERT_NE(failureOf<APIError>(sent), nullptr);
    EXPECT_EQ(*failureOf<APIError>(sent), (APIError{GetParam().status, GetParam().text}));
    EXPECT_EQ(base::description(sent.error()), GetParam().description);
}

INSTANTIATE_TEST_SUITE_P(
    All, SendErrors,
    testing::Values(ErrorBody{500, "\n boom \t", QStringLiteral("boom"),
                              QStringLiteral("Request failed (HTTP 500): boom")},
                    ErrorBody{503, "", QString(), QStringLiteral("Request failed (HTTP 503)")},
                    ErrorBody{503, " \n", QString(), QStringLiteral("Request failed (HTTP 503)")},
                    ErrorBody{503, "\xff\xfe", QStringLiteral("<no body>"),
                              QStringLiteral("Request failed (HTTP 503)")},
                    ErrorBody{300, "x", QStringLiteral("x"),
                              QStringLiteral("Request failed (HTTP 300): x")},
                    ErrorBody{404, "{\"error\":\"ü\"}", QStringLiteral("{\"error\":\"ü\"}"),
                              QStringLiteral("Request failed (HTTP 404): {\"error\":\"ü\"}")}));

struct Nested
{
    std::optional<double> firstValue;
    QString otherText;

    static base::json::Fields jsonFields()
    {
        using base::json::field;
        static constexpr std::array fields{field<&Nested::firstValue>("firstValue"),
                                           field<&Nested::otherText>("otherText")};
        return fields;
    }
};

TEST_F(APIClientTest, SendJSONWritesSnakeCase)
{
    m_server.on("/v1/x", answer(200, "not read"));
    const Nested value{{}, QStringLiteral("t")};
    EXPECT_TRUE(await(m_api.sendJSON("PATCH", path, value)));
    EXPECT_EQ(last().body, R"({"other_text":"t"})");
    EXPECT_EQ(last().header("Content-Type"), "application/json");
    m_server.on("/v1/x", answer(409, "taken"));
    EXPECT_NE(failureOf<APIError>(await(m_api.sendJSON("PATCH", path, value))), nullptr);
}

TEST_F(APIClientTest, WhatCannotBeWrittenNeverLeaves)
{
    const Nested value{std::numeric_limits<double>::infinity(), {}};
    const auto sent = await(m_api.sendJSON("PATCH", path, value));
    EXPECT_NE(failureOf<base::EncodingError>(sent), nullptr);
    EXPECT_TRUE(m_server.requests().isEmpty());
}

TEST_F(APIClientTest, SendEndsWhenItIsStopped)
{
    std::optional<test::Exchange> pending;
    m_server.on("/v1/x", [&](const auto &, const test::Exchange &exchange) { pending = exchange; });
    std::stop_source stop;
    QCoro::Task<base::Result<QByteArray>> reading =
        m_api.send("GET", path, {}, {}, stop.get_token());
    ASSERT_TRUE(test::waitUntil([&] { return pending.has_value(); }));
    stop.request_stop();
    const auto stopped = await(std::move(reading));
    ASSERT_FALSE(stopped);
    EXPECT_TRUE(base::isCancellation(stopped.error()));
    EXPECT_TRUE(test::waitUntil([&] { return !pending->isOpen(); }));
}

TEST_F(APIClientTest, StoppingSparesTheRefreshThatOthersShare)
{
    std::stop_source stop;
    m_server.on("/v1/x",
                [&](const auto &, const test::Exchange &exchange) { exchange.respond(401); });
    QCoro::Task<base::Result<QByteArray>> reading =
        m_api.send("GET", path, {}, {}, stop.get_token());
    m_auth.onRefresh = [&] { stop.request_stop(); };
    const auto stopped = await(std::move(reading));
    ASSERT_FALSE(stopped);
    EXPECT_TRUE(base::isCancellation(stopped.error()));
    EXPECT_EQ(m_api.accessToken(), QStringLiteral("fresh-1"));
    EXPECT_EQ(m_server.requests().size(), 1);
}

TEST_F(APIClientTest, TheTokenReachesNoOtherOriginByARedirect)
{
    test::ScriptedServer foreign;
    foreign.on("/x", answer(200, "ok"));
    m_server.on("/v1/x",
                answer(302, {}, {{"Location", foreign.url(QStringLiteral("/x")).toEncoded()}}));
    EXPECT_EQ(await(m_api.send("GET", path)).value(), "ok");
    EXPECT_EQ(foreign.requests().first().header("Authorization"), std::nullopt);
}

} // namespace
} // namespace velto::service
