// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/agent/recorder.h"

namespace velto::local
{

using nlohmann::json;

namespace
{

template<typename... Functions>
struct Overloaded : Functions...
{
    using Functions::operator()...;
};
template<typename... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

} // namespace

json frameOf(const AgentEvent &event)
{
    return std::visit(
        Overloaded{
            [](const TextDelta &e) {
                return json{{"type", "text-delta"}, {"delta", e.text}};
            },
            [](const ToolStarted &e) {
                return json{
                    {"type", "tool-input-start"}, {"toolCallId", e.id}, {"toolName", e.name}};
            },
            [](const ToolInput &e) {
                return json{
                    {"type", "tool-input-available"}, {"toolCallId", e.id}, {"input", e.input}};
            },
            [](const ToolOutput &e) {
                return json{
                    {"type", "tool-output-available"}, {"toolCallId", e.id}, {"output", e.output}};
            },
            [](const ToolFailed &e) {
                return json{
                    {"type", "tool-output-error"}, {"toolCallId", e.id}, {"errorText", e.message}};
            },
            [](const Progress &e) {
                return json{{"type", "data-agent_progress"}, {"data", {{"summary", e.summary}}}};
            },
            [](const Suggestion &e) {
                return json{{"type", "data-prompt_suggestion"},
                            {"data", {{"suggestion", e.prompt}}}};
            },
            [](const Failed &e) {
                return json{{"type", "error"}, {"errorText", e.message}};
            },
        },
        event);
}

void AnswerRecorder::record(const AgentEvent &event)
{
    std::visit(Overloaded{
                   [this](const TextDelta &e) {
                       if (m_parts.empty() || m_parts.back()["type"] != "text")
                           m_parts.push_back({{"type", "text"}, {"text", e.text}});
                       else
                           m_parts.back()["text"].get_ref<std::string &>() += e.text;
                   },
                   [this](const ToolStarted &e) {
                       m_parts.push_back(
                           {{"type", "dynamic-tool"}, {"toolCallId", e.id}, {"toolName", e.name}});
                   },
                   [this](const ToolInput &e) {
                       if (json *part = tool(e.id))
                           (*part)["input"] = e.input;
                   },
                   [this](const ToolOutput &e) {
                       if (json *part = tool(e.id))
                           (*part)["output"] = e.output;
                   },
                   [this](const ToolFailed &e) {
                       if (json *part = tool(e.id))
                           (*part)["output"] = {{"error", e.message}};
                   },
                   [](const auto &) {},
               },
               event);
}

json *AnswerRecorder::tool(const std::string &id)
{
    for (json &part : m_parts) {
        if (part["type"] == "dynamic-tool" && part["toolCallId"] == id)
            return &part;
    }
    return nullptr;
}

} // namespace velto::local
