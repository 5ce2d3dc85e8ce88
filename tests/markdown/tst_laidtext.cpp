// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/emoji.h"
#include "markdown/render/laidtext.h"
#include "support/cputime.h"

#include <QFontDatabase>
#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace velto::markdown
{

namespace
{

AttributedString stringOf(const char *text, QFont::Weight weight = QFont::Normal)
{
    TextAttributes attributes;
    attributes.fontProperties.size = 15;
    attributes.fontProperties.weight = weight;
    AttributedString string;
    string.append(QString::fromUtf8(text), attributes);
    return string;
}

std::unique_ptr<LaidText> laid(const AttributedString &text, qreal width = 500)
{
    auto made = std::make_unique<LaidText>(text, TextSetting{1.25, Qt::AlignLeading, true});
    made->setWidth(width);
    return made;
}

QList<QGlyphRun> glyphRuns(const LaidText &text)
{
    QList<QGlyphRun> runs;
    for (int line = 0; line < text.layout().lineCount(); ++line)
        runs += text.layout().lineAt(line).glyphRuns();
    return runs;
}

/// How much ink a text has, from 0 on.
qint64 inkOf(const LaidText &text)
{
    QImage image(500, 40, QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    for (const QGlyphRun &run : glyphRuns(text))
        painter.drawGlyphRun({0, 5}, run);
    painter.end();
    qint64 ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ink += 255 - image.constScanLine(y)[x];
    }
    return ink;
}

QList<qreal> lineDistances(const LaidText &text)
{
    QList<qreal> distances;
    for (int line = 1; line < text.layout().lineCount(); ++line) {
        const QTextLine above = text.layout().lineAt(line - 1);
        const QTextLine here = text.layout().lineAt(line);
        distances.append(here.y() + here.ascent() - above.y() - above.ascent());
    }
    return distances;
}

QString emojiIn(const char *text)
{
    const QString string = QString::fromUtf8(text);
    QString found;
    for (qsizetype at = nextEmoji(string, 0); at < string.size(); at = nextEmoji(string, at)) {
        const qsizetype end = emojiEnd(string, at);
        found += u'<' + string.sliced(at, end - at) + u'>';
        at = end;
    }
    return found;
}

} // namespace

TEST(LaidTextTest, BoldTextInAFallbackFontIsBold)
{
    const auto regular = laid(stringOf("漢字表示"));
    const auto bold = laid(stringOf("漢字表示", QFont::Bold));
    // A font that has these at all, and not the box for what is missing.
    ASSERT_FALSE(QFontDatabase::families(QFontDatabase::SimplifiedChinese).isEmpty());
    const QList<QGlyphRun> runs = glyphRuns(*regular);
    ASSERT_FALSE(runs.isEmpty());
    for (const quint32 glyph : runs.constFirst().glyphIndexes())
        EXPECT_NE(glyph, 0U);
    EXPECT_GT(inkOf(*bold), inkOf(*regular) * 11 / 10);
}

TEST(LaidTextTest, EmojiComeFromTheirFont)
{
    for (const char *emoji :
         {"👍🏽", "👩‍👩‍👧", "🇪🇺", "❤️", "1️⃣", "✅", "🙂"}) {
        const auto text = laid(stringOf(emoji));
        // A sign behind it that only asks for the emoji may be another font's, and shows nothing.
        const QGlyphRun first = glyphRuns(*text).constFirst();
        EXPECT_EQ(first.rawFont().familyName(), QStringLiteral("Noto Color Emoji")) << emoji;
    }
}

TEST(LaidTextTest, AnEmojiOfSeveralPartsIsOneGlyph)
{
    for (const char *emoji : {"👍🏽", "👩‍👩‍👧", "🇪🇺"}) {
        qsizetype glyphs = 0;
        const auto text = laid(stringOf(emoji));
        for (const QGlyphRun &run : glyphRuns(*text))
            glyphs += run.glyphIndexes().size();
        EXPECT_EQ(glyphs, 1) << emoji;
    }
}

TEST(LaidTextTest, AnEmojiThatGrowsIsSetAnew)
{
    const auto text = laid(stringOf("a ❤"));
    for (const char *grown :
         {"a ❤️", "a ❤️ 👩", "a ❤️ 👩‍", "a ❤️ 👩‍👧",
          "a ❤️ 👩‍👧 👍", "a ❤️ 👩‍👧 👍🏽"}) {
        const AttributedString whole = stringOf(grown);
        text->update(whole);
        const auto fresh = laid(whole);
        EXPECT_EQ(text->idealWidth(), fresh->idealWidth()) << grown;
    }
}

TEST(LaidTextTest, AnEmojiLeavesTheLinesWhereTheyAre)
{
    const QByteArray words = QByteArray("some words to fill a line or two ").repeated(6);
    const auto plain = laid(stringOf(words.constData()), 300);
    const auto withEmoji = laid(stringOf(("👍🏽 🙂 " + words).constData()), 300);
    const QList<qreal> distances = lineDistances(*withEmoji);
    ASSERT_GT(distances.size(), 3);
    const qreal usual = lineDistances(*plain).constFirst();
    for (const qreal distance : distances)
        EXPECT_EQ(distance, usual);
}

TEST(LaidTextTest, MeasuredWidthIsThatOfTheLayout)
{
    for (const char *text : {"plain", "with 👍🏽 in it", "🇪🇺🇪🇺", "漢字", "a\nlonger line"}) {
        const AttributedString string = stringOf(text);
        LaidText unbroken(string, {1, Qt::AlignLeading, false});
        EXPECT_NEAR(LaidText::measuredWidth(string), unbroken.idealWidth(), 1) << text;
    }
}

TEST(LaidTextTest, AWordThatNeverEndsIsBrokenAnywhereAndSoon)
{
    const QByteArray words = "some words " + QByteArray(1'000'000, 'a');
    const double start = velto::test::processSeconds();
    const auto text = laid(stringOf(words.constData()));
    EXPECT_GT(text->size().height(), 100'000);
    EXPECT_LE(text->idealWidth(), 500);
    EXPECT_LT(velto::test::processSeconds() - start, 5);
}

TEST(LaidTextTest, WordsAreKeptTogetherUnlessTheyNeverEnd)
{
    const QByteArray words = QByteArray("wordsofsomelength ").repeated(200);
    const QByteArray east = QByteArray("漢字").repeated(1000) + " " + words;
    for (const QByteArray &each : {words, east}) {
        const auto text = laid(stringOf(each.constData()), 300);
        const QTextLine line = text->layout().lineAt(text->layout().lineCount() - 3);
        const QString all = text->text().plainText();
        EXPECT_EQ(all.at(line.textStart() + line.textLength() - 1), QChar(u' '));
    }
    const auto growing = laid(stringOf(words.constData()), 230);
    growing->update(stringOf((words + QByteArray(2000, 'a')).constData()));
    int broken = 0;
    for (int at = 0; at < 20; ++at) {
        const QTextLine line = growing->layout().lineAt(at);
        const qsizetype last = line.textStart() + line.textLength() - 1;
        broken += growing->text().plainText().at(last) == QChar(u' ') ? 0 : 1;
    }
    EXPECT_GT(broken, 10);
}

TEST(EmojiTest, AreFoundWithAllTheirParts)
{
    EXPECT_EQ(emojiIn("a👍🏽b"), QStringLiteral("<👍🏽>"));
    EXPECT_EQ(emojiIn("👩‍👩‍👧 x 🇪🇺🇩🇪"),
              QStringLiteral("<👩‍👩‍👧><🇪🇺🇩🇪>"));
    EXPECT_EQ(emojiIn("1️⃣ of 2"), QStringLiteral("<1️⃣>"));
    EXPECT_EQ(emojiIn("❤️ and ❤"), QStringLiteral("<❤️>"));
}

TEST(EmojiTest, TextIsNone)
{
    for (const char *text :
         {"", "plain 123 #*", "漢字 あ 한", "é ạ̈", "→ … “” ✓ ©", "☎︎", "⌚︎"})
        EXPECT_EQ(emojiIn(text), QString()) << text;
}

} // namespace velto::markdown
