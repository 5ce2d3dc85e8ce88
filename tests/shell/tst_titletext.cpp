// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/titletext.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QQuickWindow>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace velto::shell
{

namespace
{

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

class TitleTextTest : public testing::Test
{
protected:
    TitleTextTest()
    {
        window.resize(300, 40);
        window.setColor(Qt::white);
        title.setColor(Qt::black);
        title.setMarkColor(Qt::red);
        title.setParentItem(window.contentItem());
        title.setSize({280, title.implicitHeight()});
        window.show();
    }

    QImage draw() { return window.grabWindow(); }
    void setTitle(const char *words, const char *query = "")
    {
        title.setText(text(words));
        title.setQuery(text(query));
        title.ensurePolished();
    }
    /// The columns that hold a pixel of about that colour; from after to when there is none.
    static std::pair<int, int> extent(const QImage &image, bool red)
    {
        int from = image.width();
        int to = -1;
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                const QColor pixel = image.pixelColor(x, y);
                const bool isRed = pixel.red() > 200 && pixel.green() < 120;
                const bool isBlack = pixel.red() < 120 && pixel.green() < 120;
                if (red ? !isRed : !isBlack)
                    continue;
                from = std::min(from, x);
                to = std::max(to, x);
            }
        }
        return {from, to};
    }

    QQuickWindow window;
    TitleText title;
};

} // namespace

TEST_F(TitleTextTest, showsAShortTitleWhole)
{
    setTitle("Harbour");
    EXPECT_EQ(title.shownText(), text("Harbour"));
    const auto [from, to] = extent(draw(), false);
    EXPECT_LT(from, 6);
    EXPECT_GT(to, 30);
    EXPECT_LT(to, 80);
}

TEST_F(TitleTextTest, marksTheQueryInItsOwnColour)
{
    setTitle("Harbour lights", "LIGHT");
    EXPECT_EQ(title.markedTexts(), QStringList{text("light")});
    const QImage image = draw();
    const auto [redFrom, redTo] = extent(image, true);
    const auto [blackFrom, blackTo] = extent(image, false);
    EXPECT_LT(blackFrom, redFrom);
    EXPECT_LT(redTo, blackTo);
    EXPECT_LT(redFrom, redTo);
}

TEST_F(TitleTextTest, marksNothingForABlankQuery)
{
    setTitle("Harbour lights", "   ");
    EXPECT_EQ(title.markedTexts(), QStringList());
    EXPECT_EQ(extent(draw(), true).second, -1);
}

TEST_F(TitleTextTest, marksAreBolder)
{
    setTitle("mmmmmmmmmm");
    const int plain = extent(draw(), false).second;
    setTitle("mmmmmmmmmm", "m");
    EXPECT_GT(extent(draw(), true).second, plain);
}

TEST_F(TitleTextTest, truncatesAtTheEnd)
{
    setTitle("A title that is much longer than any column of a window can be, however wide");
    EXPECT_TRUE(title.shownText().endsWith(QChar(0x2026)));
    EXPECT_TRUE(title.shownText().startsWith(text("A title that is")));
    EXPECT_LE(extent(draw(), false).second, 280);
    title.setSize({80, title.implicitHeight()});
    title.ensurePolished();
    EXPECT_LT(title.shownText().size(), 20);
    EXPECT_LE(extent(draw(), false).second, 80);
}

TEST_F(TitleTextTest, marksOnlyWhatShowsOfATruncatedTitle)
{
    title.setSize({80, title.implicitHeight()});
    setTitle("Ferry times and the times of the other ferry times", "times");
    ASSERT_TRUE(title.shownText().endsWith(QChar(0x2026)));
    ASSERT_EQ(title.markedTexts().size(), 1);
    EXPECT_TRUE(text("times").startsWith(title.markedTexts().first()));
}

TEST_F(TitleTextTest, aTitleFromRightToLeftBeginsAtTheRight)
{
    setTitle("מזג אוויר");
    EXPECT_GT(extent(draw(), false).first, 150);
}

TEST_F(TitleTextTest, aTruncatedTitleFromRightToLeftEndsAtTheLeft)
{
    for (const char *words : {"מזג אוויר ועוד הרבה מילים שאין להן מקום בשורה אחת של החלון הזה בכלל",
                              "جدول المد والجزر للميناء الشمالي في الأسبوع الثاني من سبتمبر القادم",
                              "עברית עם English בתוכה וגם עוד הרבה מילים שאין להן מקום כאן"}) {
        title.setSize({160, title.implicitHeight()});
        setTitle(words);
        EXPECT_TRUE(title.shownText().endsWith(QChar(0x2026)));
        EXPECT_TRUE(text(words).startsWith(title.shownText().chopped(1))) << words;
        const QImage whole = draw();
        EXPECT_LE(extent(whole, false).second, 160) << words;
        // The ellipsis stands at the left and at the foot of the line.
        const int from = extent(whole, false).first;
        int top = whole.height();
        for (int x = from; x < from + 6; ++x) {
            for (int y = 0; y < whole.height(); ++y) {
                if (whole.pixelColor(x, y).lightness() < 120)
                    top = std::min(top, y);
            }
        }
        EXPECT_GT(top, title.implicitHeight() / 2) << words;
        title.setX(40); // nothing sticks out to the left of it
        EXPECT_GE(extent(draw(), false).first, 40) << words;
        title.setX(0);
    }
}

TEST_F(TitleTextTest, emojiAreInColour)
{
    setTitle("🌫️🔴");
    const QImage image = draw();
    bool isColoured = false;
    for (int x = 0; x < 40; ++x) {
        for (int y = 0; y < image.height(); ++y)
            isColoured = isColoured || image.pixelColor(x, y).saturation() > 60;
    }
    EXPECT_TRUE(isColoured);
    EXPECT_EQ(extent(image, false).second, -1); // neither of them in black
}

TEST_F(TitleTextTest, staysOnOneLine)
{
    setTitle("first\nsecond\tthird\u2028fourth");
    EXPECT_EQ(title.shownText(), text("first second third fourth"));
    EXPECT_LT(title.implicitHeight(), 2 * QFontMetricsF(QGuiApplication::font()).height());
}

TEST_F(TitleTextTest, isNeverTakenForMarkup)
{
    setTitle("<b>bold</b> &amp; <img src='http://127.0.0.1/x'>");
    EXPECT_TRUE(title.shownText().startsWith(text("<b>bold</b> &amp;")));
}

TEST_F(TitleTextTest, anEndlessTitleIsLaidOutInBoundedTime)
{
    title.setText(QString(5'000'000, QLatin1Char('w')));
    title.setQuery(text("w"));
    title.ensurePolished();
    EXPECT_LT(title.shownText().size(), 100);
}

TEST_F(TitleTextTest, nothingShowsOfNothing)
{
    setTitle("");
    EXPECT_EQ(extent(draw(), false).second, -1);
    title.setSize({0, 20});
    setTitle("words", "o");
    EXPECT_EQ(title.shownText(), text("…"));
    EXPECT_EQ(title.markedTexts(), QStringList());
}

TEST_F(TitleTextTest, linesOfAllScriptsShareAHeight)
{
    const qreal height = title.implicitHeight();
    for (const char *words : {"東京の天気", "👩🏽‍🚀 launch", "ไทย", "Ég"}) {
        setTitle(words);
        EXPECT_EQ(title.implicitHeight(), height) << words;
        EXPECT_EQ(title.shownText(), text(words));
    }
}

} // namespace velto::shell
