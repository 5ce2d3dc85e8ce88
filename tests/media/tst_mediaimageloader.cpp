// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/media/mediaimageloader.h"

#include "markdown/pictures.h"
#include "support/coroutinetest.h"
#include "support/scriptedserver.h"

#include <gtest/gtest.h>

using namespace velto;
using presentation::MediaImageLoader;
using test::answer;
using test::await;
using test::Exchange;
using test::png;
using test::RecordedRequest;
using test::ScriptedServer;
using test::waitUntil;

namespace
{

using Image = base::Result<QImage>;
using Kind = base::TransportError::Kind;

class MediaImageLoaderTest : public testing::Test
{
protected:
    [[nodiscard]] Image load(const QUrl &url) { return await(loader.image(url)); }
    [[nodiscard]] Image load(const char *url) { return load(QUrl(QString::fromUtf8(url))); }
    [[nodiscard]] static std::optional<QByteArray> sentToken(const ScriptedServer &server)
    {
        return server.requests().last().header("Authorization");
    }

    ScriptedServer service;
    ScriptedServer elsewhere;
    service::Transport transport;
    std::optional<QString> token = QStringLiteral("secret");
    MediaImageLoader loader{transport, service.url(), [this] { return token; }};
};

} // namespace

TEST_F(MediaImageLoaderTest, aPictureOfTheServiceTakesTheToken)
{
    service.on("/v1/media/some/a.png", answer(200, png({3, 2}, Qt::green)));
    const Image image = load("media:some/a.png");
    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(image->size(), QSize(3, 2));
    EXPECT_EQ(image->pixelColor(0, 0), QColor(Qt::green));
    EXPECT_EQ(sentToken(service), "Bearer secret");
}

TEST_F(MediaImageLoaderTest, onlyTheServicesMediaTakesIt)
{
    const QString media = QStringLiteral("/v1/media/a.png");
    for (ScriptedServer *server : {&service, &elsewhere}) {
        server->on("/v1/media/a.png", answer(200, png({1, 1})));
        server->on("/elsewhere.png", answer(200, png({1, 1})));
    }
    EXPECT_TRUE(load(service.url(media)).has_value());
    EXPECT_EQ(sentToken(service), "Bearer secret");
    EXPECT_TRUE(load(service.url(QStringLiteral("/elsewhere.png"))).has_value());
    EXPECT_FALSE(sentToken(service).has_value());
    EXPECT_TRUE(load(service.url(media, QStringLiteral("localhost"))).has_value());
    EXPECT_FALSE(sentToken(service).has_value());
    EXPECT_TRUE(load(elsewhere.url(media)).has_value());
    EXPECT_FALSE(sentToken(elsewhere).has_value());
}

TEST_F(MediaImageLoaderTest, aDetourThroughDotsTakesNoTokenAlong)
{
    service.on("/v1/me", answer(200, png({1, 1})));
    service.on("/v1/media/../me", answer(200, png({1, 1})));
    EXPECT_FALSE(load("media:../me").has_value());
    EXPECT_FALSE(load("media:%2e%2e/me").has_value());
    EXPECT_TRUE(service.requests().isEmpty());
    QUrl url = service.url();
    url.setPath(QStringLiteral("/v1/media/../me"));
    (void)load(url);
    for (const RecordedRequest &request : service.requests())
        EXPECT_FALSE(request.header("Authorization").has_value()) << request.target.toStdString();
}

TEST_F(MediaImageLoaderTest, withoutATokenTheServiceDecides)
{
    token.reset();
    service.on("/v1/media/a.png", [](const RecordedRequest &request, const Exchange &exchange) {
        exchange.respond(request.header("Authorization") ? 200 : 401, png({1, 1}));
    });
    EXPECT_FALSE(load("media:a.png").has_value());
    EXPECT_FALSE(sentToken(service).has_value());
    token = QStringLiteral("later");
    EXPECT_TRUE(load("media:a.png").has_value());
    EXPECT_EQ(sentToken(service), "Bearer later");
}

TEST_F(MediaImageLoaderTest, aRedirectToTheStorageArrivesWithoutIt)
{
    const QUrl target = elsewhere.url(QStringLiteral("/stored"), QStringLiteral("localhost"));
    service.on("/v1/media/a.png", answer(302, "", {{"Location", target.toEncoded()}}));
    elsewhere.on("/stored", answer(200, png({2, 2})));
    EXPECT_TRUE(load("media:a.png").has_value());
    EXPECT_EQ(sentToken(service), "Bearer secret");
    EXPECT_FALSE(sentToken(elsewhere).has_value());
}

TEST_F(MediaImageLoaderTest, whatIsNoPictureFails)
{
    service.on("/v1/media/a.png", answer(200, "<html>"));
    service.on("/v1/media/b.png", answer(200, test::hugePng(100'000, 100'000, false)));
    service.on("/v1/media/c.svg", answer(200, "<svg xmlns='http://www.w3.org/2000/svg'/>"));
    service.on("/v1/media/d.png", answer(404, png({1, 1})));
    for (const char *url : {"media:a.png", "media:b.png", "media:c.svg", "media:d.png",
                            "media:", "", "data:image/png;base64,AAAA", "relative.png"})
        EXPECT_FALSE(load(url).has_value()) << url;
}

TEST_F(MediaImageLoaderTest, aVideoBehindAnImageLinkFailsByItself)
{
    service.on("/v1/media/a.mp4", answer(200, QByteArray("\0\0\0\x18"
                                                         "ftypmp42",
                                                         12)));
    EXPECT_FALSE(load("media:a.mp4").has_value());
    EXPECT_EQ(service.count("/v1/media/a.mp4"), 1);
}

TEST_F(MediaImageLoaderTest, aPictureThatComesBackIsStillThereUntilForgotten)
{
    service.on("/v1/media/a.png", answer(200, png({1, 1})));
    EXPECT_TRUE(load("media:a.png").has_value());
    EXPECT_TRUE(load("media:a.png").has_value());
    EXPECT_EQ(service.count("/v1/media/a.png"), 1);
    loader.forget();
    EXPECT_TRUE(load("media:a.png").has_value());
    EXPECT_EQ(service.count("/v1/media/a.png"), 2);
}

TEST_F(MediaImageLoaderTest, aFailureIsTriedAgainWhenAskedAgain)
{
    service.script("/v1/media/a.png", {answer(503), answer(200, png({1, 1}))});
    EXPECT_FALSE(load("media:a.png").has_value());
    EXPECT_TRUE(load("media:a.png").has_value());
}

TEST_F(MediaImageLoaderTest, stoppingEndsTheRequest)
{
    std::stop_source stop;
    std::optional<Exchange> open;
    service.on("/v1/media/a.png", [&](const RecordedRequest &, const Exchange &exchange) {
        exchange.beginStream();
        open = exchange;
        stop.request_stop();
    });
    const Image image = await(loader.image(QUrl(QStringLiteral("media:a.png")), stop.get_token()));
    ASSERT_FALSE(image.has_value());
    EXPECT_TRUE(base::isCancellation(image.error()));
    EXPECT_TRUE(waitUntil([&] { return !open->isOpen(); }));
}

TEST_F(MediaImageLoaderTest, mayGoWhileItLoads)
{
    std::optional<Exchange> open;
    service.on("/v1/media/a.png", [&](const RecordedRequest &, const Exchange &exchange) {
        exchange.beginStream();
        open = exchange;
    });
    auto shortLived =
        std::make_unique<MediaImageLoader>(transport, service.url(), [this] { return token; });
    const auto out = std::make_shared<std::optional<Image>>();
    const QCoro::Task<void> running =
        test::detail::store(shortLived->image(QUrl(QStringLiteral("media:a.png"))), out);
    ASSERT_TRUE(waitUntil([&] { return open.has_value(); }));
    shortLived.reset();
    ASSERT_TRUE(waitUntil([&] { return out->has_value(); }));
    EXPECT_TRUE(base::isCancellation((*out)->error()));
}
