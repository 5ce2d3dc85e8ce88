// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/chatstreamevent.h"

namespace velto::chat
{
namespace
{

std::optional<ChatStreamEvent> toolEventFrom(StreamFrame &frame)
{
    if (!frame.toolCallId)
        return std::nullopt;
    QString &id = *frame.toolCallId;
    if (frame.type == u"tool-input-start" && frame.toolName)
        return event::ToolStart{id, *frame.toolName};
    if (frame.type == u"tool-input-available")
        return event::ToolInput{id, base::prettyString(frame.input)};
    if (frame.type == u"tool-output-available")
        return event::ToolOutput{id, base::prettyString(frame.output)};
    if (frame.type == u"tool-output-error")
        return event::ToolError{id, frame.errorText.value_or(QStringLiteral("tool error"))};
    return std::nullopt;
}

std::optional<ChatStreamEvent> dataEventFrom(const QString &type, const StreamData &data)
{
    if (type == u"data-agent_progress" && data.summary && !data.summary->isEmpty())
        return event::AgentProgress{*data.summary};
    if (type == u"data-prompt_suggestion" && data.suggestion && !data.suggestion->isEmpty())
        return event::PromptSuggestion{*data.suggestion};
    return std::nullopt;
}

ToolCall *firstCall(ChatMessage &message, const QString &id)
{
    for (MessagePart &part : message.parts) {
        auto *call = std::get_if<ToolCall>(&part.kind);
        if (call != nullptr && call->callID == id)
            return call;
    }
    return nullptr;
}

struct Apply
{
    ChatMessage &message;

    void operator()(const event::TextDelta &delta) const
    {
        if (!message.parts.isEmpty()) {
            if (auto *text = std::get_if<QString>(&message.parts.last().kind)) {
                *text += delta.text;
                return;
            }
        }
        message.parts.append(textPart(delta.text));
    }
    void operator()(const event::ToolStart &start) const
    {
        message.parts.append(toolPart({.callID = start.id, .name = start.name}));
    }
    void operator()(const event::ToolInput &input) const
    {
        if (ToolCall *call = firstCall(message, input.id))
            call->inputJSON = input.inputJSON;
    }
    void operator()(const event::ToolOutput &output) const
    {
        if (ToolCall *call = firstCall(message, output.id)) {
            call->outputJSON = output.outputJSON;
            call->state = ToolState::Completed;
        }
    }
    void operator()(const event::ToolError &error) const
    {
        if (ToolCall *call = firstCall(message, error.id)) {
            call->errorText = error.message;
            call->state = ToolState::Failed;
        }
    }
    void operator()(const event::AgentProgress &) const {}
    void operator()(const event::PromptSuggestion &) const {}
    void operator()(const event::Error &) const {}
    void operator()(const event::Finish &) const {}
};

} // namespace

std::optional<ChatStreamEvent> eventFrom(StreamFrame frame)
{
    if (frame.type == u"text-delta") {
        if (!frame.delta)
            return std::nullopt;
        return event::TextDelta{std::move(*frame.delta)};
    }
    if (frame.type == u"finish")
        return event::Finish{};
    if (frame.type == u"error")
        return event::Error{frame.errorText.value_or(QStringLiteral("stream error"))};
    if (frame.type.startsWith(u"data-"))
        return frame.data ? dataEventFrom(frame.type, *frame.data) : std::nullopt;
    return toolEventFrom(frame);
}

void applyEvent(const ChatStreamEvent &event, ChatMessage &message)
{
    std::visit(Apply{message}, event);
}

} // namespace velto::chat
