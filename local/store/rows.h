// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/store/database.h"

#include <nlohmann/json.hpp>

namespace velto::local
{

/// Reads the rows of a query as records for the wire, an object each, with the columns' names as
/// keys. A column tells by the end of its name what its value is: "enabled:bool" a truth value,
/// "created_at:time" Unix seconds that go out as a text, "tools:json" stored JSON. NULL is null.
[[nodiscard]] nlohmann::json rowsOf(Statement &query);

/// The first row; null when there is none.
[[nodiscard]] nlohmann::json rowOf(Statement &query);

} // namespace velto::local
