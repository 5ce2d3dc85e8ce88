// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/tokens.h"

#include <QCoreApplication>
#include <QFont>
#include <QGuiApplication>
#include <QQmlExtensionPlugin>
#include <QSignalSpy>

#include <gtest/gtest.h>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)

namespace velto::controls
{

namespace
{

void usePalette(const QColor &window, const QColor &text, const QColor &accent)
{
    QPalette palette;
    for (const auto role : {QPalette::Window, QPalette::Base})
        palette.setColor(role, window);
    for (const auto role : {QPalette::WindowText, QPalette::Text})
        palette.setColor(role, text);
    palette.setColor(QPalette::Highlight, accent);
    QGuiApplication::setPalette(palette);
    QCoreApplication::processEvents();
}

class TokensTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Tokens::instance().setScheme(Tokens::Scheme::NoPreference);
        Tokens::instance().setAccent({});
        usePalette(Qt::white, Qt::black, Qt::red);
    }
};

} // namespace

TEST_F(TokensTest, thePaletteDecidesWithoutAPreference)
{
    const Tokens &tokens = Tokens::instance();
    EXPECT_FALSE(tokens.isDark());
    usePalette(QColor(20, 20, 20), QColor(240, 240, 240), Qt::green);
    EXPECT_TRUE(tokens.isDark());
    EXPECT_EQ(tokens.background(), QColor(20, 20, 20));
    EXPECT_EQ(tokens.primary(), QColor(240, 240, 240));
    EXPECT_EQ(tokens.accent(), QColor(Qt::green));
}

TEST_F(TokensTest, aChosenAccentBeatsThePalettesAndCanBeTakenBack)
{
    Tokens &tokens = Tokens::instance();
    QSignalSpy changed(&tokens, &Tokens::coloursChanged);
    tokens.setAccent(Qt::yellow);
    EXPECT_EQ(tokens.accent(), QColor(Qt::yellow));
    EXPECT_EQ(tokens.onAccent(), QColor(Qt::black));
    EXPECT_EQ(tokens.selection(), Tokens::faded(Qt::yellow, 0.35));
    tokens.setAccent(Qt::yellow);
    EXPECT_EQ(changed.count(), 1);
    tokens.setAccent({});
    EXPECT_EQ(tokens.accent(), QColor(Qt::red));
}

TEST_F(TokensTest, theTextFactorCountsOnTopOfTheFont)
{
    Tokens &tokens = Tokens::instance();
    const QFont before = QGuiApplication::font();
    QFont font = before;
    font.setPixelSize(13);
    QGuiApplication::setFont(font);
    QCoreApplication::processEvents();
    ASSERT_DOUBLE_EQ(tokens.textScale(), 1);
    tokens.setTextFactor(2);
    EXPECT_DOUBLE_EQ(tokens.textScale(), textScaleFor(26));
    tokens.setTextFactor(1);
    EXPECT_DOUBLE_EQ(tokens.textScale(), 1);
    QGuiApplication::setFont(before);
    QCoreApplication::processEvents();
}

TEST_F(TokensTest, aPreferenceBeatsAPaletteOfTheOtherLightness)
{
    Tokens &tokens = Tokens::instance();
    tokens.setScheme(Tokens::Scheme::Dark);
    EXPECT_TRUE(tokens.isDark());
    EXPECT_LT(tokens.background().lightnessF(), 0.3);
    EXPECT_GT(tokens.primary().lightnessF(), 0.8);
    EXPECT_EQ(tokens.accent(), QColor(Qt::red));
    tokens.setScheme(Tokens::Scheme::Light);
    EXPECT_EQ(tokens.background(), QColor(Qt::white));
}

TEST_F(TokensTest, textOnAPaleAccentIsBlack)
{
    EXPECT_EQ(Tokens::instance().onAccent(), QColor(Qt::white));
    usePalette(Qt::white, Qt::black, QColor(255, 240, 150));
    EXPECT_EQ(Tokens::instance().onAccent(), QColor(Qt::black));
}

TEST(TextScale, usualTextSizesAreTakenAsTheyAre)
{
    EXPECT_EQ(textScaleFor(12), 1);
    EXPECT_EQ(textScaleFor(13.3), 1);
    EXPECT_EQ(textScaleFor(14.6), 1);
    EXPECT_EQ(textScaleFor(0), 1);
    EXPECT_EQ(textScaleFor(-1), 1);
}

TEST(TextScale, whatIsBeyondThemCountsWithinBounds)
{
    EXPECT_NEAR(textScaleFor(22), 1.5, 0.001);
    EXPECT_NEAR(textScaleFor(10.8), 0.9, 0.001);
    EXPECT_EQ(textScaleFor(500), 3);
    EXPECT_EQ(textScaleFor(1), 0.75);
}

TEST_F(TokensTest, textSizesFollowTheFontOfTheDesktop)
{
    const QFont usual = QGuiApplication::font();
    QSignalSpy changed(&Tokens::instance(), &Tokens::textScaleChanged);
    QFont greater = usual;
    greater.setPixelSize(22);
    QGuiApplication::setFont(greater);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_NEAR(Tokens::instance().body(), 13 * 1.5, 0.01);
    QGuiApplication::setFont(usual);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(Tokens::instance().body(), 13);
}

TEST_F(TokensTest, fadingMultipliesTheOpacity)
{
    EXPECT_NEAR(Tokens::faded(QColor(0, 0, 0, 128), 0.5).alphaF(), 0.25, 0.01);
}

} // namespace velto::controls
