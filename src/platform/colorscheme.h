// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <memory>

namespace velto::platform
{

/// Whether the desktop prefers light or dark windows. Never waits: `NoPreference` until the desktop
/// has answered, and for good where it has nothing to say. Main thread.
class ColorScheme : public QObject
{
    Q_OBJECT

public:
    enum class Preference { NoPreference, Dark, Light };

    [[nodiscard]] virtual Preference preference() const = 0;

signals:
    void preferenceChanged();
};

[[nodiscard]] std::unique_ptr<ColorScheme> makeSystemColorScheme();

} // namespace velto::platform
