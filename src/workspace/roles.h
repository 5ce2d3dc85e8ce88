// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace velto::workspace
{

/// A role as it is shown: each word with a capital letter in front, "owner" -> "Owner".
[[nodiscard]] QString capitalized(const QString &role);

} // namespace velto::workspace
