// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/theme/ink.h"

#include "controls/tokens.h"

namespace velto::markdown
{

namespace
{

QColor inFull(const Ink &ink)
{
    const controls::Tokens &tokens = controls::Tokens::instance();
    switch (ink.role) {
    case Ink::Role::Primary:
        return tokens.primary();
    case Ink::Role::Secondary:
        return tokens.secondary();
    case Ink::Role::Accent:
        return tokens.accent();
    case Ink::Role::Hairline:
        return tokens.hairline();
    case Ink::Role::Warning:
        return tokens.warning();
    case Ink::Role::Failure:
        return tokens.failure();
    case Ink::Role::Background:
        return tokens.background();
    case Ink::Role::Fixed:
        return ink.fixed;
    }
    return {};
}

} // namespace

QColor Ink::colour() const
{
    return controls::Tokens::faded(inFull(*this), opacity);
}

} // namespace velto::markdown
