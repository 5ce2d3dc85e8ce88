// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "runningservice.h"

#include <nlohmann/json.hpp>

#include <string>

namespace velto::local::test
{

/// What is wrong with a record that should have just these members; empty when nothing is. A shape
/// is words like "user_id:text max_turns:int?": of a member with "?" there may be none, or null.
/// Kinds: text, int, number, bool, list, object, texts (a list of texts).
[[nodiscard]] std::string flawIn(const nlohmann::json &record, const std::string &shape);

/// The same for every record of a list that isn't empty.
[[nodiscard]] std::string flawInList(const nlohmann::json &list, const std::string &shape);

/// The record of a workspace, which several answers hold.
inline constexpr auto WorkspaceShape =
    "id:text slug:text name:text velto_email:text? velto_display_name:text? "
    "created_by_user_id:text? created_at:text? updated_at:text?";

/// The entry whose member has this value; null when there is none.
[[nodiscard]] nlohmann::json entryWith(const nlohmann::json &list, const std::string &key,
                                       const nlohmann::json &value);

/// The status, and a body that says why.
void expectRefused(const Reply &reply, int status);

/// What has happened last in a workspace, for a visitor who may know.
[[nodiscard]] nlohmann::json latestAudit(const Visitor &visitor,
                                         const std::string &slug = "harbourlight");

void switchTo(const Visitor &visitor, const std::string &workspaceId);

} // namespace velto::local::test
