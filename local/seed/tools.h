// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>
#include <vector>

namespace velto::local::seed
{

struct Tool
{
    std::string_view name;
    std::string_view description;
    bool available = true;
};

struct ToolGroup
{
    std::string_view key;
    std::string_view label;
    /// The outside service that the tools work through; empty when they need none.
    std::string_view provider;
    /// Why tools that need no outside service are unavailable all the same.
    std::string_view note;
    std::vector<Tool> tools;
};

[[nodiscard]] const std::vector<ToolGroup> &toolGroups();

} // namespace velto::local::seed
