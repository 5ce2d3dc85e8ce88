// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "transporttest.h"

#include <sys/socket.h>

#include <list>

namespace velto::service
{
namespace
{

using namespace std::chrono_literals;
using test::Exchange;
using test::RecordedRequest;

// Long enough for a busy machine to keep the trickle below it, short enough to wait for.
constexpr auto silence = 500ms;

HTTPRequest impatient(HTTPRequest request)
{
    request.timeout = silence;
    return request;
}

TEST_F(TransportTest, TheTimeoutIsAMinuteUnlessSaidOtherwise)
{
    EXPECT_EQ(HTTPRequest().timeout, 60s);
}

TEST_F(TransportTest, SilenceBeforeTheAnswerTimesOut)
{
    std::optional<Exchange> exchange;
    m_server.on("/s", [&](const RecordedRequest &, const Exchange &begun) { exchange = begun; });
    const auto response = send(impatient(requestTo(m_server.url(QStringLiteral("/s")), "POST")));
    EXPECT_EQ(kindOf(response), Kind::TimedOut);
    EXPECT_FALSE(base::isCancellation(response.error()));
    EXPECT_TRUE(test::waitUntil([&] { return !exchange->isOpen(); }));
    EXPECT_EQ(m_server.count("/s"), 1);
}

TEST_F(TransportTest, SilenceInTheMiddleOfTheBodyTimesOutBehindWhatCame)
{
    m_server.on("/s", [&](const RecordedRequest &, const Exchange &exchange) {
        exchange.beginStream();
        exchange.send("abc");
    });
    auto stream =
        test::await(m_transport.open(impatient(requestTo(m_server.url(QStringLiteral("/s"))))));
    ASSERT_TRUE(stream);
    EXPECT_EQ(test::await(stream->read()).value(), "abc");
    EXPECT_EQ(kindOf(test::await(stream->read())), Kind::TimedOut);
}

TEST_F(TransportTest, AServerThatAcceptsAndSaysNothingTimesOut)
{
    QTcpServer mute;
    ASSERT_TRUE(mute.listen(QHostAddress::LocalHost));
    const QUrl url(QStringLiteral("http://127.0.0.1:%1/").arg(mute.serverPort()));
    EXPECT_EQ(kindOf(send(impatient(requestTo(url)))), Kind::TimedOut);
}

TEST_F(TransportTest, ASlowTrickleDoesNotTimeOut)
{
    QTimer trickle;
    int left = 15;
    m_server.on("/s", [&](const RecordedRequest &, const Exchange &exchange) {
        exchange.beginStream();
        QObject::connect(&trickle, &QTimer::timeout, &trickle, [&left, &trickle, exchange] {
            exchange.send("x");
            if (--left == 0) {
                trickle.stop();
                exchange.close();
            }
        });
        trickle.start(silence / 10);
    });
    const QDeadlineTimer limit(silence);
    const auto response = send(impatient(requestTo(m_server.url(QStringLiteral("/s")))));
    EXPECT_TRUE(limit.hasExpired()) << "the answer took no longer than the limit";
    ASSERT_TRUE(response);
    EXPECT_EQ(response->body.size(), 15);
}

TEST_F(TransportTest, ATrickleOfHeaderLinesDoesNotTimeOut)
{
    QTimer trickle;
    int left = 15;
    m_server.on("/s", [&](const RecordedRequest &, const Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n");
        QObject::connect(&trickle, &QTimer::timeout, &trickle, [&left, &trickle, exchange] {
            exchange.send(--left > 0 ? "X-More: 1\r\n" : "\r\n");
            if (left == 0)
                trickle.stop();
        });
        trickle.start(silence / 10);
    });
    const auto response = send(impatient(requestTo(m_server.url(QStringLiteral("/s")))));
    ASSERT_TRUE(response);
    EXPECT_EQ(response->head.headers.size(), 15);
}

// Sips for longer than the limit, then takes all that is left.
TEST_F(TransportTest, AnUploadThatMovesDoesNotTimeOut)
{
    const QByteArray body(48 * 1024 * 1024, 'x');
    constexpr int mouthful = 512 * 1024;
    QTcpServer slow;
    ASSERT_TRUE(slow.listen(QHostAddress::LocalHost));
    // The kernel's own buffers can hold the whole body, and then nothing moves any more.
    ASSERT_EQ(setsockopt(static_cast<int>(slow.socketDescriptor()), SOL_SOCKET, SO_RCVBUF,
                         &mouthful, sizeof mouthful),
              0);
    QTimer sip;
    qint64 taken = 0;
    qint64 takenAtLimit = 0;
    const QDeadlineTimer limit(silence * 3 / 2);
    QObject::connect(&slow, &QTcpServer::newConnection, &slow, [&] {
        QTcpSocket *socket = slow.nextPendingConnection();
        socket->setReadBufferSize(mouthful);
        QObject::connect(&sip, &QTimer::timeout, socket, [&, socket] {
            taken += socket->read(mouthful).size();
            if (!limit.hasExpired())
                takenAtLimit = taken;
            else
                sip.setInterval(0);
            if (taken > body.size())
                socket->write("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");
        });
        sip.start(silence / 25);
    });
    const QUrl url(QStringLiteral("http://127.0.0.1:%1/").arg(slow.serverPort()));
    EXPECT_TRUE(send(impatient(requestTo(url, "PUT", body))));
    EXPECT_TRUE(limit.hasExpired()) << "the upload took no longer than the limit";
    EXPECT_LT(takenAtLimit, body.size() / 2) << "buffers may have held all the rest at the limit";
}

TEST_F(TransportTest, EachRedirectBeginsANewSilence)
{
    std::list<QTimer> timers;
    const auto later = [&](const test::ScriptedServer::Handler &answer) {
        return [&timers, answer](const RecordedRequest &request, const Exchange &exchange) {
            QTimer &timer = timers.emplace_back();
            timer.setSingleShot(true);
            QObject::connect(&timer, &QTimer::timeout, &timer, [=] { answer(request, exchange); });
            timer.start(silence * 6 / 10);
        };
    };
    m_server.on("/a", later(test::answer(302, {}, {{"Location", "/b"}})));
    m_server.on("/b", later(test::answer(200, "b")));
    const auto response = send(impatient(requestTo(m_server.url(QStringLiteral("/a")))));
    ASSERT_TRUE(response);
    EXPECT_EQ(response->body, "b");
}

} // namespace
} // namespace velto::service
