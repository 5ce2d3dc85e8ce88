// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/http/refusal.h"

#include <httplib.h>
#include <nlohmann/json.hpp>

#include <string_view>

namespace velto::local
{

/// Text that came from outside may hold anything; what isn't UTF-8 goes out as U+FFFD.
[[nodiscard]] std::string toText(const nlohmann::json &value);

/// Parses a request body. A discarded value means that it isn't JSON or that it nests deeper
/// than anything this service accepts.
[[nodiscard]] nlohmann::json parseBody(std::string_view body);

/// A positive number in the query, 50 when there is none and 200 when it is greater.
[[nodiscard]] OrRefusal<std::int64_t> readLimit(const httplib::Request &request);

/// The member `key` of `object` when it is a text; absent otherwise.
[[nodiscard]] const std::string *textMember(const nlohmann::json &object, std::string_view key);

void replyJson(httplib::Response &response, int status, const nlohmann::json &value);

/// {"error": code, "message": message}; `message` is a sentence for a person.
void replyError(httplib::Response &response, int status, std::string_view code,
                std::string_view message);

/// 200 with the value, 204 when it is null, or the refusal.
void replyAnswer(httplib::Response &response, const JsonAnswer &answer);

} // namespace velto::local
