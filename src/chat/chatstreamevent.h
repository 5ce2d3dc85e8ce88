// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/message.h"
#include "chat/streamframe.h"

#include <QString>

#include <optional>
#include <variant>

namespace velto::chat
{

/// What a streamed answer consists of, one step at a time.
namespace event
{
struct TextDelta
{
    QString text;
    bool operator==(const TextDelta &) const = default;
};
struct ToolStart
{
    QString id;
    QString name;
    bool operator==(const ToolStart &) const = default;
};
struct ToolInput
{
    QString id;
    QString inputJSON;
    bool operator==(const ToolInput &) const = default;
};
struct ToolOutput
{
    QString id;
    QString outputJSON;
    bool operator==(const ToolOutput &) const = default;
};
struct ToolError
{
    QString id;
    QString message;
    bool operator==(const ToolError &) const = default;
};
struct AgentProgress
{
    QString summary;
    bool operator==(const AgentProgress &) const = default;
};
struct PromptSuggestion
{
    QString suggestion;
    bool operator==(const PromptSuggestion &) const = default;
};
struct Error
{
    QString text;
    bool operator==(const Error &) const = default;
};
struct Finish
{
    bool operator==(const Finish &) const = default;
};
} // namespace event

using ChatStreamEvent = std::variant<event::TextDelta, event::ToolStart, event::ToolInput,
                                     event::ToolOutput, event::ToolError, event::AgentProgress,
                                     event::PromptSuggestion, event::Error, event::Finish>;

/// The event that a frame stands for, or absent for a frame that means nothing to us.
[[nodiscard]] std::optional<ChatStreamEvent> eventFrom(StreamFrame frame);

/// Carries out what an event says about the message that it streams into; events about the
/// conversation as a whole change nothing here. The cost is that of the event, whatever the
/// message's length.
void applyEvent(const ChatStreamEvent &event, ChatMessage &message);

} // namespace velto::chat
