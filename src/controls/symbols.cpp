// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/symbols.h"

#include "controls/symboloutlines.h"
#include "controls/symboltable.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace velto::controls
{

namespace
{

using symboltable::Entry;

constexpr qreal letterScale = 0.75 / Symbols::fontScale; // of the shape

const Entry *find(const QString &name)
{
    const auto *const entry = std::ranges::find_if(symboltable::table, [&](const Entry &candidate) {
        return QStringView(candidate.name) == name;
    });
    return entry == symboltable::table.end() ? nullptr : entry;
}

// One move, line or curve; returns what comes after it.
const std::int16_t *addSegment(QPainterPath &path, const std::int16_t *at)
{
    const auto point = [&](int index) {
        return QPointF(at[1 + 2 * index], at[2 + 2 * index]) / symboloutlines::emSize;
    };
    switch (static_cast<symboloutlines::Segment>(*at)) {
    case symboloutlines::Segment::Move:
        path.moveTo(point(0));
        return at + 3;
    case symboloutlines::Segment::Line:
        path.lineTo(point(0));
        return at + 3;
    case symboloutlines::Segment::Curve:
        path.quadTo(point(0), point(1));
        return at + 5;
    }
    Q_UNREACHABLE();
}

} // namespace

QPainterPath Symbols::outline(const QString &name)
{
    const Entry *entry = find(name);
    if (entry == nullptr) {
        qWarning("no symbol is named \"%s\"", qUtf8Printable(name));
        return {};
    }
    const auto index = static_cast<std::size_t>(entry - symboltable::table.begin());
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    const std::int16_t *const segments = symboloutlines::segments.data();
    const std::int16_t *at = segments + (index == 0 ? 0 : symboloutlines::ends[index - 1]);
    while (at != segments + symboloutlines::ends[index])
        at = addSegment(path, at);
    return path;
}

QImage Symbols::picture(const QString &name, int side, const Inks &inks)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save();
    painter.scale(side, side);
    painter.fillPath(outline(name), inks.shape);
    painter.restore();
    if (const QString inside = letter(name); !inside.isEmpty()) {
        QFont font;
        font.setBold(true);
        font.setPixelSize(std::max(1, static_cast<int>(std::lround(side * letterScale))));
        painter.setFont(font);
        painter.setPen(inks.letter);
        painter.drawText(image.rect(), Qt::AlignCenter, inside);
    }
    return image;
}

QString Symbols::letter(const QString &name)
{
    const Entry *entry = find(name);
    return entry == nullptr || entry->letter == 0 ? QString() : QString(QChar(entry->letter));
}

QStringList Symbols::names()
{
    QStringList names;
    for (const Entry &entry : symboltable::table)
        names.append(QStringView(entry.name).toString());
    return names;
}

} // namespace velto::controls
