// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string_view>

namespace velto::local
{

enum class Engine { Claude, Codex };

/// A model that can be chosen, and what it costs in US dollars for a million tokens.
struct Model
{
    std::string_view id;
    Engine engine = Engine::Claude;
    double inputUsd = 0;
    double outputUsd = 0;
};

inline constexpr std::string_view DefaultModel = "claude-opus-4-8";
inline constexpr std::string_view DefaultCodexModel = "gpt-5.5";

[[nodiscard]] std::string_view engineName(Engine engine);

/// Null when the service has no such model.
[[nodiscard]] const Model *findModel(std::string_view id);
[[nodiscard]] bool isModelOf(Engine engine, std::string_view id);

struct TokenCount
{
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheCreation = 0;
    std::int64_t cacheRead = 0;
};

/// In US dollars. Writing to the cache costs a quarter more than plain input, reading from it a
/// tenth of it.
[[nodiscard]] double costOf(const Model &model, const TokenCount &tokens);
/// What the tokens read from the cache would have cost more without it.
[[nodiscard]] double cacheSavings(const Model &model, const TokenCount &tokens);

} // namespace velto::local
