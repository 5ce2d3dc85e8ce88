// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/images/imagedecoder.h"
#include "pictures.h"

#include <QColorSpace>
#include <QImageReader>

#include <gtest/gtest.h>

namespace velto::markdown
{
namespace
{

using namespace std::chrono_literals;

QImage decodedOrNull(const QByteArray &bytes)
{
    return decodeImage(bytes).value_or(QImage());
}

class PixelFormat : public testing::TestWithParam<const char *>
{};

TEST_P(PixelFormat, IsDecoded)
{
    const QByteArray file = test::encoded(test::plainImage({8, 4}, Qt::blue), GetParam());
    const QImage image = decodedOrNull(file);
    ASSERT_EQ(image.size(), QSize(8, 4));
    const QColor middle = image.pixelColor(4, 2);
    EXPECT_GT(middle.blue(), 250);
    EXPECT_LT(middle.red() + middle.green(), 10);
}

INSTANTIATE_TEST_SUITE_P(All, PixelFormat,
                         testing::Values("png", "jpeg", "webp", "bmp", "ico", "tiff"),
                         [](const auto &info) { return std::string(info.param); });

TEST(ImageDecoder, AnAnimationGivesItsFirstFrame)
{
    const QImage image = decodedOrNull(test::gif({Qt::red, Qt::green}));
    ASSERT_EQ(image.size(), QSize(1, 1));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::red));
}

TEST(ImageDecoder, TheCameraIsNotTurned)
{
    const QByteArray file = test::turnedJpeg({8, 4}, 6);
    QBuffer buffer;
    buffer.setData(file);
    const QImageReader reader(&buffer);
    ASSERT_EQ(reader.transformation(), QImageIOHandler::TransformationRotate90);
    EXPECT_EQ(decodedOrNull(file).size(), QSize(8, 4));
}

TEST(ImageDecoder, TransparencyStays)
{
    const QImage image = decodedOrNull(test::png({2, 2}, QColor(255, 0, 0, 100)));
    EXPECT_EQ(image.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 100);
}

TEST(ImageDecoder, WhatIsOpaqueIsDrawnAsSuch)
{
    QImage grey(3, 3, QImage::Format_Grayscale8);
    grey.fill(Qt::white);
    EXPECT_EQ(decodedOrNull(test::encoded(grey, "png")).format(), QImage::Format_RGB32);
}

TEST(ImageDecoder, WideColoursAreConverted)
{
    QImage wide = test::plainImage({2, 2}, QColor(0, 200, 0));
    wide.setColorSpace(QColorSpace::DisplayP3);
    const QImage image = decodedOrNull(test::encoded(wide, "png"));
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.colorSpace(), QColorSpace(QColorSpace::SRgb));
    EXPECT_GT(image.pixelColor(0, 0).green(), 200);
}

struct NoPicture
{
    const char *name;
    QByteArray bytes;
};

class NotDecoded : public testing::TestWithParam<NoPicture>
{};

TEST_P(NotDecoded, GivesNothing)
{
    EXPECT_EQ(decodeImage(GetParam().bytes), std::nullopt);
}

const QByteArray photo = test::encoded(test::plainImage({64, 64}, Qt::red), "webp");
const QByteArray svg = R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"/>)";
const QByteArray xpm = "/* XPM */\nstatic char *x[] = {\n\"1 1 1 1\",\n\"a c #ff0000\",\n\"a\"};\n";

INSTANTIATE_TEST_SUITE_P(
    All, NotDecoded,
    testing::Values(NoPicture{"Empty", {}}, NoPicture{"Text", "no picture"},
                    NoPicture{"HTML", "<!doctype html><title>404</title>"},
                    NoPicture{"TruncatedPng", test::png({64, 64}).chopped(40)},
                    NoPicture{"TruncatedWebP", photo.left(photo.size() / 2)},
                    NoPicture{"PngSignatureAlone", QByteArray("\x89PNG\r\n\x1a\n", 8)},
                    NoPicture{"Svg", svg}, NoPicture{"Xpm", xpm},
                    NoPicture{"Netpbm", "P3 1 1 255 255 0 0\n"},
                    NoPicture{"HugeWithoutPixels", test::hugePng(60000, 60000, false)},
                    NoPicture{"OverflowingSize", test::hugePng(0x7fffffff, 0x7fffffff, false)}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(ImageDecoder, ABombOfPixelsIsNotUnpacked)
{
    const QByteArray file = test::hugePng(20000, 20000, true);
    ASSERT_LT(file.size(), 100 * 1024);
    EXPECT_EQ(decodeImage(file), std::nullopt);
}

TEST(ImageDecoder, TheLimitOfPixelsIsExact)
{
    const QByteArray file = test::png({10, 10});
    EXPECT_TRUE(decodeImage(file, {.pixels = 100}).has_value());
    EXPECT_FALSE(decodeImage(file, {.pixels = 99}).has_value());
}

TEST(ImageDecoder, APictureOfATelephoneFits)
{
    const QByteArray file = test::hugePng(8160, 6120, true); // 50 megapixels
    EXPECT_EQ(decodedOrNull(file).size(), QSize(8160, 6120));
}

TEST(ImageDecoder, StopsWhenItsTimeIsUp)
{
    EXPECT_EQ(decodeImage(test::png({4, 4}), {.time = 0ms}), std::nullopt);
}

TEST(ImageDecoder, StopsInTheMiddleWhenNobodyWantsIt)
{
    QImage noisy(600, 600, QImage::Format_RGB32);
    for (int y = 0; y < noisy.height(); ++y) {
        for (int x = 0; x < noisy.width(); ++x)
            noisy.setPixel(x, y, qRgb(x * y, x ^ y, x + 7 * y));
    }
    const QByteArray file = test::encoded(noisy, "jpeg");
    int questions = 0;
    const auto never = [&] { return ++questions < 0; };
    ASSERT_TRUE(decodeImage(file, {}, never).has_value());
    const int all = questions;
    questions = 0;
    const auto afterSome = [&] { return ++questions > 5; };
    EXPECT_FALSE(decodeImage(file, {}, afterSome).has_value());
    EXPECT_LT(questions, all);
}

} // namespace
} // namespace velto::markdown
