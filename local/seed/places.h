// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

/// The workspaces of the company, by their ids.
namespace velto::local::seed
{

inline constexpr std::string_view Studio = "ws_harbourlight";
inline constexpr std::string_view Tidal = "ws_tidal";
inline constexpr std::string_view Kitchen = "ws_lantern";
inline constexpr std::string_view Archive = "ws_quay";

} // namespace velto::local::seed
