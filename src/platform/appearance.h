// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QObject>

#include <memory>
#include <optional>

namespace velto::platform
{

/// How the user wants programs to look.
struct Looks
{
    enum class Scheme { NoPreference, Dark, Light };

    Scheme scheme = Scheme::NoPreference;
    /// Absent where the desktop names none.
    std::optional<QColor> accent;
    /// How many times as large as the desktop's font says; 1 where that has it in already.
    double textFactor = 1;

    bool operator==(const Looks &) const = default;
};

/// What the desktop says about looks. Never waits: the plain `Looks` until the desktop has
/// answered, and for good where it has nothing to say. Main thread.
class Appearance : public QObject
{
    Q_OBJECT

public:
    [[nodiscard]] virtual const Looks &looks() const = 0;

signals:
    void looksChanged();
};

[[nodiscard]] std::unique_ptr<Appearance> makeSystemAppearance();

} // namespace velto::platform
