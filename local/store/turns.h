// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <vector>

namespace velto::local
{

/// A message of a conversation. `parts` is an array of objects: {"type": "text", "text"} and
/// {"type": "dynamic-tool", "toolName", "toolCallId", "input", "output"}.
struct Turn
{
    std::string id;
    std::string role;
    nlohmann::json parts = nlohmann::json::array();

    bool operator==(const Turn &) const = default;
};

/// All text parts joined with nothing between them; tool parts are skipped.
[[nodiscard]] std::string plainText(const Turn &turn);

[[nodiscard]] nlohmann::json textPart(std::string text);

/// Reads the "messages" of a chat request: objects with a role, "user" or "assistant", and parts,
/// of which only the text parts count. Absent when one of them has another shape.
[[nodiscard]] std::optional<std::vector<Turn>> readTurns(const nlohmann::json &messages);

/// What a conversation holds after a client has posted its turns. The client's turns win, but it
/// posts text alone: a stored answer whose text it repeats keeps its parts, and the note that a
/// client puts under an answer it has stopped is added to them. A stored answer with no text,
/// which a client can't post, stays in its place.
[[nodiscard]] std::vector<Turn> mergeTurns(const std::vector<Turn> &stored,
                                           const std::vector<Turn> &posted);

} // namespace velto::local
