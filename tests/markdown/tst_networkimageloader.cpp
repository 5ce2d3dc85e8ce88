// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "imageloadertest.h"

namespace velto::markdown
{
namespace
{

using test::Exchange;
using test::RecordedRequest;

class Loader : public ImageLoaderTest
{};

TEST_F(Loader, GivesThePicture)
{
    answerWith(test::png({6, 3}));
    const base::Result<QImage> image = load(m_path);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(6, 3));
    EXPECT_EQ(image->pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(Loader, AsksForPicturesAndTellsNothingOfTheUser)
{
    answerWith(test::png({1, 1}));
    ASSERT_TRUE(load(m_path));
    const RecordedRequest &request = m_server.requests().first();
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.header("Accept"), "image/*");
    for (const char *name : {"Authorization", "Cookie", "Referer", "User-Agent"})
        EXPECT_EQ(request.header(name), std::nullopt) << name;
}

TEST_F(Loader, WaitsFifteenSecondsAndTakesThirtyTwoMebibytes)
{
    const service::ImageFetchLimits limits;
    EXPECT_EQ(limits.timeout, std::chrono::seconds(15));
    EXPECT_EQ(limits.bytes, 33554432);
}

TEST_F(Loader, TwoWhoAskAtOnceMakeOneRequestAndBothGetThePicture)
{
    answerWith(test::png({2, 2}));
    QCoro::Task<base::Result<QImage>> first = m_loader->image(m_server.url(m_path));
    QCoro::Task<base::Result<QImage>> second = m_loader->image(m_server.url(m_path));
    const base::Result<QImage> one = test::await(std::move(first));
    const base::Result<QImage> other = test::await(std::move(second));
    ASSERT_TRUE(one && other);
    EXPECT_EQ(one->cacheKey(), other->cacheKey());
    EXPECT_EQ(requests(), 1);
}

TEST_F(Loader, TwoWhoAskAtOnceShareAFailure)
{
    answerWith({}, 500);
    QCoro::Task<base::Result<QImage>> first = m_loader->image(m_server.url(m_path));
    QCoro::Task<base::Result<QImage>> second = m_loader->image(m_server.url(m_path));
    EXPECT_EQ(kindOf(test::await(std::move(first))), Kind::BadServerResponse);
    EXPECT_EQ(kindOf(test::await(std::move(second))), Kind::BadServerResponse);
    EXPECT_EQ(requests(), 1);
}

TEST_F(Loader, OneWhoJoinsWhileTheRequestIsOutSharesIt)
{
    hold();
    QCoro::Task<base::Result<QImage>> first = m_loader->image(m_server.url(m_path));
    ASSERT_TRUE(isHolding(1));
    QCoro::Task<base::Result<QImage>> second = m_loader->image(m_server.url(m_path));
    m_held.first().respond(200, test::png({2, 2}));
    EXPECT_TRUE(test::await(std::move(first)));
    EXPECT_TRUE(test::await(std::move(second)));
    EXPECT_EQ(requests(), 1);
}

TEST_F(Loader, AnotherAddressIsAnotherRequest)
{
    m_server.on("/a", test::answer(200, test::png({1, 1})));
    m_server.on("/b", test::answer(200, test::png({2, 2})));
    QCoro::Task<base::Result<QImage>> first = m_loader->image(m_server.url(QStringLiteral("/a")));
    QCoro::Task<base::Result<QImage>> second = m_loader->image(m_server.url(QStringLiteral("/b")));
    EXPECT_EQ(test::await(std::move(first))->width(), 1);
    EXPECT_EQ(test::await(std::move(second))->width(), 2);
}

TEST_F(Loader, ADecodedPictureIsGivenWithoutARequest)
{
    answerWith(test::png({2, 2}));
    const base::Result<QImage> first = load(m_path);
    const base::Result<QImage> second = load(m_path);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->cacheKey(), second->cacheKey());
    EXPECT_EQ(requests(), 1);
}

TEST_F(Loader, AKnownPictureIsThereAtOnce)
{
    const QImage image = test::plainImage({3, 3}, Qt::blue);
    m_cache->setImage(image, m_server.url(m_path));
    QCoro::Task<base::Result<QImage>> task = m_loader->image(m_server.url(m_path));
    EXPECT_TRUE(task.isReady());
    EXPECT_EQ(test::await(std::move(task))->cacheKey(), image.cacheKey());
}

struct Status
{
    int status;
    bool isSuccess;
};

class LoaderStatus : public ImageLoaderTest, public testing::WithParamInterface<Status>
{};

TEST_P(LoaderStatus, OnlyTheTwoHundredsPass)
{
    answerWith(test::png({2, 2}), GetParam().status);
    const base::Result<QImage> image = load(m_path);
    EXPECT_EQ(image.has_value(), GetParam().isSuccess);
    if (!GetParam().isSuccess) {
        EXPECT_EQ(kindOf(image), Kind::BadServerResponse);
    }
}

INSTANTIATE_TEST_SUITE_P(All, LoaderStatus,
                         testing::Values(Status{200, true}, Status{201, true}, Status{299, true},
                                         Status{300, false}, Status{400, false}, Status{401, false},
                                         Status{404, false}, Status{410, false}, Status{500, false},
                                         Status{503, false}),
                         [](const auto &info) { return std::to_string(info.param.status); });

TEST_F(Loader, NotModifiedIsAFailure)
{
    m_server.on("/picture", [](const RecordedRequest &, const Exchange &exchange) {
        exchange.send("HTTP/1.1 304 Not Modified\r\n\r\n");
    });
    EXPECT_EQ(kindOf(load(m_path)), Kind::BadServerResponse);
}

TEST_F(Loader, BytesThatAreNoPictureFailAndAreAskedForAgain)
{
    m_server.script("/picture",
                    {test::answer(200, "no picture"), test::answer(200, test::png({2, 2}))});
    EXPECT_EQ(kindOf(load(m_path)), Kind::CannotDecodeContentData);
    EXPECT_TRUE(load(m_path));
    EXPECT_EQ(requests(), 2);
}

TEST_F(Loader, BytesThatAreNoPictureAreNotKeptOnDisk)
{
    restart(onDisk());
    m_server.script("/picture",
                    {test::answer(200, "no picture"), test::answer(200, test::png({2, 2}))});
    EXPECT_FALSE(load(m_path));
    restart(onDisk());
    EXPECT_TRUE(load(m_path));
}

TEST_F(Loader, AnEmptyAnswerIsNoPicture)
{
    answerWith({});
    EXPECT_EQ(kindOf(load(m_path)), Kind::CannotDecodeContentData);
}

TEST_F(Loader, ATruncatedPictureIsNone)
{
    answerWith(test::png({64, 64}).chopped(40));
    EXPECT_EQ(kindOf(load(m_path)), Kind::CannotDecodeContentData);
}

TEST_F(Loader, AnAnswerThatBreaksOffIsAFailureOfTheConnection)
{
    m_server.on("/picture", [](const RecordedRequest &, const Exchange &exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nabc");
        exchange.close();
    });
    EXPECT_EQ(kindOf(load(m_path)), Kind::ConnectionLost);
}

TEST_F(Loader, AServerErrorIsForgotten)
{
    m_server.script("/picture", {test::answer(503), test::answer(200, test::png({2, 2}))});
    EXPECT_FALSE(load(m_path));
    EXPECT_TRUE(load(m_path));
}

TEST_F(Loader, APictureTooLargeByItsOwnWordIsNotRead)
{
    m_server.on("/picture", [this](const RecordedRequest &, const Exchange &exchange) {
        m_held.append(exchange);
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 104857600\r\n\r\n");
    });
    EXPECT_EQ(kindOf(load(m_path)), Kind::Other);
    EXPECT_TRUE(isClosed(0));
}

TEST_F(Loader, APictureWithoutEndIsCutOff)
{
    m_server.on("/picture", [this](const RecordedRequest &, const Exchange &exchange) {
        m_held.append(exchange);
        exchange.beginStream();
    });
    QCoro::Task<base::Result<QImage>> task = m_loader->image(m_server.url(m_path));
    ASSERT_TRUE(isHolding(1));
    const QByteArray piece(1024 * 1024, 'x');
    int sent = 0;
    ASSERT_TRUE(test::waitUntil([&] {
        if (sent < 100 && m_held.first().isOpen()) {
            m_held.first().send(piece);
            ++sent;
        }
        return task.isReady();
    }));
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Other);
    EXPECT_GE(sent, 32);
    EXPECT_LT(sent, 100);
    EXPECT_TRUE(isClosed(0));
}

TEST_F(Loader, HugeDimensionsFail)
{
    answerWith(test::hugePng(60000, 60000, false));
    EXPECT_EQ(kindOf(load(m_path)), Kind::CannotDecodeContentData);
}

TEST_F(Loader, FollowsRedirects)
{
    m_server.on("/old", test::answer(302, {}, {{"Location", "/picture"}}));
    answerWith(test::png({5, 5}));
    const base::Result<QImage> image = load(QStringLiteral("/old"));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width(), 5);
}

TEST_F(Loader, SilenceIsATimeOut)
{
    restart({}, 100, {.timeout = std::chrono::milliseconds(30)});
    hold();
    EXPECT_EQ(kindOf(load(m_path)), Kind::TimedOut);
    EXPECT_TRUE(isClosed(0));
}

TEST_F(Loader, ATimeOutIsForgotten)
{
    restart({}, 100, {.timeout = std::chrono::milliseconds(30)});
    hold();
    EXPECT_FALSE(load(m_path));
    answerWith(test::png({2, 2}));
    EXPECT_TRUE(load(m_path));
}

class OtherAddress : public ImageLoaderTest, public testing::WithParamInterface<const char *>
{};

TEST_P(OtherAddress, IsNotAskedAtAll)
{
    int calls = 0;
    const ImageData data = [&](QUrl, std::stop_token) -> QCoro::Task<base::Result<ImageResponse>> {
        ++calls;
        co_return ImageResponse{200, test::png({1, 1})};
    };
    DefaultNetworkImageLoader loader(data, *m_cache, {});
    const QUrl url(QString::fromLatin1(GetParam()));
    EXPECT_EQ(kindOf(test::await(loader.image(url))), Kind::BadServerResponse);
    EXPECT_EQ(calls, 0);
}

INSTANTIATE_TEST_SUITE_P(All, OtherAddress,
                         testing::Values("file:///etc/hostname", "data:image/png;base64,AAAA",
                                         "qrc:/picture.png", "ftp://a.example/x.png", "media:a.png",
                                         "/picture.png", ""));

TEST_F(Loader, AnAnswerThatIsNotHttpIsBad)
{
    const ImageData data = [](QUrl, std::stop_token) -> QCoro::Task<base::Result<ImageResponse>> {
        co_return ImageResponse{std::nullopt, test::png({1, 1})};
    };
    DefaultNetworkImageLoader loader(data, *m_cache, {});
    EXPECT_EQ(kindOf(test::await(loader.image(m_server.url()))), Kind::BadServerResponse);
}

TEST_F(Loader, WebPAndTheFirstFrameOfAGif)
{
    m_server.on("/webp",
                test::answer(200, test::encoded(test::plainImage({8, 8}, Qt::blue), "webp")));
    m_server.on("/gif", test::answer(200, test::gif({Qt::green, Qt::red})));
    const base::Result<QImage> webp = load(QStringLiteral("/webp"));
    ASSERT_TRUE(webp);
    EXPECT_EQ(webp->size(), QSize(8, 8));
    const base::Result<QImage> gif = load(QStringLiteral("/gif"));
    ASSERT_TRUE(gif);
    EXPECT_EQ(gif->pixelColor(0, 0), QColor(Qt::green));
}

TEST_F(Loader, NoMoreThanItsNumberOfRequestsAtOnce)
{
    restart({.requestsAtOnce = 2});
    QList<Exchange> held;
    std::vector<QCoro::Task<base::Result<QImage>>> tasks;
    for (int number = 0; number < 5; ++number) {
        const QString path = QStringLiteral("/%1").arg(number);
        m_server.on(path.toLatin1(), [&held](const RecordedRequest &, const Exchange &exchange) {
            held.append(exchange);
        });
        tasks.push_back(m_loader->image(m_server.url(path)));
    }
    for (qsizetype answered = 0; answered < 5; ++answered) {
        const qsizetype expected = std::min<qsizetype>(answered + 2, 5);
        ASSERT_TRUE(test::waitUntil([&] { return held.size() == expected; }));
        held[answered].respond(200, test::png({1, 1}));
        ASSERT_TRUE(
            test::waitUntil([&] { return tasks[static_cast<std::size_t>(answered)].isReady(); }));
        EXPECT_LE(held.size(), answered + 3);
    }
    for (auto &task : tasks)
        EXPECT_TRUE(test::await(std::move(task)));
}

} // namespace
} // namespace velto::markdown
