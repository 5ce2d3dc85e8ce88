// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "rawserver.h"
#include "transporttest.h"

#include <QFile>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>

namespace velto::service
{
namespace
{

using test::Exchange;
using test::RecordedRequest;

QList<QByteArray> headerNames(const RecordedRequest &request)
{
    QList<QByteArray> names;
    for (const auto &header : request.headers)
        names.append(header.first);
    std::ranges::sort(names);
    return names;
}

TEST_F(TransportTest, AGetCarriesNothingThatWasNotAskedFor)
{
    m_server.on("/a", test::answer(200, "body", {{"X-Kind", "plain"}}));
    const auto response = send(requestTo(m_server.url(QStringLiteral("/a?b=c%20d"))));
    ASSERT_TRUE(response);
    EXPECT_EQ(response->head.status, 200);
    EXPECT_EQ(response->head.header("x-kind"), "plain");
    EXPECT_EQ(response->head.header("absent"), std::nullopt);
    EXPECT_EQ(response->head.url, m_server.url(QStringLiteral("/a?b=c%20d")));
    EXPECT_EQ(response->body, "body");
    const RecordedRequest &seen = m_server.requests().first();
    EXPECT_EQ(seen.method, "GET");
    EXPECT_EQ(seen.target, "/a?b=c%20d");
    EXPECT_EQ(headerNames(seen), QList<QByteArray>{"Host"});
}

TEST_F(TransportTest, APostCarriesItsBodyAndNoDefaultType)
{
    m_server.on("/a", test::answer(201));
    HTTPRequest request = requestTo(m_server.url(QStringLiteral("/a")), "POST", "k=v");
    ASSERT_TRUE(send(request));
    request.headers = {{"Content-Type", "text/x"}, {"X-Empty", ""}, {"Accept", "a/b"}};
    ASSERT_TRUE(send(request));
    const RecordedRequest bare = m_server.requests().at(0);
    EXPECT_EQ(bare.body, "k=v");
    EXPECT_EQ(headerNames(bare), (QList<QByteArray>{"Content-Length", "Host"}));
    const RecordedRequest &dressed = m_server.requests().at(1);
    EXPECT_EQ(dressed.header("Content-Type"), "text/x");
    EXPECT_EQ(dressed.header("X-Empty"), "");
    EXPECT_EQ(dressed.header("Accept"), "a/b");
}

TEST_F(TransportTest, ALargeBodyIsSentWithoutAskingFirst)
{
    m_server.on("/a", test::answer(200));
    const QByteArray body(3 * 1024 * 1024, 'x');
    ASSERT_TRUE(send(requestTo(m_server.url(QStringLiteral("/a")), "PUT", body)));
    EXPECT_EQ(m_server.requests().first().body, body);
    EXPECT_EQ(m_server.requests().first().header("Expect"), std::nullopt);
}

TEST_F(TransportTest, EveryMethodGoesOutUnderItsName)
{
    m_server.on("/a", test::answer(200));
    for (const char *method : {"GET", "POST", "PUT", "PATCH", "DELETE", "OPTIONS"}) {
        ASSERT_TRUE(send(requestTo(m_server.url(QStringLiteral("/a")), method))) << method;
        EXPECT_EQ(m_server.requests().last().method, method);
        const bool mayHaveBody = QByteArray(method).startsWith('P');
        EXPECT_EQ(m_server.requests().last().header("Content-Length"),
                  mayHaveBody ? std::optional<QByteArray>("0") : std::nullopt)
            << method;
    }
}

TEST_F(TransportTest, AHeadHasNoBodyToWaitFor)
{
    m_server.on("/a", [](const RecordedRequest &, const Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 7\r\n\r\n");
    });
    const auto response = send(requestTo(m_server.url(QStringLiteral("/a")), "HEAD"));
    ASSERT_TRUE(response);
    EXPECT_EQ(response->head.header("Content-Length"), "7");
    EXPECT_EQ(response->body, "");
}

TEST_F(TransportTest, EveryStatusIsAnAnswer)
{
    for (const int status : {200, 204, 304, 400, 401, 404, 500, 503}) {
        m_server.on("/a", test::answer(status));
        const auto response = send(requestTo(m_server.url(QStringLiteral("/a"))));
        ASSERT_TRUE(response) << status;
        EXPECT_EQ(response->head.status, status);
    }
}

TEST_F(TransportTest, AnInterimAnswerIsNotTheAnswer)
{
    m_server.on("/a", [](const RecordedRequest &, const Exchange &exchange) {
        exchange.send("HTTP/1.1 103 Early Hints\r\nX-Early: 1\r\n\r\n");
        exchange.respond(200, "late", {{"X-Late", "1"}});
    });
    const auto response = send(requestTo(m_server.url(QStringLiteral("/a"))));
    ASSERT_TRUE(response);
    EXPECT_EQ(response->head.status, 200);
    EXPECT_EQ(response->head.header("X-Early"), std::nullopt);
    EXPECT_EQ(response->head.header("X-Late"), "1");
    EXPECT_EQ(response->body, "late");
}

TEST_F(TransportTest, AStreamDeliversEachPieceAsItComes)
{
    std::optional<Exchange> exchange;
    m_server.on("/s", [&](const RecordedRequest &, const Exchange &begun) {
        exchange = begun;
        begun.beginStream(200, {{"X-Id", "7"}});
    });
    auto stream = test::await(m_transport.open(requestTo(m_server.url(QStringLiteral("/s")))));
    ASSERT_TRUE(stream);
    EXPECT_EQ(stream->head().status, 200);
    EXPECT_EQ(stream->head().header("x-id"), "7");
    for (const QByteArray piece : {"one", "two", "three"}) {
        exchange->send(piece);
        EXPECT_EQ(test::await(stream->read()).value(), piece);
    }
    exchange->close();
    EXPECT_EQ(test::await(stream->read()).value(), "");
    EXPECT_EQ(test::await(stream->read()).value(), "") << "the end stays the end";
}

TEST_F(TransportTest, ChunksAreTakenApartAndTrailersAreNoHeaders)
{
    m_server.on("/s", [&](const RecordedRequest &, const Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                      "3\r\nabc\r\n2\r\nde\r\n0\r\nX-Trailer: 1\r\n\r\n");
    });
    const auto response = send(requestTo(m_server.url(QStringLiteral("/s"))));
    ASSERT_TRUE(response);
    EXPECT_EQ(response->body, "abcde");
    EXPECT_EQ(response->head.header("X-Trailer"), std::nullopt);
}

TEST_F(TransportTest, ALargeAnswerArrivesWhole)
{
    QByteArray body;
    for (int i = 0; body.size() < 16 * 1024 * 1024; ++i)
        body += QByteArray::number(i) + '\n';
    m_server.on("/s", test::answer(200, body));
    const auto response = send(requestTo(m_server.url(QStringLiteral("/s"))));
    ASSERT_TRUE(response);
    EXPECT_TRUE(response->body == body);
}

TEST_F(TransportTest, FiftyRequestsRunAtTheSameTime)
{
    QList<Exchange> held;
    m_server.on("/s", [&](const RecordedRequest &, const Exchange &exchange) {
        held.append(exchange);
        if (held.size() == 50) {
            for (const Exchange &one : held)
                one.respond(200, "go");
        }
    });
    std::vector<QCoro::Task<base::Result<HTTPResponse>>> tasks;
    for (int i = 0; i < 50; ++i)
        tasks.push_back(m_transport.send(requestTo(m_server.url(QStringLiteral("/s")))));
    for (auto &task : tasks)
        EXPECT_EQ(test::await(std::move(task)).value().body, "go");
}

TEST_F(TransportTest, AConnectionIsKeptForTheNextRequest)
{
    m_server.on("/a", test::answer(200, "x"));
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(send(requestTo(m_server.url(QStringLiteral("/a")), "POST", "b")));
    EXPECT_EQ(m_server.connectionCount(), 1);
}

TEST_F(TransportTest, WhatIsNoWebAddressIsRefused)
{
    for (const char *url : {"", "file:///etc/hostname", "ftp://127.0.0.1/", "http:///x", "/v1/me",
                            "ws://127.0.0.1/", "http://h:99999/"})
        EXPECT_EQ(kindOf(send(requestTo(QUrl(QLatin1StringView(url))))), Kind::BadURL) << url;
}

TEST_F(TransportTest, AHeaderWithALineBreakNeverLeaves)
{
    HTTPRequest request = requestTo(m_server.url());
    request.headers = {{"X-A", "1\r\nX-Smuggled: 2"}};
    EXPECT_EQ(kindOf(send(request)), Kind::Other);
    EXPECT_EQ(m_server.connectionCount(), 0);
}

TEST_F(TransportTest, NameAndPasswordInAnAddressAreNotSent)
{
    m_server.on("/a", test::answer(200));
    QUrl url = m_server.url(QStringLiteral("/a"));
    url.setUserInfo(QStringLiteral("u:p"));
    ASSERT_TRUE(send(requestTo(url)));
    EXPECT_EQ(headerNames(m_server.requests().first()), QList<QByteArray>{"Host"});
}

TEST_F(TransportTest, NobodyListening)
{
    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
    const QUrl url(QStringLiteral("http://127.0.0.1:%1/").arg(closed.serverPort()));
    closed.close();
    EXPECT_EQ(kindOf(send(requestTo(url))), Kind::CannotConnect);
}

TEST_F(TransportTest, AHostThatDoesNotExist)
{
    const QUrl url(QStringLiteral("http://nobody.invalid/"));
    EXPECT_EQ(kindOf(send(requestTo(url))), Kind::CannotFindHost);
}

TEST_F(TransportTest, AnAnswerThatIsNotHTTP)
{
    for (const char *answer : {"SSH-2.0-server\r\n", "hello", "\x15\x03\x01\r\n\r\n"}) {
        const test::RawServer server{QByteArray(answer)};
        EXPECT_EQ(kindOf(send(requestTo(server.url()))), Kind::BadServerResponse) << answer;
    }
}

TEST_F(TransportTest, AServerThatClosesWithoutAnAnswer)
{
    const test::RawServer server{QByteArray()};
    EXPECT_EQ(kindOf(send(requestTo(server.url()))), Kind::ConnectionLost);
}

TEST_F(TransportTest, ABodyThatBreaksOffIsALostConnection)
{
    m_server.on("/s", [&](const RecordedRequest &, const Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc");
        exchange.close();
    });
    EXPECT_EQ(kindOf(send(requestTo(m_server.url(QStringLiteral("/s"))))), Kind::ConnectionLost);
}

TEST_F(TransportTest, WhatCameBeforeAResetIsDeliveredAndTheFailureIsFinal)
{
    std::optional<Exchange> exchange;
    m_server.on("/s", [&](const RecordedRequest &, const Exchange &begun) {
        exchange = begun;
        begun.beginStream();
        begun.send("abc");
    });
    auto stream = test::await(m_transport.open(requestTo(m_server.url(QStringLiteral("/s")))));
    ASSERT_TRUE(stream);
    EXPECT_EQ(test::await(stream->read()).value(), "abc");
    exchange->reset();
    EXPECT_EQ(kindOf(test::await(stream->read())), Kind::ConnectionLost);
    EXPECT_EQ(kindOf(test::await(stream->read())), Kind::ConnectionLost);
}

TEST_F(TransportTest, AServerThatSpeaksNoTLS)
{
    const test::RawServer server{QByteArray("HTTP/1.1 400 Bad Request\r\n\r\n")};
    const auto response = send(requestTo(server.url(QStringLiteral("https"))));
    EXPECT_EQ(kindOf(response), Kind::SecureConnectionFailed);
    EXPECT_FALSE(std::get<base::TransportError>(response.error()).detail.isEmpty());
}

TEST_F(TransportTest, ACertificateThatNobodySignedIsRefused)
{
    QFile certificate(QStringLiteral(VELTO_TEST_DATA "/untrusted.crt"));
    QFile key(QStringLiteral(VELTO_TEST_DATA "/untrusted.key"));
    ASSERT_TRUE(certificate.open(QFile::ReadOnly) && key.open(QFile::ReadOnly));
    QSslConfiguration configuration;
    configuration.setLocalCertificate(QSslCertificate(&certificate));
    configuration.setPrivateKey(QSslKey(&key, QSsl::Ec));
    QSslServer server;
    server.setSslConfiguration(configuration);
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    const QUrl url(QStringLiteral("https://127.0.0.1:%1/").arg(server.serverPort()));
    EXPECT_EQ(kindOf(send(requestTo(url))), Kind::SecureConnectionFailed);
}

class ProxyTest : public TransportTest
{
protected:
    ~ProxyTest() override { qunsetenv("http_proxy"); }
};

TEST_F(ProxyTest, ForeignHostsGoThroughTheProxyOfTheEnvironment)
{
    qputenv("http_proxy", m_server.url().toEncoded());
    ASSERT_TRUE(send(requestTo(QUrl(QStringLiteral("http://service.example/x")))));
    EXPECT_EQ(m_server.requests().first().target, "http://service.example/x");
}

TEST_F(ProxyTest, ThisMachineNeedsNone)
{
    test::ScriptedServer proxy;
    qputenv("http_proxy", proxy.url().toEncoded());
    m_server.on("/a", test::answer(200));
    for (const QString &host : {QStringLiteral("127.0.0.1"), QStringLiteral("localhost")})
        ASSERT_TRUE(send(requestTo(m_server.url(QStringLiteral("/a"), host))));
    EXPECT_EQ(m_server.count("/a"), 2);
    EXPECT_TRUE(proxy.requests().isEmpty());
}

} // namespace
} // namespace velto::service
