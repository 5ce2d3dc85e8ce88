// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/store/database.h"

namespace velto::local
{

/// Fills a database that has no users with a small company, all of it or nothing. False when that
/// failed.
[[nodiscard]] bool plantCompany(Database &database, std::int64_t now);

} // namespace velto::local
