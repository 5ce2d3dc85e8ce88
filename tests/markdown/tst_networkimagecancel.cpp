// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "imageloadertest.h"

#include <thread>

namespace velto::markdown
{
namespace
{

using test::Exchange;
using test::RecordedRequest;

class Cancel : public ImageLoaderTest
{
protected:
    Cancel() { hold(); }

    [[nodiscard]] QCoro::Task<base::Result<QImage>> ask()
    {
        return m_loader->image(m_server.url(m_path), m_stop.get_token());
    }
    [[nodiscard]] QCoro::Task<base::Result<QImage>> askForGood()
    {
        return m_loader->image(m_server.url(m_path));
    }

    std::stop_source m_stop;
};

TEST_F(Cancel, BeforeTheStartAsksNobody)
{
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(ask())), Kind::Cancelled);
    EXPECT_EQ(requests(), 0);
}

TEST_F(Cancel, RightAfterTheStart)
{
    QCoro::Task<base::Result<QImage>> task = ask();
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Cancelled);
}

TEST_F(Cancel, TheLastOneWhoLeavesEndsTheRequest)
{
    QCoro::Task<base::Result<QImage>> task = ask();
    ASSERT_TRUE(isHolding(1));
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Cancelled);
    EXPECT_TRUE(isClosed(0));
}

TEST_F(Cancel, InTheMiddleOfTheBody)
{
    QCoro::Task<base::Result<QImage>> task = ask();
    ASSERT_TRUE(isHolding(1));
    m_held.first().beginStream();
    m_held.first().send(test::png({64, 64}).left(50));
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Cancelled);
    EXPECT_TRUE(isClosed(0));
}

TEST_F(Cancel, OneOfTwoLeavesTheOtherItsPicture)
{
    QCoro::Task<base::Result<QImage>> leaving = ask();
    QCoro::Task<base::Result<QImage>> staying = askForGood();
    ASSERT_TRUE(isHolding(1));
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(std::move(leaving))), Kind::Cancelled);
    EXPECT_TRUE(m_held.first().isOpen());
    m_held.first().respond(200, test::png({2, 2}));
    EXPECT_TRUE(test::await(std::move(staying)));
    EXPECT_EQ(requests(), 1);
}

TEST_F(Cancel, WhoAsksAfterwardsGetsARequestOfHisOwn)
{
    QCoro::Task<base::Result<QImage>> leaving = ask();
    ASSERT_TRUE(isHolding(1));
    m_stop.request_stop();
    EXPECT_FALSE(test::await(std::move(leaving)));
    QCoro::Task<base::Result<QImage>> again = askForGood();
    ASSERT_TRUE(isHolding(2));
    m_held.last().respond(200, test::png({2, 2}));
    EXPECT_TRUE(test::await(std::move(again)));
}

TEST_F(Cancel, WhoAsksRightAwayKeepsTheRequest)
{
    QCoro::Task<base::Result<QImage>> leaving = ask();
    ASSERT_TRUE(isHolding(1));
    m_stop.request_stop();
    QCoro::Task<base::Result<QImage>> again = askForGood();
    EXPECT_FALSE(test::await(std::move(leaving)));
    m_held.first().respond(200, test::png({2, 2}));
    EXPECT_TRUE(test::await(std::move(again)));
    EXPECT_EQ(requests(), 1);
}

TEST_F(Cancel, FromAnotherThread)
{
    QCoro::Task<base::Result<QImage>> task = ask();
    ASSERT_TRUE(isHolding(1));
    std::thread elsewhere([this] { m_stop.request_stop(); });
    elsewhere.join();
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Cancelled);
    EXPECT_TRUE(isClosed(0));
}

TEST_F(Cancel, AfterThePictureHasCome)
{
    answerWith(test::png({2, 2}));
    EXPECT_TRUE(test::await(ask()));
    m_stop.request_stop();
    EXPECT_TRUE(test::await(askForGood()));
    EXPECT_EQ(requests(), 1);
}

TEST_F(Cancel, OneWhoWaitsForItsTurnNeverAsks)
{
    restart({.requestsAtOnce = 1});
    QCoro::Task<base::Result<QImage>> first = askForGood();
    ASSERT_TRUE(isHolding(1));
    const QUrl other = m_server.url(QStringLiteral("/other"));
    QCoro::Task<base::Result<QImage>> waiting = m_loader->image(other, m_stop.get_token());
    m_stop.request_stop();
    EXPECT_EQ(kindOf(test::await(std::move(waiting))), Kind::Cancelled);
    m_held.first().respond(200, test::png({2, 2}));
    EXPECT_TRUE(test::await(std::move(first)));
    EXPECT_EQ(m_server.count("/other"), 0);
}

TEST_F(Cancel, MakesRoomForTheNext)
{
    restart({.requestsAtOnce = 1});
    m_server.on("/other", test::answer(200, test::png({3, 3})));
    QCoro::Task<base::Result<QImage>> first = ask();
    ASSERT_TRUE(isHolding(1));
    QCoro::Task<base::Result<QImage>> next =
        m_loader->image(m_server.url(QStringLiteral("/other")));
    m_stop.request_stop();
    EXPECT_FALSE(test::await(std::move(first)));
    EXPECT_TRUE(test::await(std::move(next)));
}

TEST_F(Cancel, TheEndOfTheLoaderCancelsEverything)
{
    restart({.requestsAtOnce = 1});
    QCoro::Task<base::Result<QImage>> asked = askForGood();
    QCoro::Task<base::Result<QImage>> waiting =
        m_loader->image(m_server.url(QStringLiteral("/other")));
    ASSERT_TRUE(isHolding(1));
    m_loader.reset();
    EXPECT_EQ(kindOf(test::await(std::move(asked))), Kind::Cancelled);
    EXPECT_EQ(kindOf(test::await(std::move(waiting))), Kind::Cancelled);
    EXPECT_TRUE(isClosed(0));
    EXPECT_EQ(m_server.count("/other"), 0);
}

TEST_F(Cancel, TheEndOfTheLoaderWhileItLooksOnDisk)
{
    QCoro::Task<base::Result<QImage>> task = askForGood();
    m_loader.reset();
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Cancelled);
    EXPECT_EQ(requests(), 0);
}

TEST_F(Cancel, TheEndOfTheLoaderWhileItDecodes)
{
    const QByteArray large = test::hugePng(8000, 8000, true);
    QCoro::Task<base::Result<QImage>> task = askForGood();
    ASSERT_TRUE(isHolding(1));
    m_held.first().respond(200, large);
    m_held.first().close();
    ASSERT_TRUE(isClosed(0));
    m_loader.reset();
    EXPECT_EQ(kindOf(test::await(std::move(task))), Kind::Cancelled);
}

} // namespace
} // namespace velto::markdown
