// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/agent/script.h"

/// Answers that hold what a client may have to show, all of it and much of it.
namespace velto::local::texts
{

[[nodiscard]] std::string markdownAnswer();
/// A block of code for each family of languages that clients colour, and of one that they don't.
[[nodiscard]] std::string languagesAnswer();
/// Links to files that this service doesn't have, and that are none.
[[nodiscard]] std::string missingAnswer();
[[nodiscard]] std::vector<Step> parallelAnswer();
/// Prose, code and tool calls in turn, as many characters of text as `length` says: in every 10,000
/// of them 3 blocks of code and 4 tool calls. All of it is ASCII.
[[nodiscard]] std::vector<Step> richAnswer(std::size_t length);

} // namespace velto::local::texts
