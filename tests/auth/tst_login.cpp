// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "auth/pkce.h"
#include "authtest.h"

#include <QRegularExpression>

#include <sys/resource.h>
#include <unistd.h>

namespace velto::auth
{
namespace
{

using namespace std::chrono_literals;
using base::AuthError;
using base::KeychainError;
using base::LoopbackError;
using base::Result;
using service::Tokens;

const base::Failure timedOut(LoopbackError{LoopbackError::Kind::TimedOut});

class Login : public AuthTest
{
protected:
    void SetUp() override
    {
        server.on(tokenPath, test::answer(200, tokensNamed("login")));
        browser = [this](const QUrl &page) {
            pages.append(page);
            return visitPage(page);
        };
    }
    Result<Tokens> login() { return test::await(client->login()); }
    quint16 port() const { return static_cast<quint16>(redirectURI(pages.last()).port()); }

    QList<QUrl> pages;
    BrowserDouble::Behaviour visitPage = [this](const QUrl &page) { return approve(page); };
};

TEST_F(Login, givesTheTokensAndStoresTheRefreshToken)
{
    const Result<Tokens> result = login();
    ASSERT_TRUE(result);
    EXPECT_EQ(*result, (Tokens{QStringLiteral("access-secret-login"), QStringLiteral("Bearer"), 900,
                               QStringLiteral("refresh-secret-login")}));
    EXPECT_EQ(secrets.secret(), QStringLiteral("refresh-secret-login"));
    EXPECT_FALSE(canConnect(port()));
}

TEST_F(Login, authorizeURLHoldsItsItemsInOrder)
{
    ASSERT_TRUE(login());
    const QByteArray url = pages.first().toEncoded();
    const QRegularExpression shape(QStringLiteral(
        "\\Ahttp://127\\.0\\.0\\.1:\\d+/prefix/auth/oauth2/authorize\\?response_type=code"
        "&client_id=velto-apple&redirect_uri=http://127\\.0\\.0\\.1:\\d+/callback"
        "&code_challenge=[A-Za-z0-9_-]{43}&code_challenge_method=S256"
        "&scope=openid%20profile%20email%20offline_access&state=[A-Za-z0-9_-]{86}\\z"));
    EXPECT_TRUE(shape.match(QString::fromLatin1(url)).hasMatch()) << url.toStdString();
    EXPECT_FALSE(url.contains('+'));
}

TEST_F(Login, tokenRequestHoldsTheCodeItsVerifierAndTheSameRedirectURI)
{
    visitPage = [this](const QUrl &page) { return approve(page, "a%26b%3Dc%2Bd%20%C3%A9+f"); };
    ASSERT_TRUE(login());
    ASSERT_EQ(server.count(tokenPath), 1);
    const QMap<QString, QString> fields = form(server.requests().first());
    EXPECT_EQ(fields.size(), 5);
    EXPECT_EQ(fields.value(QStringLiteral("grant_type")), u"authorization_code");
    EXPECT_EQ(fields.value(QStringLiteral("code")), QStringLiteral("a&b=c+d é+f"));
    EXPECT_EQ(fields.value(QStringLiteral("client_id")), u"velto-apple");
    EXPECT_EQ(fields.value(QStringLiteral("redirect_uri")), redirectURI(pages.first()).toString());
    const QString verifier = fields.value(QStringLiteral("code_verifier"));
    EXPECT_EQ(verifier.size(), 86);
    EXPECT_EQ(codeChallenge(verifier),
              QUrlQuery(pages.first()).queryItemValue(QStringLiteral("code_challenge")));
    EXPECT_NE(verifier.toLatin1(), state(pages.first()));
}

TEST_F(Login, everyLoginDrawsItsOwnSecrets)
{
    ASSERT_TRUE(login());
    ASSERT_TRUE(login());
    EXPECT_NE(state(pages[0]), state(pages[1]));
    EXPECT_NE(form(server.requests()[0]).value(QStringLiteral("code_verifier")),
              form(server.requests()[1]).value(QStringLiteral("code_verifier")));
}

TEST_F(Login, logsItsSuccessAndNoSecret)
{
    const std::string log = printed([&] { EXPECT_TRUE(login()); });
    EXPECT_EQ(log, "[AuthClient] login: success — stored refresh …et-login, access "
                   "expires_in=900s\n");
    EXPECT_EQ(log.find("refresh-secret-login"), std::string::npos);
}

TEST_F(Login, redirectWithoutCodeIsAMissingCodeEvenWithAWrongState)
{
    for (const QByteArray &query : {QByteArray(), QByteArray("?state=wrong"), QByteArray("?code=x"),
                                    QByteArray("?error=access_denied&state=wrong")}) {
        visitPage = [&](const QUrl &page) { return redirect(page, query), true; };
        const Result<Tokens> result = login();
        ASSERT_FALSE(result) << query.toStdString();
        EXPECT_EQ(result.error(), authError(AuthError::Kind::MissingCode)) << query.toStdString();
        EXPECT_FALSE(canConnect(port()));
    }
    visitPage = [this](const QUrl &page) { return redirect(page, "?state=" + state(page)), true; };
    EXPECT_EQ(login().error(), authError(AuthError::Kind::MissingCode));
    EXPECT_EQ(server.count(tokenPath), 0);
}

TEST_F(Login, wrongStateSendsNoTokenRequest)
{
    visitPage = [this](const QUrl &page) {
        return redirect(page, "?code=x&state=" + state(page) + "x"), true;
    };
    const std::string log =
        printed([&] { EXPECT_EQ(login().error(), authError(AuthError::Kind::StateMismatch)); });
    EXPECT_EQ(log, "");
    EXPECT_TRUE(server.requests().isEmpty());
    EXPECT_FALSE(canConnect(port()));
    EXPECT_EQ(secrets.secret(), std::nullopt);
}

TEST_F(Login, firstOfSeveralItemsOfANameCounts)
{
    visitPage = [this](const QUrl &page) {
        return redirect(page, "?state=" + state(page) + "&state=x&code=one&code=two"), true;
    };
    ASSERT_TRUE(login());
    EXPECT_EQ(form(server.requests().first()).value(QStringLiteral("code")), u"one");
}

TEST_F(Login, iconRequestLeavesTheLoginWaiting)
{
    std::shared_ptr<QByteArray> icon;
    visitPage = [&](const QUrl &page) {
        icon = visit(static_cast<quint16>(redirectURI(page).port()), "/favicon.ico");
        return true;
    };
    auto running = client->login();
    ASSERT_TRUE(test::waitUntil([&] { return icon && icon->endsWith("</title>"); }));
    EXPECT_TRUE(icon->startsWith("HTTP/1.1 404 Not Found\r\n"));
    EXPECT_FALSE(running.isReady());
    approve(pages.first());
    EXPECT_TRUE(test::await(std::move(running)));
}

TEST_F(Login, secondCallbackGetsThePageWhileTheTokenRequestRuns)
{
    std::optional<test::Exchange> exchange;
    server.on(tokenPath,
              [&](const test::RecordedRequest &, test::Exchange open) { exchange = open; });
    auto running = client->login();
    ASSERT_TRUE(test::waitUntil([&] { return exchange.has_value(); }));
    const auto page = redirect(pages.first(), "?code=other&state=other");
    ASSERT_TRUE(test::waitUntil([&] { return page->endsWith("</html>"); }));
    EXPECT_TRUE(page->startsWith("HTTP/1.1 200 OK\r\n"));
    exchange->respond(200, tokensNamed("login"));
    EXPECT_TRUE(test::await(std::move(running)));
    EXPECT_EQ(server.count(tokenPath), 1);
}

TEST_F(Login, noRedirectInTimeIsATimeOutAndClosesThePort)
{
    visitPage = [](const QUrl &) { return true; };
    client->setLoginTimeout(5ms);
    const Result<Tokens> result = login();
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), timedOut);
    EXPECT_FALSE(canConnect(port()));
}

TEST_F(Login, timeOutAndRedirectRacingEndTheLoginOnce)
{
    for (int i = 0; i < 20; ++i) {
        client->setLoginTimeout(std::chrono::milliseconds(i % 4));
        const Result<Tokens> result = login();
        EXPECT_TRUE(result || result.error() == timedOut);
    }
}

TEST_F(Login, browserThatCannotOpenEndsTheLogin)
{
    visitPage = [](const QUrl &) { return false; };
    const Result<Tokens> result = login();
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), authError(AuthError::Kind::Server,
                                        QStringLiteral("Could not open the default browser.")));
    EXPECT_EQ(base::description(result.error()),
              u"Server error: Could not open the default browser.");
    EXPECT_FALSE(canConnect(port()));
}

TEST_F(Login, machineWithoutAPortFailsBeforeTheBrowserOpens)
{
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const int next = ::dup(0);
    ASSERT_GE(next, 0);
    ::close(next);
    rlimit none = before;
    none.rlim_cur = static_cast<rlim_t>(next);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    auto running = client->login();
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    const Result<Tokens> result = test::await(std::move(running));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), base::Failure(LoopbackError{LoopbackError::Kind::NoPort}));
    EXPECT_TRUE(pages.isEmpty());
}

TEST_F(Login, refusedCodeGivesTheServersWordsAndStoresNothing)
{
    for (const int status : {400, 201, 204, 500}) {
        server.on(tokenPath, test::answer(status, status == 204 ? "" : "no such code"));
        const Result<Tokens> result = login();
        ASSERT_FALSE(result) << status;
        EXPECT_EQ(result.error(),
                  authError(AuthError::Kind::Server,
                            status == 204 ? QString() : QStringLiteral("no such code")));
    }
    server.on(tokenPath, test::answer(400, "\xff\xfe"));
    EXPECT_EQ(login().error(), authError(AuthError::Kind::Server, QStringLiteral("unknown")));
    EXPECT_EQ(secrets.secret(), std::nullopt);
}

TEST_F(Login, answerWithoutARefreshTokenIsADecodingFailure)
{
    server.on(tokenPath,
              test::answer(200, R"({"access_token":"a","token_type":"Bearer","expires_in":1})"));
    const Result<Tokens> result = login();
    ASSERT_FALSE(result);
    EXPECT_TRUE(std::holds_alternative<base::DecodingError>(result.error()));
    EXPECT_EQ(secrets.secret(), std::nullopt);
}

TEST_F(Login, storeThatRefusesEndsTheLoginWithoutALogLine)
{
    secrets.failSaves(KeychainError{KeychainError::NoService});
    const std::string log = printed([&] {
        EXPECT_EQ(login().error(), base::Failure(KeychainError{KeychainError::NoService}));
    });
    EXPECT_EQ(log, "");
    EXPECT_FALSE(canConnect(port()));
}

TEST_F(Login, unreachableServiceIsATransportFailure)
{
    AuthClient lost(transport, tokens, opener, QUrl(QStringLiteral("http://127.0.0.1:1")));
    const Result<Tokens> result = test::await(lost.login());
    ASSERT_FALSE(result);
    EXPECT_TRUE(std::holds_alternative<base::TransportError>(result.error()));
}

TEST_F(Login, secondLoginTakesThePlaceOfTheFirst)
{
    visitPage = [](const QUrl &) { return true; };
    auto first = client->login();
    auto second = client->login();
    EXPECT_EQ(test::await(std::move(first)).error(), timedOut);
    EXPECT_FALSE(canConnect(static_cast<quint16>(redirectURI(pages[0]).port())));
    approve(pages[1]);
    EXPECT_TRUE(test::await(std::move(second)));
}

TEST_F(Login, clientThatGoesWhileTheBrowserIsOpenEndsTheLogin)
{
    visitPage = [](const QUrl &) { return true; };
    auto running = client->login();
    client.reset();
    EXPECT_EQ(test::await(std::move(running)).error(), timedOut);
    EXPECT_FALSE(canConnect(port()));
}

TEST_F(Login, clientThatGoesDuringTheTokenRequestStoresNothing)
{
    server.on(tokenPath, [&](const test::RecordedRequest &, const test::Exchange &exchange) {
        client.reset();
        exchange.respond(200, tokensNamed("login"));
    });
    EXPECT_EQ(login().error(), authError(AuthError::Kind::SessionExpired));
    EXPECT_EQ(secrets.secret(), std::nullopt);
}

/// Approves the page and stays in the foreground.
class ForegroundBrowser final : public platform::URLLauncher
{
public:
    ForegroundBrowser(std::function<void(const QUrl &)> approve, base::OneShot<bool> ended)
        : m_approve(std::move(approve))
        , m_ended(std::move(ended))
    {}
    QCoro::Task<bool> launch(QUrl url) override
    {
        m_approve(url);
        const base::OneShot<bool> ended = m_ended;
        co_return co_await ended;
    }

private:
    std::function<void(const QUrl &)> m_approve;
    base::OneShot<bool> m_ended;
};

TEST_F(Login, launcherThatStaysInTheForegroundDoesNotHoldTheLogin)
{
    base::OneShot<bool> ended;
    platform::URLOpener patient(
        std::make_unique<ForegroundBrowser>([this](const QUrl &page) { approve(page); }, ended));
    AuthClient other(transport, tokens, patient, server.url());
    server.on("/auth/oauth2/token", test::answer(200, tokensNamed("login")));
    EXPECT_TRUE(test::await(other.login()));
    ended.resolve(false);
}

} // namespace
} // namespace velto::auth
