// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/symbols.h"
#include "shell/sections.h"

#include <QPainterPath>

#include <gtest/gtest.h>

namespace velto::shell
{

using Section = chat::AppState::Section;

namespace
{

struct Row
{
    Section section;
    const char *title;
    const char *symbol;
};

const std::array table{
    Row{Section::Chat, "Chat", "bubble.left.and.bubble.right"},
    Row{Section::VeltoSettings, "Velto", "slider.horizontal.3"},
    Row{Section::Integrations, "Integrations", "puzzlepiece.extension"},
    Row{Section::Marketplace, "Marketplace", "bag"},
    Row{Section::Profile, "Profile", "person.crop.circle"},
    Row{Section::Workspace, "Workspace", "building.2"},
    Row{Section::Admin, "Admin", "gauge.with.dots.needle.bottom.50percent"},
};

} // namespace

TEST(Sections, haveTheirTitlesAndMarks)
{
    for (const Row &row : table) {
        EXPECT_EQ(Sections::title(row.section), QString::fromLatin1(row.title));
        EXPECT_EQ(Sections::symbol(row.section), QString::fromLatin1(row.symbol));
        EXPECT_FALSE(controls::Symbols::outline(Sections::symbol(row.section)).isEmpty())
            << row.symbol;
    }
}

TEST(Sections, areOfferedByTwoShortLists)
{
    EXPECT_EQ(Sections::commands(),
              (QList<int>{static_cast<int>(Section::Chat), static_cast<int>(Section::Profile)}));
    EXPECT_EQ(Sections::sidebar(), QList<int>{static_cast<int>(Section::Profile)});
    EXPECT_LT(Sections::commands().size(), 10);
}

} // namespace velto::shell
