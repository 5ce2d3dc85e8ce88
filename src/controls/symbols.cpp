// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/symbols.h"

#include <QFile>
#include <QFontDatabase>
#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <QRawFont>
#include <QTransform>

#include <algorithm>
#include <array>
#include <string_view>

namespace velto::controls
{

namespace
{

struct Entry
{
    std::u16string_view name;
    char16_t glyph;
    char16_t letter = 0;
};

constexpr std::array table{
    Entry{u"arrow.clockwise", 0xe5d5},
    Entry{u"arrow.down", 0xe5db},
    Entry{u"arrow.down.right.and.arrow.up.left", 0xe5d1},
    Entry{u"arrow.forward.to.line", 0xe31c},
    Entry{u"arrow.up", 0xe5d8},
    Entry{u"arrow.up.left.and.arrow.down.right", 0xe5d0},
    Entry{u"bag", 0xe54c},
    Entry{u"bubble.left.and.bubble.right", 0xe0bf},
    Entry{u"building.2", 0xea40},
    Entry{u"checkmark", 0xe5ca},
    Entry{u"checkmark.circle.fill", 0xe86c},
    Entry{u"checkmark.square.fill", 0xe834},
    Entry{u"chevron.left", 0xe5cb},
    Entry{u"chevron.right", 0xe5cc},
    Entry{u"circle", 0xe836},
    Entry{u"circle.fill", 0xef4a},
    Entry{u"doc.on.doc", 0xe14d},
    Entry{u"exclamationmark.triangle", 0xe8b2},
    Entry{u"exclamationmark.triangle.fill", 0xe002},
    Entry{u"g.circle.fill", 0xef4a, u'G'},
    Entry{u"gauge.with.dots.needle.bottom.50percent", 0xe9e4},
    Entry{u"hand.thumbsdown", 0xe9f2},
    Entry{u"hand.thumbsdown.fill", 0xe8db},
    Entry{u"hand.thumbsup", 0xe9f3},
    Entry{u"hand.thumbsup.fill", 0xe8dc},
    Entry{u"lightbulb", 0xe90f},
    Entry{u"pause.fill", 0xe034},
    Entry{u"pencil", 0xe254},
    Entry{u"person.crop.circle", 0xe853},
    Entry{u"photo", 0xe410},
    Entry{u"play.fill", 0xe037},
    Entry{u"plus", 0xe145},
    Entry{u"puzzlepiece.extension", 0xe87b},
    Entry{u"sidebar.left", 0xe114},
    Entry{u"slider.horizontal.3", 0xe429},
    Entry{u"sparkle", 0xe65f},
    Entry{u"speaker.slash.fill", 0xe04f},
    Entry{u"speaker.wave.2.fill", 0xe050},
    Entry{u"square", 0xe835},
    Entry{u"square.and.pencil", 0xe3c9},
    Entry{u"square.fill", 0xe047},
    Entry{u"stop.fill", 0xe047},
    Entry{u"video.slash", 0xe04c},
    Entry{u"wrench", 0xe869},
    Entry{u"xmark", 0xe5cd},
    Entry{u"xmark.circle.fill", 0xe5c9},
};

const Entry *find(const QString &name)
{
    const auto *const entry = std::find_if(table.begin(), table.end(), [&](const Entry &candidate) {
        return QStringView(candidate.name) == name;
    });
    return entry == table.end() ? nullptr : entry;
}

constexpr qreal emSize = 512; // the font's own units, so that no coordinate is rounded

QByteArray fontFile()
{
    QFile file(QStringLiteral(":/qt/qml/Velto/Controls/symbols.ttf"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the icon font is not in the program");
    return file.readAll();
}

QString loadFamily()
{
    const int id = QFontDatabase::addApplicationFontFromData(fontFile());
    return QFontDatabase::applicationFontFamilies(id).value(0);
}

} // namespace

// Read directly: a font that is announced to the system's font matching costs a search through all
// installed fonts for every size in which it is used, and may lose to an installed one of its name.
// Such a font lives no longer than the thread that made it, and scenes have threads of their own,
// so only the outlines are kept.
QPainterPath Symbols::outline(const QString &name)
{
    const QString character = glyph(name);
    if (character.isEmpty())
        return {};
    static QMutex mutex;
    static QHash<QString, QPainterPath> known;
    const QMutexLocker lock(&mutex);
    if (const auto found = known.constFind(character); found != known.cend())
        return *found;
    static const QByteArray file = fontFile();
    const QRawFont font(file, emSize, QFont::PreferNoHinting);
    const QPainterPath path = font.pathForGlyph(font.glyphIndexesForString(character).value(0));
    return *known.insert(
        character,
        QTransform::fromScale(1 / emSize, 1 / emSize).map(path.translated(0, font.ascent())));
}

QString Symbols::family()
{
    static const QString loaded = loadFamily();
    return loaded;
}

QString Symbols::glyph(const QString &name)
{
    const Entry *entry = find(name);
    if (entry == nullptr) {
        qWarning("no symbol is named \"%s\"", qUtf8Printable(name));
        return {};
    }
    return QString(QChar(entry->glyph));
}

QString Symbols::letter(const QString &name)
{
    const Entry *entry = find(name);
    return entry == nullptr || entry->letter == 0 ? QString() : QString(QChar(entry->letter));
}

QStringList Symbols::names()
{
    QStringList names;
    for (const Entry &entry : table)
        names.append(QStringView(entry.name).toString());
    return names;
}

} // namespace velto::controls
