// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/symbols.h"
#include "controls/symboltable.h"

#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QQmlExtensionPlugin>
#include <QRawFont>
#include <QRegularExpression>
#include <QThread>
#include <QTransform>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)

namespace velto::controls
{

namespace
{

// Every "..." in a `symbol:` binding, or in a `name:` binding of a file that uses Symbol.
QStringList namesIn(const QString &qml)
{
    static const QRegularExpression binding(
        QStringLiteral(R"x(^\s*(?:symbol|name): (.*"[a-z.]+".*)$)x"),
        QRegularExpression::MultilineOption);
    static const QRegularExpression quoted(QStringLiteral(R"x("([a-z.]+)")x"));
    QStringList names;
    for (auto line = binding.globalMatch(qml); line.hasNext();) {
        for (auto name = quoted.globalMatch(line.next().captured(1)); name.hasNext();)
            names.append(name.next().captured(1));
    }
    return names;
}

QImage painted(const QPainterPath &path)
{
    QImage image(48, 48, QImage::Format_Grayscale8);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, Qt::white);
    return image;
}

} // namespace

TEST(Symbols, everyNameHasAShapeOfTheFontInTheUnitSquare)
{
    const QRectF square(0, 0, 1, 1);
    ASSERT_FALSE(Symbols::names().isEmpty());
    for (const QString &name : Symbols::names()) {
        const QPainterPath shape = Symbols::outline(name);
        ASSERT_FALSE(shape.isEmpty()) << qPrintable(name);
        EXPECT_TRUE(square.contains(shape.boundingRect())) << qPrintable(name);
        EXPECT_GT(shape.boundingRect().width(), 0.3) << qPrintable(name);
    }
}

// Scenes draw on threads that come and go.
TEST(Symbols, anyThreadGetsTheShape)
{
    const QString name = Symbols::names().last();
    const QPainterPath here = Symbols::outline(name);
    for (int i = 0; i < 3; ++i) {
        QPainterPath known;
        QPainterPath other;
        const std::unique_ptr<QThread> thread(QThread::create([&] {
            known = Symbols::outline(name);
            other = Symbols::outline(Symbols::names().at(i));
        }));
        thread->start();
        thread->wait();
        EXPECT_EQ(known, here);
        EXPECT_EQ(other, Symbols::outline(Symbols::names().at(i)));
        EXPECT_FALSE(other.isEmpty());
    }
}

// The same shapes as the letters that text in the font would show.
TEST(Symbols, aShapeIsTheGlyphOfTheFont)
{
    QFile file(QStringLiteral(VELTO_SYMBOL_FONT));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QRawFont font(file.readAll(), 48, QFont::PreferNoHinting);
    for (const symboltable::Entry &entry : symboltable::table) {
        const QString name = QStringView(entry.name).toString();
        ASSERT_TRUE(font.supportsCharacter(QChar(entry.glyph))) << qPrintable(name);
        const QPainterPath glyph =
            font.pathForGlyph(font.glyphIndexesForString(QString(QChar(entry.glyph))).value(0));
        const QImage expected = painted(glyph.translated(0, font.ascent()));
        const QImage shape = painted(QTransform::fromScale(48, 48).map(Symbols::outline(name)));
        int furthest = 0;
        for (qsizetype at = 0; at < expected.sizeInBytes(); ++at)
            furthest = std::max(furthest, std::abs(expected.bits()[at] - shape.bits()[at]));
        EXPECT_LT(furthest, 40) << qPrintable(name);
    }
}

TEST(Symbols, everyNameThatAScreenUsesIsInTheTable)
{
    QDirIterator files(QStringLiteral(VELTO_SOURCE_DIR "/src"), {QStringLiteral("*.qml")},
                       QDir::Files, QDirIterator::Subdirectories);
    int used = 0;
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        for (const QString &name : namesIn(QString::fromUtf8(file.readAll()))) {
            EXPECT_TRUE(Symbols::names().contains(name))
                << qPrintable(name) << " in " << qPrintable(file.fileName());
            ++used;
        }
    }
    EXPECT_GE(used, 8);
}

TEST(Symbols, anUnknownNameHasNoShape)
{
    EXPECT_TRUE(Symbols::outline(QStringLiteral("no.such.mark")).isEmpty());
    EXPECT_TRUE(Symbols::letter(QStringLiteral("arrow.up")).isEmpty());
    EXPECT_EQ(Symbols::letter(QStringLiteral("g.circle.fill")), QStringLiteral("G"));
}

} // namespace velto::controls
