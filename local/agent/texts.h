// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/agent/script.h"

/// What the demonstration agent says. All of it is fixed text, made to be looked at.
namespace velto::local::texts
{

[[nodiscard]] std::string help(const std::vector<AgentWord> &words);
[[nodiscard]] std::string tableAnswer();
[[nodiscard]] std::string codeAnswer();
[[nodiscard]] std::string imageAnswer();
[[nodiscard]] std::string videoAnswer();
/// Markdown of exactly `length` characters, all of them ASCII.
[[nodiscard]] std::string longText(std::size_t length);
[[nodiscard]] std::vector<Step> toolsAnswer();
[[nodiscard]] std::vector<Step> failingAnswer();
[[nodiscard]] std::vector<Step> droppedAnswer();
[[nodiscard]] std::vector<Step> pleasantAnswer(std::string_view prompt);

} // namespace velto::local::texts
