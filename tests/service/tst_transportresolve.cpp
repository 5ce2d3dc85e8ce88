// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "transporttest.h"

#include <netdb.h>

#include <semaphore>

namespace
{

std::binary_semaphore lookUpHasBegun{0};
std::binary_semaphore lookUpMayEnd{0};
std::binary_semaphore lookUpHasEnded{0};

} // namespace

/// The system's look-up of hosts, as slow as the test wants it.
extern "C" int getaddrinfo(const char *, const char *, const addrinfo *, addrinfo **)
{
    lookUpHasBegun.release();
    lookUpMayEnd.acquire();
    lookUpHasEnded.release();
    return EAI_NONAME;
}

namespace velto::service
{
namespace
{

const QUrl slowHost(QStringLiteral("http://slow.example/"));

class Resolve : public TransportTest
{
protected:
    [[nodiscard]] static bool hasBegun()
    {
        return test::waitUntil([] { return lookUpHasBegun.try_acquire(); });
    }

    ~Resolve() override
    {
        lookUpMayEnd.release();
        lookUpHasEnded.acquire();
    }

    std::stop_source m_stop;
};

// The look-up is held until the test is over, so an end that waited for it would never come.

TEST_F(Resolve, ACancellationDoesNotWaitForTheLookUp)
{
    auto task = m_transport.send(requestTo(slowHost), m_stop.get_token());
    ASSERT_TRUE(hasBegun());
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Cancelled);
}

TEST_F(Resolve, ATimeoutDoesNotWaitForTheLookUp)
{
    HTTPRequest request = requestTo(slowHost);
    request.timeout = std::chrono::milliseconds(200);
    auto task = m_transport.send(request);
    ASSERT_TRUE(hasBegun());
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::TimedOut);
}

TEST_F(Resolve, TheEndOfTheTransportDoesNotWaitForTheLookUp)
{
    auto transport = std::make_unique<Transport>();
    auto task = transport->send(requestTo(slowHost));
    ASSERT_TRUE(hasBegun());
    transport.reset();
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Cancelled);
}

TEST_F(Resolve, OtherRequestsGoOnMeanwhile)
{
    m_server.on("/a", test::answer(200, "x"));
    auto task = m_transport.send(requestTo(slowHost), m_stop.get_token());
    ASSERT_TRUE(hasBegun());
    EXPECT_EQ(send(requestTo(m_server.url(QStringLiteral("/a")))).value().body, "x");
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Cancelled);
}

} // namespace
} // namespace velto::service
