// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "authtest.h"
#include "service/apiclient.h"

namespace velto::auth
{
namespace
{

using base::AuthError;
using base::KeychainError;
using base::Result;
using service::Tokens;

class Refresh : public AuthTest
{
protected:
    void SetUp() override
    {
        secrets.put(QStringLiteral("stored-old-token"));
        server.on(tokenPath, test::answer(200, tokensNamed("one")));
    }
    Result<Tokens> refresh() { return test::await(client->refresh()); }
};

TEST_F(Refresh, rotatesTheStoredToken)
{
    const std::string log = printed([&] {
        const Result<Tokens> result = refresh();
        ASSERT_TRUE(result);
        EXPECT_EQ(result->accessToken, u"access-secret-one");
    });
    EXPECT_EQ(log, "[AuthClient] refresh: presenting token …ld-token\n"
                   "[AuthClient] refresh: success — rotated to …cret-one, access "
                   "expires_in=900s\n");
    EXPECT_EQ(secrets.secret(), QStringLiteral("refresh-secret-one"));
    const QMap<QString, QString> fields = form(server.requests().first());
    EXPECT_EQ(fields, (QMap<QString, QString>{
                          {QStringLiteral("grant_type"), QStringLiteral("refresh_token")},
                          {QStringLiteral("refresh_token"), QStringLiteral("stored-old-token")},
                          {QStringLiteral("client_id"), QStringLiteral("velto-apple")}}));
}

TEST_F(Refresh, tokenIsEncodedForTheForm)
{
    secrets.put(QStringLiteral("a+b/c=&d e%é"));
    ASSERT_TRUE(refresh());
    EXPECT_EQ(form(server.requests().first()).value(QStringLiteral("refresh_token")),
              QStringLiteral("a+b/c=&d e%é"));
}

TEST_F(Refresh, shortTokenIsLoggedAsItIs)
{
    secrets.put(QStringLiteral("abc"));
    const std::string log = printed([&] { EXPECT_TRUE(refresh()); });
    EXPECT_NE(log.find("presenting token …abc\n"), std::string::npos);
}

TEST_F(Refresh, withoutAStoredTokenTheSessionIsOver)
{
    test::await(tokens.deleteSecret(refreshTokenAccount));
    const std::string log =
        printed([&] { EXPECT_EQ(refresh().error(), authError(AuthError::Kind::SessionExpired)); });
    EXPECT_EQ(log, "[AuthClient] refresh: no token in Keychain → sessionExpired\n");
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(Refresh, unreadableStoreCountsAsNoTokenAndDeletesNothing)
{
    secrets.failLoads(KeychainError{KeychainError::Locked});
    EXPECT_EQ(refresh().error(), authError(AuthError::Kind::SessionExpired));
    EXPECT_EQ(secrets.removes(), 0);
    EXPECT_EQ(secrets.secret(), QStringLiteral("stored-old-token"));
}

TEST_F(Refresh, callersAtTheSameMomentShareOneRequest)
{
    const std::string log = printed([&] {
        auto first = client->refresh();
        auto second = client->refresh();
        auto third = client->refresh();
        const Result<Tokens> result = test::await(std::move(first));
        ASSERT_TRUE(result);
        EXPECT_EQ(test::await(std::move(second)), result);
        EXPECT_EQ(test::await(std::move(third)), result);
    });
    EXPECT_EQ(server.count(tokenPath), 1);
    EXPECT_EQ(secrets.loads(), 1);
    EXPECT_EQ(log, "[AuthClient] refresh: joining in-flight task\n"
                   "[AuthClient] refresh: joining in-flight task\n"
                   "[AuthClient] refresh: presenting token …ld-token\n"
                   "[AuthClient] refresh: success — rotated to …cret-one, access "
                   "expires_in=900s\n");
}

TEST_F(Refresh, joinersGetTheSameFailure)
{
    server.on(tokenPath, test::answer(503, "later"));
    auto first = client->refresh();
    auto second = client->refresh();
    const base::Failure later = authError(AuthError::Kind::Server, QStringLiteral("later"));
    EXPECT_EQ(test::await(std::move(first)).error(), later);
    EXPECT_EQ(test::await(std::move(second)).error(), later);
    EXPECT_EQ(server.count(tokenPath), 1);
}

TEST_F(Refresh, afterOneHasEndedTheNextIsNew)
{
    ASSERT_TRUE(refresh());
    server.on(tokenPath, test::answer(200, tokensNamed("two")));
    const Result<Tokens> second = refresh();
    ASSERT_TRUE(second);
    EXPECT_EQ(second->accessToken, u"access-secret-two");
    ASSERT_EQ(server.count(tokenPath), 2);
    EXPECT_EQ(form(server.requests()[1]).value(QStringLiteral("refresh_token")),
              u"refresh-secret-one");
}

TEST_F(Refresh, afterAFailureTheNextIsNew)
{
    server.script(tokenPath, {test::answer(500, "oops"), test::answer(200, tokensNamed("two"))});
    EXPECT_FALSE(refresh());
    EXPECT_TRUE(refresh());
}

TEST_F(Refresh, rejectionDeletesTheTokenWhateverTheStatus)
{
    for (const int status : {400, 401, 500}) {
        secrets.put(QStringLiteral("stored-old-token"));
        server.on(tokenPath, test::answer(status, R"({"error":"invalid_grant"})"));
        const std::string log = printed([&] {
            EXPECT_EQ(refresh().error(), authError(AuthError::Kind::SessionExpired)) << status;
        });
        EXPECT_EQ(log, "[AuthClient] refresh: presenting token …ld-token\n"
                       "[AuthClient] refresh: server rejected token — body: "
                       "{\"error\":\"invalid_grant\"}\n");
        EXPECT_EQ(secrets.secret(), std::nullopt) << status;
    }
}

TEST_F(Refresh, rejectionThatRepeatsTheTokenDoesNotPutItIntoTheLog)
{
    server.on(tokenPath, test::answer(400, "invalid_grant: stored-old-token"));
    const std::string log = printed([&] { EXPECT_FALSE(refresh()); });
    EXPECT_EQ(log.find("stored-old-token"), std::string::npos);
    EXPECT_NE(log.find("body: invalid_grant: …ld-token\n"), std::string::npos);
}

TEST_F(Refresh, otherRefusalsKeepTheToken)
{
    for (const int status : {400, 401, 500, 503}) {
        server.on(tokenPath, test::answer(status, "invalid_client"));
        EXPECT_EQ(refresh().error(),
                  authError(AuthError::Kind::Server, QStringLiteral("invalid_client")));
        EXPECT_EQ(secrets.secret(), QStringLiteral("stored-old-token"));
    }
    EXPECT_EQ(secrets.removes(), 0);
}

TEST_F(Refresh, answerThatDoesNotDecodeKeepsTheTokenEvenIfItSaysInvalidGrant)
{
    server.on(tokenPath, test::answer(200, R"({"access_token":"invalid_grant"})"));
    const Result<Tokens> result = refresh();
    ASSERT_FALSE(result);
    EXPECT_TRUE(std::holds_alternative<base::DecodingError>(result.error()));
    EXPECT_EQ(secrets.secret(), QStringLiteral("stored-old-token"));
}

TEST_F(Refresh, answerWithoutARefreshTokenKeepsTheOldOne)
{
    server.on(tokenPath,
              test::answer(200, R"({"access_token":"a","token_type":"Bearer","expires_in":1})"));
    EXPECT_FALSE(refresh());
    EXPECT_EQ(secrets.secret(), QStringLiteral("stored-old-token"));
}

TEST_F(Refresh, networkFailureKeepsTheToken)
{
    server.on(tokenPath, [](const test::RecordedRequest &, const test::Exchange &exchange) {
        exchange.reset();
    });
    const Result<Tokens> result = refresh();
    ASSERT_FALSE(result);
    EXPECT_TRUE(std::holds_alternative<base::TransportError>(result.error()));
    EXPECT_EQ(secrets.secret(), QStringLiteral("stored-old-token"));
    EXPECT_EQ(server.count(tokenPath), 1) << "a rotating token must not be presented twice";
}

TEST_F(Refresh, storeThatRefusesIsPassedOnUnchanged)
{
    secrets.failSaves(KeychainError{77});
    EXPECT_EQ(refresh().error(), base::Failure(KeychainError{77}));
    EXPECT_EQ(secrets.secret(), QStringLiteral("stored-old-token"));
}

TEST_F(Refresh, clientThatGoesEndsTheRefreshAndItsJoiners)
{
    server.on(tokenPath, [&](const test::RecordedRequest &, const test::Exchange &exchange) {
        client.reset();
        exchange.respond(200, tokensNamed("one"));
    });
    auto first = client->refresh();
    auto second = client->refresh();
    const base::Failure over = authError(AuthError::Kind::SessionExpired);
    EXPECT_EQ(test::await(std::move(first)).error(), over);
    EXPECT_EQ(test::await(std::move(second)).error(), over);
}

TEST_F(Refresh, noSecretEverReachesTheLog)
{
    const std::string log = printed([&] {
        EXPECT_TRUE(refresh());
        server.on(tokenPath, test::answer(500, "oops"));
        EXPECT_FALSE(refresh());
    });
    for (const char *secret : {"stored-old-token", "access-secret", "refresh-secret-one"})
        EXPECT_EQ(log.find(secret), std::string::npos) << secret;
}

TEST_F(Refresh, revokeSendsItsFormAndIgnoresTheAnswer)
{
    for (const int status : {200, 400, 500}) {
        server.on(revokePath, test::answer(status, "whatever"));
        EXPECT_TRUE(test::await(client->revoke(QStringLiteral("a+b&c")))) << status;
    }
    EXPECT_EQ(form(server.requests().first()),
              (QMap<QString, QString>{
                  {QStringLiteral("token"), QStringLiteral("a+b&c")},
                  {QStringLiteral("token_type_hint"), QStringLiteral("refresh_token")},
                  {QStringLiteral("client_id"), QStringLiteral("velto-apple")}}));
}

TEST_F(Refresh, revokeReportsATransportFailure)
{
    server.on(revokePath, [](const test::RecordedRequest &, const test::Exchange &exchange) {
        exchange.reset();
    });
    const Result<void> result = test::await(client->revoke(QStringLiteral("a")));
    ASSERT_FALSE(result);
    EXPECT_TRUE(std::holds_alternative<base::TransportError>(result.error()));
}

TEST_F(Refresh, fiftyRequestsThatMeet401TogetherMakeOneTokenRequestAndFiftyRetries)
{
    // The first 50 are held until all have come, so that they meet their 401 together.
    QList<test::Exchange> held;
    server.on("/v1/thing",
              [&](const test::RecordedRequest &request, const test::Exchange &exchange) {
                  if (request.header("authorization") == "Bearer access-secret-one") {
                      exchange.respond(200, "ok");
                      return;
                  }
                  held.append(exchange);
                  if (held.size() < 50)
                      return;
                  for (const test::Exchange &waiting : std::as_const(held))
                      waiting.respond(401);
              });
    service::APIClient api(transport, *client, server.url());
    api.setAccessToken(QStringLiteral("expired"));
    std::vector<QCoro::Task<Result<QByteArray>>> running;
    for (int i = 0; i < 50; ++i)
        running.push_back(api.send("GET", QStringLiteral("/v1/thing")));
    for (auto &task : running) {
        const Result<QByteArray> body = test::await(std::move(task));
        ASSERT_TRUE(body);
        EXPECT_EQ(*body, "ok");
    }
    EXPECT_EQ(server.count(tokenPath), 1);
    EXPECT_EQ(server.count("/v1/thing"), 100);
    EXPECT_EQ(api.accessToken(), QStringLiteral("access-secret-one"));
}

} // namespace
} // namespace velto::auth
