// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "transporttest.h"

namespace velto::service
{
namespace
{

using test::Exchange;
using test::RecordedRequest;
using Ending = void (Exchange::*)() const;

struct Case
{
    const char *method;
    std::optional<QByteArray> body;
    Ending ending;
};

/// A request that the server reads to its end and then answers with nothing.
class Once : public TransportTest, public testing::WithParamInterface<Case>
{
protected:
    Once()
    {
        m_server.on("/warm", test::answer(200, "x"));
        m_server.on("/p", [](const RecordedRequest &, const Exchange &exchange) {
            (exchange.*GetParam().ending)();
        });
    }

    base::Result<HTTPResponse> sendIt()
    {
        return send(
            requestTo(m_server.url(QStringLiteral("/p")), GetParam().method, GetParam().body));
    }

    /// One more request and its answer: whatever was sent before has arrived by then.
    void settle() { ASSERT_TRUE(send(requestTo(m_server.url(QStringLiteral("/warm"))))); }
};

TEST_P(Once, OnAFreshConnection)
{
    EXPECT_EQ(kindOf(sendIt()), Kind::ConnectionLost);
    settle();
    EXPECT_EQ(m_server.count("/p"), 1);
}

TEST_P(Once, OnAKeptConnection)
{
    settle();
    EXPECT_EQ(kindOf(sendIt()), Kind::ConnectionLost);
    EXPECT_EQ(m_server.requests().last().connection, 0) << "the connection was not kept";
    settle();
    EXPECT_EQ(m_server.count("/p"), 1);
}

INSTANTIATE_TEST_SUITE_P(
    NotIdempotent, Once,
    testing::Values(Case{"POST", "body", &Exchange::reset}, Case{"POST", "body", &Exchange::close},
                    Case{"POST", {}, &Exchange::reset}, Case{"POST", {}, &Exchange::close},
                    Case{"POST", QByteArray(300000, 'x'), &Exchange::reset},
                    Case{"PATCH", "body", &Exchange::reset},
                    Case{"PATCH", "body", &Exchange::close}, Case{"LINK", {}, &Exchange::reset}));

TEST_F(TransportTest, AnIdempotentRequestSurvivesAKeptConnectionThatDied)
{
    for (const char *method : {"GET", "PUT", "DELETE"}) {
        const QByteArray path = QByteArray("/") + method;
        m_server.on("/warm", test::answer(200, "x"));
        m_server.script(path, {[](const RecordedRequest &, const Exchange &e) { e.reset(); },
                               test::answer(200, "second")});
        ASSERT_TRUE(send(requestTo(m_server.url(QStringLiteral("/warm")))));
        const auto response = send(requestTo(m_server.url(QString::fromLatin1(path)), method));
        ASSERT_TRUE(response) << method;
        EXPECT_EQ(response->body, "second");
    }
}

TEST_F(TransportTest, AKeptConnectionThatTheServerHasClosedMeanwhileIsReplaced)
{
    m_server.on("/p", test::answer(200));
    ASSERT_TRUE(send(requestTo(m_server.url(QStringLiteral("/p")), "POST", "1")));
    m_server.dropConnections();
    ASSERT_TRUE(test::waitUntil([&] { return m_server.openConnectionCount() == 0; }));
    ASSERT_TRUE(send(requestTo(m_server.url(QStringLiteral("/p")), "POST", "2")));
    EXPECT_EQ(m_server.count("/p"), 2);
    EXPECT_EQ(m_server.connectionCount(), 2);
}

} // namespace
} // namespace velto::service
