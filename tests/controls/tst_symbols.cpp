// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/symbols.h"
#include "controls/symboltable.h"

#include <QDirIterator>
#include <QFile>
#include <QQmlExtensionPlugin>
#include <QRawFont>
#include <QRegularExpression>
#include <QThread>
#include <QTransform>

#include <gtest/gtest.h>

#include <cmath>

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
    const QRawFont font(file.readAll(), 100, QFont::PreferNoHinting);
    for (const symboltable::Entry &entry : symboltable::table) {
        const QString name = QStringView(entry.name).toString();
        ASSERT_TRUE(font.supportsCharacter(QChar(entry.glyph))) << qPrintable(name);
        const QPainterPath glyph =
            font.pathForGlyph(font.glyphIndexesForString(QString(QChar(entry.glyph))).value(0))
                .translated(0, font.ascent());
        const QPainterPath shape = QTransform::fromScale(100, 100).map(Symbols::outline(name));
        const auto differs = [](qreal one, qreal other) { return std::abs(one - other) > 0.5; };
        const QRectF a = shape.boundingRect();
        const QRectF b = glyph.boundingRect();
        EXPECT_FALSE(differs(a.left(), b.left()) || differs(a.top(), b.top()) ||
                     differs(a.right(), b.right()) || differs(a.bottom(), b.bottom()))
            << qPrintable(name);
        for (int x = 5; x < 100; x += 10) {
            for (int y = 5; y < 100; y += 10)
                EXPECT_EQ(shape.contains(QPointF(x, y)), glyph.contains(QPointF(x, y)))
                    << qPrintable(name) << " at " << x << ", " << y;
        }
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
