// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/images/defaultnetworkimagecache.h"

#include <gtest/gtest.h>

#include <thread>

namespace velto::markdown
{
namespace
{

QUrl numbered(int number)
{
    return QUrl(QStringLiteral("http://pictures.example/%1.png").arg(number));
}

QImage square(int side)
{
    return {side, side, QImage::Format_RGB32};
}

TEST(NetworkImageCache, GivesTheVeryImageThatWasStored)
{
    DefaultNetworkImageCache cache;
    const QImage image = square(4);
    cache.setImage(image, numbered(1));
    ASSERT_TRUE(cache.image(numbered(1)));
    EXPECT_EQ(cache.image(numbered(1))->cacheKey(), image.cacheKey());
    EXPECT_EQ(cache.image(numbered(2)), std::nullopt);
}

TEST(NetworkImageCache, TheSharedOneHoldsAHundred)
{
    DefaultNetworkImageCache cache;
    for (int number = 0; number < 100; ++number)
        cache.setImage(square(1), numbered(number));
    for (int number = 99; number >= 0; --number)
        EXPECT_TRUE(cache.image(numbered(number)));
    cache.setImage(square(1), numbered(100));
    EXPECT_EQ(cache.image(numbered(99)), std::nullopt); // asked for longest ago
    EXPECT_TRUE(cache.image(numbered(0)));
    EXPECT_TRUE(cache.image(numbered(100)));
}

TEST(NetworkImageCache, TheCountIsAParameter)
{
    DefaultNetworkImageCache cache(2);
    for (int number = 0; number < 3; ++number)
        cache.setImage(square(1), numbered(number));
    EXPECT_EQ(cache.image(numbered(0)), std::nullopt);
    EXPECT_TRUE(cache.image(numbered(1)));
}

TEST(NetworkImageCache, AnImageStoredAgainIsOneImage)
{
    DefaultNetworkImageCache cache(2);
    cache.setImage(square(1), numbered(0));
    for (int round = 0; round < 3; ++round)
        cache.setImage(square(2), numbered(1));
    EXPECT_TRUE(cache.image(numbered(0)));
    EXPECT_EQ(cache.image(numbered(1))->size(), QSize(2, 2));
}

TEST(NetworkImageCache, LargePicturesMakeRoomForEachOther)
{
    DefaultNetworkImageCache cache(100, square(10).sizeInBytes() * 2);
    for (int number = 0; number < 3; ++number)
        cache.setImage(square(10), numbered(number));
    EXPECT_EQ(cache.image(numbered(0)), std::nullopt);
    EXPECT_TRUE(cache.image(numbered(1)));
    EXPECT_TRUE(cache.image(numbered(2)));
}

TEST(NetworkImageCache, OnePictureBeyondTheLimitStaysAlone)
{
    DefaultNetworkImageCache cache(100, 100);
    cache.setImage(square(1), numbered(0));
    cache.setImage(square(10), numbered(1));
    EXPECT_EQ(cache.image(numbered(0)), std::nullopt);
    EXPECT_TRUE(cache.image(numbered(1)));
    cache.setImage(square(1), numbered(2));
    EXPECT_EQ(cache.image(numbered(1)), std::nullopt);
    EXPECT_TRUE(cache.image(numbered(2)));
}

TEST(NetworkImageCache, IsUsedByManyThreadsAtOnce)
{
    DefaultNetworkImageCache cache(10);
    const auto use = [&cache] {
        for (int round = 0; round < 2000; ++round) {
            cache.setImage(square(1), numbered(round % 20));
            (void)cache.image(numbered((round + 7) % 20));
        }
    };
    std::thread first(use);
    std::thread second(use);
    first.join();
    second.join();
    int kept = 0;
    for (int number = 0; number < 20; ++number)
        kept += cache.image(numbered(number)) ? 1 : 0;
    EXPECT_EQ(kept, 10);
}

} // namespace
} // namespace velto::markdown
