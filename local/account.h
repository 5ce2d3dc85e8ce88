// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <nlohmann/json.hpp>

#include <string_view>

/// The one user of a local service. There is nothing to administer: whoever runs the service on
/// their machine is this user.
namespace velto::local::account
{

inline constexpr std::string_view Name = "Robin Okafor";
inline constexpr std::string_view Email = "robin.okafor@example.org";

/// The answer of GET /v1/me.
[[nodiscard]] nlohmann::json me();

} // namespace velto::local::account
