// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/tokens.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQmlExtensionPlugin>

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

TEST_F(TokensTest, fadingMultipliesTheOpacity)
{
    EXPECT_NEAR(Tokens::faded(QColor(0, 0, 0, 128), 0.5).alphaF(), 0.25, 0.01);
}

} // namespace velto::controls
