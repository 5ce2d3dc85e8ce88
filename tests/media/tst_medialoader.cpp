// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/media/medialoader.h"

#include "support/coroutinetest.h"
#include "support/scriptedserver.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

using namespace velto;
using presentation::MediaLoader;
using service::HTTPRequest;
using test::answer;
using test::await;
using test::Exchange;
using test::RecordedRequest;
using test::ScriptedServer;
using test::waitUntil;

namespace
{

using Kind = base::TransportError::Kind;
using Bytes = base::Result<QByteArray>;

std::optional<Kind> kindOf(const Bytes &result)
{
    const auto *error = result ? nullptr : std::get_if<base::TransportError>(&result.error());
    return error != nullptr ? std::optional(error->kind) : std::nullopt;
}

HTTPRequest withToken(const QUrl &url)
{
    HTTPRequest request;
    request.url = url;
    request.headers = {{"Authorization", "Bearer secret"}};
    return request;
}

class MediaLoaderTest : public testing::Test
{
protected:
    [[nodiscard]] Bytes load(const QString &path)
    {
        return await(loader.load(withToken(server.url(path))));
    }

    ScriptedServer server;
    service::Transport transport;
    MediaLoader loader{transport};
};

/// Where a redirect leads, seen from the service.
enum class Where { SameHost, OtherHost, OtherPort, OutAndBack };
using Hop = std::tuple<int, Where>;

class MediaRedirect : public testing::TestWithParam<Hop>
{
protected:
    static void link(ScriptedServer &server, const QByteArray &path, const QUrl &target)
    {
        const int status = std::get<0>(GetParam());
        server.on(path, answer(status, "moved", {{"Location", target.toEncoded()}}));
    }
    /// Lets "/v1/media/a.png" lead to "/end" and gives the server that is asked for it.
    ScriptedServer &lay()
    {
        const QString path = QStringLiteral("/end");
        const QByteArray start = "/v1/media/a.png";
        switch (std::get<1>(GetParam())) {
        case Where::SameHost:
            link(service, start, service.url(path));
            return service;
        case Where::OtherHost:
            link(service, start, service.url(path, QStringLiteral("localhost")));
            return service;
        case Where::OtherPort:
            link(service, start, storage.url(path));
            return storage;
        case Where::OutAndBack:
            link(service, start,
                 storage.url(QStringLiteral("/middle"), QStringLiteral("localhost")));
            link(storage, "/middle", service.url(path));
            return service;
        }
        return service;
    }

    ScriptedServer service;
    ScriptedServer storage;
    service::Transport transport;
    MediaLoader loader{transport};
};

} // namespace

TEST_P(MediaRedirect, theTokenGoesNoFurtherThanTheService)
{
    ScriptedServer &last = lay();
    last.on("/end", answer(200, "picture"));
    const Bytes bytes =
        await(loader.load(withToken(service.url(QStringLiteral("/v1/media/a.png")))));
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(*bytes, "picture");
    EXPECT_EQ(service.requests().first().header("Authorization"), "Bearer secret");
    EXPECT_EQ(last.requests().last().target, "/end");
    const bool stays = std::get<1>(GetParam()) == Where::SameHost;
    EXPECT_EQ(last.requests().last().header("Authorization").has_value(), stays);
    for (const RecordedRequest &request : storage.requests())
        EXPECT_FALSE(request.header("Authorization").has_value());
}

INSTANTIATE_TEST_SUITE_P(Statuses, MediaRedirect,
                         testing::Combine(testing::Values(301, 302, 303, 307, 308),
                                          testing::Values(Where::SameHost, Where::OtherHost,
                                                          Where::OtherPort, Where::OutAndBack)));

TEST_F(MediaLoaderTest, sendsTheRequestAsItIs)
{
    server.on("/a.png", answer(200, "picture"));
    const Bytes bytes = load(QStringLiteral("/a.png"));
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(*bytes, "picture");
    EXPECT_EQ(server.requests().first().method, "GET");
    EXPECT_EQ(server.requests().first().header("Authorization"), "Bearer secret");
    EXPECT_EQ(HTTPRequest().timeout, std::chrono::seconds(60));
}

TEST_F(MediaLoaderTest, anyAnswerOf2xxIsGood)
{
    for (const int status : {200, 201, 206, 299}) {
        server.on("/a", answer(status, "picture"));
        EXPECT_EQ(load(QStringLiteral("/a")), Bytes("picture")) << status;
    }
}

TEST_F(MediaLoaderTest, anyOtherStatusFails)
{
    for (const int status : {300, 304, 400, 401, 403, 404, 416, 500, 503}) {
        server.on("/a", answer(status, "picture"));
        EXPECT_EQ(kindOf(load(QStringLiteral("/a"))), Kind::BadServerResponse) << status;
    }
}

TEST_F(MediaLoaderTest, whatIsNotHTTPFails)
{
    server.on("/a", [](const RecordedRequest &, const Exchange &exchange) {
        exchange.send("SSH-2.0-picture\r\n");
        exchange.close();
    });
    EXPECT_FALSE(load(QStringLiteral("/a")).has_value());
    for (const char *url : {"file:///etc/hostname", "data:image/png;base64,AAAA", "ftp://x/y"})
        EXPECT_FALSE(await(loader.load(withToken(QUrl(QString::fromUtf8(url))))).has_value());
}

TEST_F(MediaLoaderTest, aConnectionThatEndsTooSoonFails)
{
    server.on("/a", [](const RecordedRequest &, const Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\npart");
        exchange.close();
    });
    EXPECT_FALSE(load(QStringLiteral("/a")).has_value());
}

TEST_F(MediaLoaderTest, aBodyThatSaysItIsTooLargeIsNotRead)
{
    server.on("/a", [](const RecordedRequest &, const Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 104857600\r\n\r\n");
    });
    EXPECT_FALSE(load(QStringLiteral("/a")).has_value());
    EXPECT_TRUE(waitUntil([&] { return server.openConnectionCount() == 0; }));
}

TEST_F(MediaLoaderTest, aBodyThatTurnsOutTooLargeIsCutOff)
{
    constexpr qint64 whole = qint64(100) * 1024 * 1024;
    qint64 sent = 0;
    std::optional<Exchange> open;
    server.on("/a", [&](const RecordedRequest &, const Exchange &exchange) {
        exchange.beginStream();
        open = exchange;
    });
    std::optional<Bytes> result;
    const QCoro::Task<void> running =
        test::detail::store(loader.load(withToken(server.url(QStringLiteral("/a")))),
                            std::shared_ptr<std::optional<Bytes>>(&result, [](auto *) {}));
    const QByteArray piece(1024 * 1024, 'x');
    ASSERT_TRUE(waitUntil([&] {
        if (open && open->isOpen() && sent < whole) {
            open->send(piece);
            sent += piece.size();
        }
        return result.has_value();
    }));
    EXPECT_FALSE(result->has_value());
    EXPECT_LT(sent, whole);
    EXPECT_TRUE(waitUntil([&] { return !open->isOpen(); }));
}

TEST_F(MediaLoaderTest, theBoundIsExact)
{
    MediaLoader narrow(transport, 10);
    server.on("/fits", answer(200, "0123456789"));
    server.on("/not", answer(200, "0123456789a"));
    EXPECT_TRUE(await(narrow.load(withToken(server.url(QStringLiteral("/fits"))))).has_value());
    EXPECT_FALSE(await(narrow.load(withToken(server.url(QStringLiteral("/not"))))).has_value());
}

TEST_F(MediaLoaderTest, aLoadThatIsStoppedEndsItsRequest)
{
    std::stop_source stop;
    std::optional<Exchange> open;
    server.on("/a", [&](const RecordedRequest &, const Exchange &exchange) {
        exchange.beginStream();
        exchange.send("part");
        open = exchange;
        stop.request_stop();
    });
    const Bytes bytes =
        await(loader.load(withToken(server.url(QStringLiteral("/a"))), stop.get_token()));
    EXPECT_EQ(kindOf(bytes), Kind::Cancelled);
    EXPECT_TRUE(waitUntil([&] { return !open->isOpen(); }));
}
