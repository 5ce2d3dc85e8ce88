// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <nlohmann/json.hpp>
#include <tl/expected.hpp>

#include <string>

namespace velto::local
{

/// Why a request isn't done: the status and the body of the answer.
struct Refusal
{
    int status = 500;
    std::string code;
    /// A sentence for a person.
    std::string message;
};

template<typename Value>
using OrRefusal = tl::expected<Value, Refusal>;

/// What an endpoint answers; null is an answer with no content.
using JsonAnswer = OrRefusal<nlohmann::json>;

[[nodiscard]] inline tl::unexpected<Refusal> badRequest(std::string message)
{
    return tl::unexpected(Refusal{400, "bad_body", std::move(message)});
}

[[nodiscard]] inline tl::unexpected<Refusal> forbidden(std::string message)
{
    return tl::unexpected(Refusal{403, "forbidden", std::move(message)});
}

/// `what` completes “There is no …”.
[[nodiscard]] inline tl::unexpected<Refusal> unknown(const std::string &what)
{
    return tl::unexpected(Refusal{404, "unknown", "There is no " + what + "."});
}

[[nodiscard]] inline tl::unexpected<Refusal> conflict(std::string message)
{
    return tl::unexpected(Refusal{409, "conflict", std::move(message)});
}

[[nodiscard]] inline tl::unexpected<Refusal> storageFailure()
{
    return tl::unexpected(Refusal{500, "storage", "The change could not be stored."});
}

} // namespace velto::local
