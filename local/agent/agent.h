// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <nlohmann/json.hpp>

#include <chrono>
#include <stop_token>
#include <string>
#include <variant>
#include <vector>

namespace velto::local
{

/// One turn of the history as an agent sees it.
struct SpokenTurn
{
    bool fromUser = true;
    std::string text;
};

struct TextDelta
{
    std::string text;
};
struct ToolStarted
{
    std::string id;
    std::string name;
};
struct ToolInput
{
    std::string id;
    nlohmann::json input;
};
struct ToolOutput
{
    std::string id;
    nlohmann::json output;
};
struct ToolFailed
{
    std::string id;
    std::string message;
};
struct Progress
{
    std::string summary;
};
struct Suggestion
{
    std::string prompt;
};
/// The agent can't go on. Nothing follows it.
struct Failed
{
    std::string message;
};

using AgentEvent = std::variant<TextDelta, ToolStarted, ToolInput, ToolOutput, ToolFailed, Progress,
                                Suggestion, Failed>;

/// Where an answer goes while it is being made.
class AnswerSink
{
public:
    virtual ~AnswerSink() = default;

    /// False when nobody takes the answer any more; the agent then returns.
    [[nodiscard]] virtual bool send(const AgentEvent &event) = 0;
    /// Waits, and notices meanwhile when nobody takes the answer any more, as `send` does.
    [[nodiscard]] virtual bool pause(std::chrono::nanoseconds time) = 0;
};

enum class Outcome {
    /// The answer is whole.
    Finished,
    /// It ended with `Failed`.
    Failed,
    /// The sink or the token asked to stop.
    Stopped,
    /// The connection is to be cut with no word, as a failing network would.
    Dropped,
};

/// What answers. Called from several threads at once, one call for each answer.
class Agent
{
public:
    virtual ~Agent() = default;

    /// Makes one answer to the last turn of `history`. Blocks until it ends.
    virtual Outcome answer(const std::vector<SpokenTurn> &history, AnswerSink &sink,
                           const std::stop_token &stop) = 0;
};

} // namespace velto::local
