// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "transporttest.h"

#include <thread>

namespace velto::service
{
namespace
{

using test::Exchange;
using test::RecordedRequest;

/// A server that holds what it gets, and the way to stop asking it.
class Cancel : public TransportTest
{
protected:
    Cancel()
    {
        m_server.on("/hold", [this](const RecordedRequest &, const Exchange &exchange) {
            m_exchange = exchange;
        });
        m_server.on("/stream", [this](const RecordedRequest &, const Exchange &exchange) {
            m_exchange = exchange;
            exchange.beginStream();
            exchange.send("abc");
        });
    }

    [[nodiscard]] HTTPRequest to(const QString &path) const
    {
        return requestTo(m_server.url(path));
    }
    [[nodiscard]] bool hasArrived() const
    {
        return test::waitUntil([this] { return m_exchange.has_value(); });
    }
    [[nodiscard]] bool isClosed() const
    {
        return test::waitUntil([this] { return !m_exchange->isOpen(); });
    }

    std::optional<Exchange> m_exchange;
    std::stop_source m_stop;
};

TEST_F(Cancel, BeforeTheStartSendsNothing)
{
    m_stop.request_stop();
    const auto response =
        test::await(m_transport.send(to(QStringLiteral("/hold")), m_stop.get_token()));
    EXPECT_EQ(kindOf(response), Kind::Cancelled);
    EXPECT_TRUE(base::isCancellation(response.error()));
    ASSERT_TRUE(send(to(QStringLiteral("/else"))));
    EXPECT_EQ(m_server.count("/hold"), 0);
}

TEST_F(Cancel, RightAfterTheStart)
{
    auto task = m_transport.send(to(QStringLiteral("/hold")), m_stop.get_token());
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Cancelled);
}

TEST_F(Cancel, BeforeTheHeadClosesTheConnection)
{
    auto task = m_transport.send(to(QStringLiteral("/hold")), m_stop.get_token());
    ASSERT_TRUE(hasArrived());
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Cancelled);
    EXPECT_TRUE(isClosed());
}

TEST_F(Cancel, InTheMiddleOfTheBodyClosesTheConnection)
{
    auto stream = test::await(m_transport.open(to(QStringLiteral("/stream")), m_stop.get_token()));
    ASSERT_TRUE(stream);
    EXPECT_EQ(test::await(stream->read()).value(), "abc");
    auto waiting = stream->read();
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(std::move(waiting))), Kind::Cancelled);
    EXPECT_EQ(kindOf(test::await(stream->read())), Kind::Cancelled);
    EXPECT_TRUE(isClosed());
}

TEST_F(Cancel, NothingIsReadAfterTheStop)
{
    auto stream = test::await(m_transport.open(to(QStringLiteral("/stream")), m_stop.get_token()));
    ASSERT_TRUE(stream);
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(stream->read())), Kind::Cancelled) << "though bytes had come";
}

TEST_F(Cancel, FromAnotherThread)
{
    auto task = m_transport.send(to(QStringLiteral("/hold")), m_stop.get_token());
    ASSERT_TRUE(hasArrived());
    const std::jthread thread([this] { m_stop.request_stop(); });
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Cancelled);
}

TEST_F(Cancel, AfterTheEndChangesNothing)
{
    auto response = test::await(m_transport.send(to(QStringLiteral("/else")), m_stop.get_token()));
    m_stop.request_stop();
    ASSERT_TRUE(response);
    EXPECT_EQ(response->head.status, 404);
    ASSERT_TRUE(send(to(QStringLiteral("/else"))));
}

TEST_F(Cancel, EndsOnlyTheRequestsOfItsToken)
{
    auto stopped = m_transport.send(to(QStringLiteral("/hold")), m_stop.get_token());
    ASSERT_TRUE(hasArrived());
    std::optional<Exchange> second;
    m_server.on("/other", [&](const RecordedRequest &, const Exchange &e) { second = e; });
    auto other = m_transport.send(to(QStringLiteral("/other")));
    ASSERT_TRUE(test::waitUntil([&] { return second.has_value(); }));
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(std::move(stopped))), Kind::Cancelled);
    second->respond(200, "still here");
    EXPECT_EQ(test::await(std::move(other)).value().body, "still here");
}

TEST_F(Cancel, DroppingAStreamClosesTheConnection)
{
    {
        const auto stream = test::await(m_transport.open(to(QStringLiteral("/stream"))));
        ASSERT_TRUE(stream);
    }
    EXPECT_TRUE(isClosed());
}

TEST_F(Cancel, DroppingAStreamFailsItsWaitingRead)
{
    auto stream =
        std::make_optional(test::await(m_transport.open(to(QStringLiteral("/stream")))).value());
    EXPECT_EQ(test::await((*stream).read()).value(), "abc");
    auto waiting = (*stream).read();
    stream.reset();
    EXPECT_EQ(kindOf(test::await(std::move(waiting))), Kind::Cancelled);
}

TEST_F(Cancel, AStreamThatHasMovedReadsOn)
{
    HTTPStream first = test::await(m_transport.open(to(QStringLiteral("/stream")))).value();
    HTTPStream second = std::move(first);
    EXPECT_EQ(test::await(second.read()).value(), "abc");
    m_exchange->send("def");
    EXPECT_EQ(test::await(second.read()).value(), "def");
}

TEST_F(Cancel, TheEndOfTheTransportEndsWhatRuns)
{
    auto transport = std::make_unique<Transport>();
    auto waiting = transport->send(to(QStringLiteral("/hold")));
    ASSERT_TRUE(hasArrived());
    auto stream = test::await(transport->open(to(QStringLiteral("/stream"))));
    ASSERT_TRUE(stream);
    transport.reset();
    EXPECT_EQ(kindOf(test::await(std::move(waiting))), Kind::Cancelled);
    EXPECT_EQ(kindOf(test::await(stream->read())), Kind::Cancelled);
}

QCoro::Task<std::optional<Kind>> askAgain(Transport &transport, HTTPRequest request)
{
    for (int i = 0; i < 3; ++i) {
        const auto response = co_await transport.send(request);
        EXPECT_FALSE(response);
    }
    co_return kindOf(co_await transport.send(request));
}

TEST_F(Cancel, NothingBeginsWhileTheTransportEnds)
{
    auto transport = std::make_unique<Transport>();
    auto task = askAgain(*transport, to(QStringLiteral("/hold")));
    ASSERT_TRUE(hasArrived());
    transport.reset();
    EXPECT_EQ(test::await(std::move(task)), Kind::Cancelled);
    EXPECT_EQ(m_server.count("/hold"), 1);
}

QCoro::Task<std::optional<Kind>> destroyAfter(std::unique_ptr<Transport> &transport,
                                              HTTPRequest request)
{
    const auto response = co_await transport->send(std::move(request));
    transport.reset();
    co_return kindOf(response);
}

TEST_F(Cancel, AnAnswerMayEndTheTransport)
{
    QList<Exchange> held;
    m_server.on("/all", [&](const RecordedRequest &, const Exchange &e) { held.append(e); });
    auto transport = std::make_unique<Transport>();
    std::vector<QCoro::Task<std::optional<Kind>>> tasks;
    for (int i = 0; i < 8; ++i)
        tasks.push_back(destroyAfter(transport, to(QStringLiteral("/all"))));
    ASSERT_TRUE(test::waitUntil([&] { return held.size() == 8; }));
    for (const Exchange &exchange : held)
        exchange.respond(200, "x");
    int answered = 0;
    for (auto &task : tasks) {
        const std::optional<Kind> kind = test::await(std::move(task));
        answered += kind ? 0 : 1;
        EXPECT_EQ(kind.value_or(Kind::Cancelled), Kind::Cancelled);
    }
    EXPECT_GE(answered, 1);
    EXPECT_EQ(transport, nullptr);
}

} // namespace
} // namespace velto::service
