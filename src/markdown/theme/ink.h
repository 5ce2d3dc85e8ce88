// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>

namespace velto::markdown
{

/// A colour of a theme. Named by what it is for, so that one theme serves light and dark; which
/// colour that is now, whoever draws asks `controls::Tokens`.
struct Ink
{
    enum class Role { Primary, Secondary, Accent, Hairline, Warning, Failure, Background, Fixed };

    Role role = Role::Primary;
    qreal opacity = 1;
    QColor fixed; ///< Only for `Role::Fixed`.

    [[nodiscard]] static Ink primary() { return {Role::Primary, 1, {}}; }
    [[nodiscard]] static Ink secondary() { return {Role::Secondary, 1, {}}; }
    [[nodiscard]] static Ink accent() { return {Role::Accent, 1, {}}; }
    [[nodiscard]] static Ink hairline() { return {Role::Hairline, 1, {}}; }
    [[nodiscard]] static Ink warning() { return {Role::Warning, 1, {}}; }
    [[nodiscard]] static Ink failure() { return {Role::Failure, 1, {}}; }
    [[nodiscard]] static Ink background() { return {Role::Background, 1, {}}; }
    [[nodiscard]] static Ink of(const QColor &colour) { return {Role::Fixed, 1, colour}; }

    /// The same at `share` of its opacity.
    [[nodiscard]] Ink faded(qreal share) const { return {role, opacity * share, fixed}; }

    /// What it looks like with the desktop's present colours. Needs a QGuiApplication.
    [[nodiscard]] QColor colour() const;

    bool operator==(const Ink &) const = default;
};

} // namespace velto::markdown
