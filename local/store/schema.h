// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/store/database.h"

#include <string>

namespace velto::local
{

/// Brings the tables of a new or older file to the present schema, all steps or none. False with
/// the reason in `error`.
[[nodiscard]] bool prepareSchema(Database &database, std::string &error);

} // namespace velto::local
