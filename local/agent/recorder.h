// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/agent/agent.h"

#include <nlohmann/json.hpp>

namespace velto::local
{

/// The frame that tells a client of an event.
[[nodiscard]] nlohmann::json frameOf(const AgentEvent &event);

/// Gathers the events of an answer into the parts under which it is stored. A failed tool's
/// message becomes its output, {"error": message}, since a stored part knows no failure.
class AnswerRecorder final
{
public:
    void record(const AgentEvent &event);
    [[nodiscard]] const nlohmann::json &parts() const { return m_parts; }

private:
    [[nodiscard]] nlohmann::json *tool(const std::string &id);

    nlohmann::json m_parts = nlohmann::json::array();
};

} // namespace velto::local
