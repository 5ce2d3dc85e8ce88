// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sections.h"

namespace velto::shell
{

using Section = chat::AppState::Section;

QList<int> Sections::commands()
{
    return {static_cast<int>(Section::Chat), static_cast<int>(Section::Profile)};
}

QList<int> Sections::sidebar()
{
    return {static_cast<int>(Section::Profile)};
}

QString Sections::title(Section section)
{
    switch (section) {
    case Section::Chat:
        return tr("Chat");
    case Section::VeltoSettings:
        return tr("Velto");
    case Section::Integrations:
        return tr("Integrations");
    case Section::Marketplace:
        return tr("Marketplace");
    case Section::Profile:
        return tr("Profile");
    case Section::Workspace:
        return tr("Workspace");
    case Section::Admin:
        return tr("Admin");
    }
    return {};
}

QString Sections::symbol(Section section)
{
    switch (section) {
    case Section::Chat:
        return QStringLiteral("bubble.left.and.bubble.right");
    case Section::VeltoSettings:
        return QStringLiteral("slider.horizontal.3");
    case Section::Integrations:
        return QStringLiteral("puzzlepiece.extension");
    case Section::Marketplace:
        return QStringLiteral("bag");
    case Section::Profile:
        return QStringLiteral("person.crop.circle");
    case Section::Workspace:
        return QStringLiteral("building.2");
    case Section::Admin:
        return QStringLiteral("gauge.with.dots.needle.bottom.50percent");
    }
    return {};
}

} // namespace velto::shell
