// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/theme/theme.h"

#include <QStringList>

namespace velto::gallery
{

[[nodiscard]] QStringList themeNames();
/// A new theme for a name that isn't among them.
[[nodiscard]] markdown::Theme themeNamed(const QString &name);

} // namespace velto::gallery
