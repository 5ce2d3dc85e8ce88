// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/symbols.h"

#include <QDirIterator>
#include <QFont>
#include <QQmlExtensionPlugin>
#include <QRawFont>
#include <QRegularExpression>

#include <gtest/gtest.h>

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

TEST(Symbols, everyNameHasAGlyphOfTheFont)
{
    ASSERT_EQ(Symbols::family(), QStringLiteral("Material Icons"));
    const QRawFont font = QRawFont::fromFont(QFont(Symbols::family()));
    ASSERT_EQ(font.familyName(), Symbols::family());
    ASSERT_FALSE(Symbols::names().isEmpty());
    for (const QString &name : Symbols::names()) {
        const QString glyph = Symbols::glyph(name);
        ASSERT_EQ(glyph.size(), 1) << qPrintable(name);
        EXPECT_TRUE(font.supportsCharacter(glyph.front())) << qPrintable(name);
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

TEST(Symbols, anUnknownNameHasNoGlyph)
{
    EXPECT_TRUE(Symbols::glyph(QStringLiteral("no.such.mark")).isEmpty());
    EXPECT_TRUE(Symbols::letter(QStringLiteral("arrow.up")).isEmpty());
    EXPECT_EQ(Symbols::letter(QStringLiteral("g.circle.fill")), QStringLiteral("G"));
}

} // namespace velto::controls
