// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace velto::local::seed
{

/// A bundle of the marketplace. Lists and resources are JSON with the names of the wire; empty
/// texts are left out.
struct Bundle
{
    std::string_view id;
    std::string_view version;
    std::string_view source;
    std::string_view name;
    std::string_view tagline;
    std::string_view whatItDoes;
    std::string_view iconKey;
    std::string_view accent;
    std::string_view exampleQueries;
    std::string_view resources;
    std::string_view integrations;
};

struct Installation
{
    std::string_view workspaceId;
    std::string_view catalogId;
    bool enabled = true;
    std::int64_t daysAgo = 0;
};

[[nodiscard]] const std::vector<Bundle> &bundles();
[[nodiscard]] const std::vector<Installation> &installations();

} // namespace velto::local::seed
