// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <string_view>

namespace velto::controls::symboltable
{

/// A name of the icon vocabulary, and the glyph of the icon font that is its shape.
struct Entry
{
    std::u16string_view name;
    char16_t glyph;
    char16_t letter = 0; ///< Stands in the middle of the shape.
};

inline constexpr std::array table{
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
    Entry{u"chevron.down", 0xe5cf},
    Entry{u"chevron.left", 0xe5cb},
    Entry{u"chevron.right", 0xe5cc},
    Entry{u"circle", 0xe836},
    Entry{u"circle.fill", 0xef4a},
    Entry{u"doc.on.doc", 0xe14d},
    Entry{u"ellipsis", 0xe5d3},
    Entry{u"exclamationmark.triangle", 0xe8b2},
    Entry{u"exclamationmark.triangle.fill", 0xe002},
    Entry{u"g.circle.fill", 0xef4a, u'G'},
    Entry{u"gauge.with.dots.needle.bottom.50percent", 0xe9e4},
    Entry{u"hand.thumbsdown", 0xe9f2},
    Entry{u"hand.thumbsdown.fill", 0xe8db},
    Entry{u"hand.thumbsup", 0xe9f3},
    Entry{u"hand.thumbsup.fill", 0xe8dc},
    Entry{u"lightbulb", 0xe90f},
    Entry{u"link", 0xe157},
    Entry{u"magnifyingglass", 0xe8b6},
    Entry{u"pause.fill", 0xe034},
    Entry{u"pencil", 0xe254},
    Entry{u"person.crop.circle", 0xe853},
    Entry{u"photo", 0xe410},
    Entry{u"play.fill", 0xe037},
    Entry{u"plus", 0xe145},
    Entry{u"puzzlepiece.extension", 0xe87b},
    Entry{u"sidebar.left", 0xe949},
    Entry{u"slider.horizontal.3", 0xe429},
    Entry{u"sparkle", 0xe65f},
    Entry{u"speaker.slash.fill", 0xe04f},
    Entry{u"speaker.wave.2.fill", 0xe050},
    Entry{u"square", 0xe835},
    Entry{u"square.and.pencil", 0xe3c9},
    Entry{u"square.fill", 0xe047},
    Entry{u"stop.fill", 0xe047},
    Entry{u"trash", 0xe872},
    Entry{u"video.slash", 0xe04c},
    Entry{u"wrench", 0xe869},
    Entry{u"xmark", 0xe5cd},
    Entry{u"xmark.circle.fill", 0xe5c9},
};

} // namespace velto::controls::symboltable
