// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/library/models.h"

#include <algorithm>
#include <array>

namespace velto::local
{

namespace
{

using enum Engine;

constexpr std::array<Model, 14> Models{{
    {"claude-fable-5", Claude, 5, 25},
    {"claude-opus-4-8", Claude, 5, 25},
    {"claude-opus-4-7", Claude, 5, 25},
    {"claude-opus-4-6", Claude, 5, 25},
    {"claude-sonnet-4-6", Claude, 3, 15},
    {"claude-haiku-4-5", Claude, 1, 5},
    {"deepseek-v4-pro", Claude, 0.6, 2.4},
    {"glm-5.2[1m]", Claude, 0.8, 3.2},
    {"glm-5.2", Claude, 0.6, 2.2},
    // No longer on offer, but a workspace may still run on it.
    {"claude-sonnet-4-5", Claude, 3, 15},
    {"gpt-5.5", Codex, 4, 16},
    {"gpt-5.4", Codex, 2.5, 10},
    {"fugu", Codex, 1, 4},
    {"fugu-ultra", Codex, 4, 18},
}};

constexpr double Million = 1'000'000;
constexpr double CacheWriteFactor = 1.25;
constexpr double CacheReadFactor = 0.1;

} // namespace

std::string_view engineName(Engine engine)
{
    return engine == Codex ? "codex" : "claude";
}

const Model *findModel(std::string_view id)
{
    const auto *found = std::find_if(Models.begin(), Models.end(),
                                     [id](const Model &model) { return model.id == id; });
    return found == Models.end() ? nullptr : found;
}

bool isModelOf(Engine engine, std::string_view id)
{
    const Model *model = findModel(id);
    return model != nullptr && model->engine == engine;
}

double costOf(const Model &model, const TokenCount &tokens)
{
    const double input = static_cast<double>(tokens.input) +
                         static_cast<double>(tokens.cacheCreation) * CacheWriteFactor +
                         static_cast<double>(tokens.cacheRead) * CacheReadFactor;
    return (input * model.inputUsd + static_cast<double>(tokens.output) * model.outputUsd) /
           Million;
}

double cacheSavings(const Model &model, const TokenCount &tokens)
{
    return static_cast<double>(tokens.cacheRead) * (1 - CacheReadFactor) * model.inputUsd / Million;
}

} // namespace velto::local
