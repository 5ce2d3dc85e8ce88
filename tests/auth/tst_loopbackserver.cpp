// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "auth/loopbackserver.h"
#include "auth/loopbackwire.h"
#include "support/coroutinetest.h"

#include <QFile>
#include <QHostAddress>
#include <QNetworkInterface>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace velto::auth
{
namespace
{

using namespace std::chrono_literals;
using base::LoopbackError;
using base::Result;

const base::Failure timedOut(LoopbackError{LoopbackError::Kind::TimedOut});

struct TargetCase
{
    const char *chunk;
    const char *target;
};

class CallbackTarget : public testing::TestWithParam<TargetCase>
{};

TEST_P(CallbackTarget, isTheSecondWordOfTheRequestLine)
{
    EXPECT_EQ(callbackTarget(QByteArrayView(GetParam().chunk)),
              QString::fromUtf8(GetParam().target));
}

INSTANTIATE_TEST_SUITE_P(
    Table, CallbackTarget,
    testing::Values(TargetCase{"GET /callback?code=a HTTP/1.1\r\nHost: x\r\n\r\n",
                               "/callback?code=a"},
                    TargetCase{"GET /favicon.ico HTTP/1.1\r\n\r\n", "/favicon.ico"},
                    TargetCase{"ANYTHING /callback", "/callback"},
                    TargetCase{"GET   /two   blanks\r\n", "/two"}, TargetCase{" GET /x", "/x"},
                    TargetCase{"GET", "/"}, TargetCase{"", "/"}, TargetCase{"\r\nGET /x", "/"},
                    TargetCase{"GET\r\n /callback", "/"},
                    TargetCase{"GET\t/callback HTTP/1.1\r\n", "HTTP/1.1"},
                    TargetCase{"GET /a\nb HTTP/1.1\r\n", "/a\nb"},
                    TargetCase{"GET /callback HTTP/1.1\r\nX: \xff\r\n", "/"},
                    TargetCase{"GET /caf\xc3\xa9 HTTP/1.1", "/café"}));

TEST(CallbackTargetBytes, holdingNullsDoNotEndTheLine)
{
    const QByteArray chunk("GET /call\0back HTTP/1.1\r\n", 25);
    EXPECT_EQ(callbackTarget(chunk).size(), 10);
}

TEST(LoopbackWire, prefixDecidesWhatTheRedirectIs)
{
    EXPECT_TRUE(isCallback(QStringLiteral("/callback")));
    EXPECT_TRUE(isCallback(QStringLiteral("/callbackx?code=1")));
    EXPECT_FALSE(isCallback(QStringLiteral("/Callback")));
    EXPECT_FALSE(isCallback(QStringLiteral("/")));
    EXPECT_FALSE(isCallback(QStringLiteral("http://127.0.0.1/callback")));
}

QByteArray expectedSuccess()
{
    QFile file(QStringLiteral(VELTO_TEST_DATA "/callback.html"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray page = file.readAll();
    EXPECT_EQ(page.size(), 601);
    return "HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: 601\r\n"
           "Connection: close\r\n\r\n" +
           page;
}

const QByteArray expectedNotFound =
    "HTTP/1.1 404 Not Found\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: 39\r\n"
    "Connection: close\r\n\r\n<!doctype html><title>Not found</title>";

class LoopbackServerTest : public testing::Test
{
protected:
    quint16 started()
    {
        const Result<quint16> result = server->start();
        EXPECT_TRUE(result);
        return port = result.value_or(0);
    }
    std::unique_ptr<QTcpSocket> connected() const
    {
        auto socket = std::make_unique<QTcpSocket>();
        socket->connectToHost(QHostAddress::LocalHost, port);
        EXPECT_TRUE(test::waitUntil([&] {
            return socket->state() != QAbstractSocket::HostLookupState &&
                   socket->state() != QAbstractSocket::ConnectingState;
        }));
        return socket;
    }
    /// All that the server sends until it closes the connection.
    QByteArray answerTo(const QByteArray &request) const
    {
        const auto socket = connected();
        socket->write(request);
        EXPECT_TRUE(
            test::waitUntil([&] { return socket->state() == QAbstractSocket::UnconnectedState; }));
        return socket->readAll();
    }
    bool isListening() const { return connected()->state() == QAbstractSocket::ConnectedState; }

    std::unique_ptr<LoopbackServer> server = std::make_unique<LoopbackServer>();
    quint16 port = 0;
};

TEST_F(LoopbackServerTest, givesTheWholeRedirectedURL)
{
    started();
    auto wait = server->waitForCallback(20s);
    EXPECT_EQ(answerTo("GET /callback?code=a%20b&state=s+t HTTP/1.1\r\nHost: x\r\n\r\n"),
              expectedSuccess());
    const Result<QUrl> url = test::await(std::move(wait));
    ASSERT_TRUE(url);
    EXPECT_EQ(url->toEncoded(),
              "http://127.0.0.1:" + QByteArray::number(port) + "/callback?code=a%20b&state=s+t");
}

TEST_F(LoopbackServerTest, iconRequestIsNotFoundAndTheWaitGoesOn)
{
    started();
    auto wait = server->waitForCallback(20s);
    EXPECT_EQ(answerTo("GET /favicon.ico HTTP/1.1\r\n\r\n"), expectedNotFound);
    EXPECT_FALSE(wait.isReady());
    EXPECT_EQ(answerTo("GET /callback?n=2 HTTP/1.1\r\n\r\n"), expectedSuccess());
    const Result<QUrl> url = test::await(std::move(wait));
    ASSERT_TRUE(url);
    EXPECT_EQ(url->query(), u"n=2");
}

TEST_F(LoopbackServerTest, secondCallbackGetsThePageAndChangesNothing)
{
    started();
    auto wait = server->waitForCallback(20s);
    EXPECT_EQ(answerTo("GET /callback?n=1 HTTP/1.1\r\n\r\n"), expectedSuccess());
    EXPECT_EQ(answerTo("GET /callback?n=2 HTTP/1.1\r\n\r\n"), expectedSuccess());
    const Result<QUrl> url = test::await(std::move(wait));
    ASSERT_TRUE(url);
    EXPECT_EQ(url->query(), u"n=1");
}

TEST_F(LoopbackServerTest, uselessBytesAreNotFound)
{
    started();
    auto wait = server->waitForCallback(20s);
    for (const QByteArray &bytes :
         {QByteArray("\r\n"), QByteArray("x"), QByteArray("\xff\xfe\0", 3)})
        EXPECT_EQ(answerTo(bytes), expectedNotFound);
    EXPECT_FALSE(wait.isReady());
}

TEST_F(LoopbackServerTest, onlyTheFirst65536BytesAreRead)
{
    started();
    auto wait = server->waitForCallback(20s);
    const auto socket = connected();
    socket->write("GET /callback?x=" + QByteArray(300'000, 'a') + " HTTP/1.1\r\n\r\n");
    const Result<QUrl> url = test::await(std::move(wait));
    ASSERT_TRUE(url);
    EXPECT_LE(url->toEncoded().size(), 65536 + 64);
}

TEST_F(LoopbackServerTest, timeOutEndsTheWait)
{
    started();
    const Result<QUrl> url = test::await(server->waitForCallback(1ms));
    ASSERT_FALSE(url);
    EXPECT_EQ(url.error(), timedOut);
}

TEST_F(LoopbackServerTest, redirectAfterTheStopFindsNoListener)
{
    started();
    EXPECT_TRUE(isListening());
    ASSERT_FALSE(test::await(server->waitForCallback(1ms)));
    server->stop();
    EXPECT_FALSE(isListening());
}

TEST_F(LoopbackServerTest, firstResolveCounts)
{
    started();
    auto wait = server->waitForCallback(20s);
    const QUrl first(QStringLiteral("http://127.0.0.1/callback?n=1"));
    server->resolve(first);
    server->resolve(base::fail(LoopbackError{LoopbackError::Kind::NoPort}));
    server->stop();
    const Result<QUrl> url = test::await(std::move(wait));
    ASSERT_TRUE(url);
    EXPECT_EQ(*url, first);
}

TEST_F(LoopbackServerTest, resolveBeforeTheWaitDoesNothing)
{
    started();
    server->resolve(QUrl(QStringLiteral("http://127.0.0.1/callback?n=1")));
    const Result<QUrl> url = test::await(server->waitForCallback(1ms));
    ASSERT_FALSE(url);
    EXPECT_EQ(url.error(), timedOut);
}

TEST_F(LoopbackServerTest, timeOutAndRedirectRacingResumeOnce)
{
    for (int i = 0; i < 30; ++i) {
        server = std::make_unique<LoopbackServer>();
        started();
        const auto socket = connected();
        socket->write("GET /callback?n=1 HTTP/1.1\r\n\r\n");
        socket->flush();
        const Result<QUrl> url =
            test::await(server->waitForCallback(std::chrono::milliseconds(i % 3)));
        EXPECT_TRUE(url || url.error() == timedOut);
    }
}

TEST_F(LoopbackServerTest, stopEndsTheWait)
{
    started();
    auto wait = server->waitForCallback(20s);
    server->stop();
    const Result<QUrl> url = test::await(std::move(wait));
    ASSERT_FALSE(url);
    EXPECT_EQ(url.error(), timedOut);
}

TEST_F(LoopbackServerTest, destructionEndsTheWait)
{
    started();
    auto wait = server->waitForCallback(20s);
    server.reset();
    EXPECT_FALSE(test::await(std::move(wait)));
}

TEST_F(LoopbackServerTest, waitOnAStoppedServerEndsAtOnce)
{
    started();
    server->stop();
    EXPECT_FALSE(test::await(server->waitForCallback(20s)));
}

TEST_F(LoopbackServerTest, silentConnectionsNeitherHangTheWaitNorOutliveTheStop)
{
    started();
    auto wait = server->waitForCallback(20s);
    std::vector<std::unique_ptr<QTcpSocket>> silent;
    for (int i = 0; i < 100; ++i)
        silent.push_back(connected());
    // The oldest had to go for the others; the redirect still comes through.
    EXPECT_TRUE(test::waitUntil(
        [&] { return silent.front()->state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(silent.back()->state(), QAbstractSocket::ConnectedState);
    EXPECT_EQ(answerTo("GET /callback HTTP/1.1\r\n\r\n"), expectedSuccess());
    EXPECT_TRUE(test::await(std::move(wait)));
    server->stop();
    EXPECT_TRUE(test::waitUntil([&] {
        return std::ranges::all_of(silent, [](const auto &socket) {
            return socket->state() == QAbstractSocket::UnconnectedState;
        });
    }));
}

TEST_F(LoopbackServerTest, answerArrivesWholeWhenTheServerGoesAtOnce)
{
    started();
    auto wait = server->waitForCallback(20s);
    const auto socket = connected();
    socket->write("GET /callback HTTP/1.1\r\n\r\n");
    ASSERT_TRUE(test::await(std::move(wait)));
    server.reset();
    ASSERT_TRUE(
        test::waitUntil([&] { return socket->state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(socket->readAll(), expectedSuccess());
}

TEST_F(LoopbackServerTest, otherAddressesOfThisMachineDoNotReachIt)
{
    started();
    QList<QHostAddress> others{QHostAddress(QStringLiteral("127.0.0.2")),
                               QHostAddress::LocalHostIPv6};
    for (const QHostAddress &address : QNetworkInterface::allAddresses()) {
        if (!address.isLoopback())
            others.append(address);
    }
    for (const QHostAddress &address : others) {
        QTcpSocket socket;
        socket.connectToHost(address, port);
        EXPECT_TRUE(
            test::waitUntil([&] { return socket.state() != QAbstractSocket::ConnectingState; }));
        EXPECT_NE(socket.state(), QAbstractSocket::ConnectedState)
            << address.toString().toStdString();
    }
}

TEST_F(LoopbackServerTest, machineWithoutADescriptorLeftGivesNoPort)
{
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const int next = ::dup(0);
    ASSERT_GE(next, 0);
    ::close(next);
    rlimit none = before;
    none.rlim_cur = static_cast<rlim_t>(next);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const Result<quint16> result = server->start();
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), base::Failure(LoopbackError{LoopbackError::Kind::NoPort}));
}

} // namespace
} // namespace velto::auth
