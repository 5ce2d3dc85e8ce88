// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/agent/agent.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velto::local
{

/// The steps of a demonstration answer.
struct SayStep
{
    std::string markdown;
};
struct ToolStep
{
    std::string name;
    nlohmann::json input;
    nlohmann::json output;
    /// Set when the call fails.
    std::optional<std::string> error;
};
/// Calls that begin together and end one after the other.
struct ToolsStep
{
    std::vector<ToolStep> tools;
};
struct ProgressStep
{
    std::string summary;
};
struct SuggestStep
{
    std::string prompt;
};
struct FailStep
{
    std::string message;
};
struct DropStep
{};

using Step =
    std::variant<SayStep, ToolStep, ToolsStep, ProgressStep, SuggestStep, FailStep, DropStep>;

struct Script
{
    std::vector<Step> steps;
    /// Two deltas a second instead of the service's rate.
    bool slow = false;
};

/// A word that makes the agent do something, and what, as its help says it.
struct AgentWord
{
    std::string_view word;
    std::string_view effect;
};

/// All words, in the order in which the help lists them.
[[nodiscard]] const std::vector<AgentWord> &agentWords();

/// The answer to a prompt, always the same for the same prompt. Words act in their order; a
/// prompt without any gets an answer that reflects it.
[[nodiscard]] Script scriptFor(std::string_view prompt);

} // namespace velto::local
