// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace velto::local::seed
{

struct Skill
{
    std::string_view workspaceId;
    std::string_view id;
    std::string_view name;
    std::string_view description;
    bool enabled = true;
    std::int64_t daysAgo = 0;
};

struct Subagent
{
    std::string_view workspaceId;
    std::string_view id;
    std::string_view name;
    std::string_view description;
    bool enabled = true;
    std::string_view source;
    std::string_view model;
    /// Empty, or a number; the lists are JSON.
    std::string_view maxTurns;
    std::string_view mcpServerNames;
    std::string_view tools;
    std::int64_t daysAgo = 0;
};

/// A connection to an outside service. `details` is JSON with the names of the wire; of times in
/// it "@N" stands for N days after the first start.
struct Connection
{
    std::string_view workspaceId;
    std::string_view provider;
    bool connected = true;
    std::string_view details;
};

/// What a workspace had used before the first start.
struct Usage
{
    std::string_view workspaceId;
    std::string_view source;
    std::string_view model;
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheCreation = 0;
    std::int64_t cacheRead = 0;
    std::int64_t calls = 0;
    std::int64_t userMessages = 0;
};

[[nodiscard]] const std::vector<Skill> &skills();
[[nodiscard]] const std::vector<Subagent> &subagents();
[[nodiscard]] const std::vector<Connection> &connections();
[[nodiscard]] const std::vector<Usage> &usage();

} // namespace velto::local::seed
